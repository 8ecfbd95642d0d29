// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/forms/forms.h"

namespace generator {

namespace {

constexpr int kernel_sizes[] = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                16, 17, 18, 19, 20, 21, 23, 24, 29, 31, 32, 37, 64};
constexpr int direct_sve_sizes[] = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                    15, 16, 17, 18, 19, 20, 21, 23, 24, 29, 31, 37, 64};
constexpr int straight_sizes[] = {128};  // in lanes only: no radix of stages, no direct kernel
constexpr int scalar_sizes[] = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, 16, 17, 21, 24};
constexpr int real_direct_sizes[] = {2, 3, 4, 5, 7, 8, 16, 32, 64};
constexpr int real_many_sizes[] = {2, 3, 4, 8, 16};
constexpr int real_rows_sizes[] = {4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 32};
constexpr int half_complex_sizes[] = {2, 4, 8, 16, 32};
constexpr int groups_only_sizes[] = {32};  // half-complex and complex storage differ by offsets: others are r2c_many's
constexpr int r2c_alone_sizes[] = {2, 3, 4, 5, 7, 8, 16, 32, 64, 128, 256};
constexpr int c2r_alone_sizes[] = {2, 4, 8, 16, 64, 128, 256};  // others are exact, or go by stages
constexpr int alone_sizes[] = {2, 4, 8, 16};
constexpr int cosine_sizes[] = {2, 3, 4, 17};
constexpr int hermitian_sizes[] = {2, 3, 4, 5, 7, 8, 12, 16, 32};
// In double precision, rounded at the output: the nearest floats.
constexpr int exact_sizes[] = {3, 5, 7, 32};
constexpr int exact_cosine_sizes[] = {17};

using enum shape;
using enum layout;
using enum row_spectrum;

// clang-format off
constexpr form table[] = {
    // family               vectors      loop             data      sizes               sign, in double, half-complex only, spectrum
    {"direct_contig_neon",   &neon_one,   direct,          contig,   kernel_sizes},
    {"direct_strided_neon",  &neon_one,   direct,          strided,  kernel_sizes},
    {"direct_contig_sve",    &sve_one,    direct,          contig,   direct_sve_sizes},
    {"direct_scalar",        &scalar,     direct,          contig,   scalar_sizes},

    {"many_pair_neon",       &neon_pair,  many,            batch,    kernel_sizes},
    {"many_assemble_neon",   &neon_pair,  assemble,        batch,    kernel_sizes},
    {"many_quad_sve",        &sve_quad,   many,            batch,    kernel_sizes},
    {"many_rows_neon",       &neon_pair,  rows,            contig,   kernel_sizes},
    {"straight_quad_sve",        &sve_quad,   many,            batch,    straight_sizes},
    {"straight_rows_neon",       &neon_pair,  rows,            contig,   straight_sizes},

    {"first_contig_neon",    &neon_pair,  first,           contig,   kernel_sizes},
    {"first_strided_neon",   &neon_pair,  first,           strided,  kernel_sizes},
    {"first_pair_neon",      &neon_pair,  first,           batch,    kernel_sizes},
    {"first_contig_sve",     &sve_quad,   first,           contig,   kernel_sizes},
    {"first_strided_sve",    &sve_one,    first,           strided,  kernel_sizes},
    {"first_quad_sve",       &sve_quad,   first,           batch,    kernel_sizes},

    {"other_plain_neon",     &neon_pair,  other,           contig,   kernel_sizes},
    {"other_pair_neon",      &neon_pair,  other,           batch,    kernel_sizes},
    {"other_plain_sve",      &sve_quad,   other,           contig,   kernel_sizes},
    {"other_quad_sve",       &sve_quad,   other,           batch,    kernel_sizes},

    {"last_contig_neon",     &neon_pair,  last,            contig,   kernel_sizes},
    {"last_strided_neon",    &neon_pair,  last,            strided,  kernel_sizes},
    {"last_pair_neon",       &neon_pair,  last,            batch,    kernel_sizes},
    {"last_contig_sve",      &sve_quad,   last,            contig,   kernel_sizes},
    {"last_strided_sve",     &sve_one,    last,            strided,  kernel_sizes},
    {"last_quad_sve",        &sve_quad,   last,            batch,    kernel_sizes},

    {"r2c_direct",           &real_quad,  real_row,        offsets,  real_direct_sizes,  -1},
    {"c2r_direct",           &real_quad,  real_row,        offsets,  real_direct_sizes,  +1, exact_sizes},
    {"r2c_many",             &real_quad,  real_groups,     offsets,  real_many_sizes,    -1},
    {"c2r_many",             &real_quad,  real_groups,     offsets,  real_many_sizes,    +1},
    {"r2c_rows",             &real_quad,  whole_rows,      contig,   real_rows_sizes,    -1},
    {"c2r_rows",             &real_quad,  whole_rows,      contig,   real_rows_sizes,    +1},
    {"r2hc_quad",            &real_quad,  real_groups,     offsets,  groups_only_sizes,  -1, {}, true},
    {"r2hc_loop",            &real_quad,  real_rows,       offsets,  half_complex_sizes, -1},
    {"hc2r_loop",            &real_quad,  real_rows,       offsets,  half_complex_sizes, +1},
    {"r2c_alone",            &real_quad,  alone,           contig,   r2c_alone_sizes,    -1, {}, false, pairs},
    {"c2r_alone",            &real_quad,  alone,           contig,   c2r_alone_sizes,    +1, {}, false, pairs},
    {"r2hc_alone",           &real_quad,  alone,           contig,   alone_sizes,        -1, {}, false, half_complex},
    {"hc2r_alone",           &real_quad,  alone,           contig,   alone_sizes,        +1, {}, false, half_complex},
    {"dht_alone",            &real_quad,  alone,           contig,   alone_sizes,        -1, {}, false, hartley},
    {"redft00_loop",         &real_quad,  cosine_rows,     offsets,  cosine_sizes,       -1, exact_cosine_sizes},

    {"sorensen_first_neon",  &neon_pair,  hermitian_first, contig,   hermitian_sizes,    +1},
    {"sorensen_other_neon",  &neon_pair,  hermitian_other, contig,   hermitian_sizes,    +1},
    {"sorensen_last_neon",   &neon_pair,  hermitian_last,  contig,   hermitian_sizes,    +1},
    {"sorensen_first_sve",   &sve_quad,   hermitian_first, contig,   hermitian_sizes,    +1},
    {"sorensen_other_sve",   &sve_quad,   hermitian_other, contig,   hermitian_sizes,    +1},
    {"sorensen_last_sve",    &sve_quad,   hermitian_last,  contig,   hermitian_sizes,    +1},
};

constexpr short_list lists[] = {
    {"r2hc_quad",    half_complex_sizes, {"r2c_many", "r2hc_quad"}},
    {"r2hc_loop",    half_complex_sizes, {"r2hc_loop"}},
    {"hc2r_loop",    half_complex_sizes, {"hc2r_loop"}},
    {"redft00_loop", cosine_sizes,       {"redft00_loop"}},
};
// clang-format on

}  // namespace

std::span<const form> forms() { return table; }
std::span<const short_list> short_lists() { return lists; }

}  // namespace generator
