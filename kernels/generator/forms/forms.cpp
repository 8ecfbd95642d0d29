// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/forms/forms.h"

namespace generator {

namespace {

constexpr int kernel_sizes[] = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                16, 17, 18, 19, 20, 21, 23, 24, 29, 31, 32, 37, 64};
constexpr int direct_sve_sizes[] = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                    15, 16, 17, 18, 19, 20, 21, 23, 24, 29, 31, 37, 64};
constexpr int long_sizes[] = {128};  // in lanes only: no radix of stages, no direct kernel
constexpr int real_direct_sizes[] = {2, 3, 4, 5, 7, 8, 16, 32, 64};
constexpr int real_many_sizes[] = {2, 3, 4, 8, 16};
constexpr int quad_only_sizes[] = {32};  // smaller ones are those of r2c_many
constexpr int cosine_sizes[] = {2, 3, 4, 17};
constexpr int half_complex_sizes[] = {2, 4, 8, 16, 32};
constexpr int sorensen_sizes[] = {2, 3, 4, 5, 7, 8, 12, 16, 32};
constexpr int scalar_sizes[] = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, 16, 17, 21, 24};

using enum instruction_set;
using enum shape;
using enum layout;

// clang-format off
constexpr form table[] = {
    {"direct_contig_neon",   neon,   direct,   contig,  kernel_sizes},
    {"direct_strided_neon",  neon,   direct,   strided, kernel_sizes},
    {"direct_contig_sve",    sve,    direct,   contig,  direct_sve_sizes},
    {"direct_scalar",        scalar, direct,   contig,  scalar_sizes},

    {"many_pair_neon",       neon,   many,     batch,   kernel_sizes},
    {"many_assemble_neon",   neon,   assemble, batch,   kernel_sizes},
    {"many_quad_sve",        sve,    many,     batch,   kernel_sizes},
    {"many_rows_sve",        sve,    rows,     contig,  kernel_sizes},
    {"long_quad_sve",        sve,    many,     batch,   long_sizes},
    {"long_rows_sve",        sve,    rows,     contig,  long_sizes},

    {"first_contig_neon",    neon,   first,    contig,  kernel_sizes},
    {"first_strided_neon",   neon,   first,    strided, kernel_sizes},
    {"first_pair_neon",      neon,   first,    batch,   kernel_sizes},
    {"first_contig_sve",     sve,    first,    contig,  kernel_sizes},
    {"first_strided_sve",    sve,    first,    strided, kernel_sizes},
    {"first_quad_sve",       sve,    first,    batch,   kernel_sizes},

    {"other_plain_neon",     neon,   other,    contig,  kernel_sizes},
    {"other_pair_neon",      neon,   other,    batch,   kernel_sizes},
    {"other_plain_sve",      sve,    other,    contig,  kernel_sizes},
    {"other_quad_sve",       sve,    other,    batch,   kernel_sizes},

    {"last_contig_neon",     neon,   last,     contig,  kernel_sizes},
    {"last_strided_neon",    neon,   last,     strided, kernel_sizes},
    {"last_pair_neon",       neon,   last,     batch,   kernel_sizes},
    {"last_contig_sve",      sve,    last,     contig,  kernel_sizes},
    {"last_strided_sve",     sve,    last,     strided, kernel_sizes},
    {"last_quad_sve",        sve,    last,     batch,   kernel_sizes},

    {"r2c_direct",           neon,   real_row,       offsets, real_direct_sizes,  -1},
    {"c2r_direct",           neon,   real_row,       offsets, real_direct_sizes,  +1},
    {"r2c_many",             neon,   real_quad,      offsets, real_many_sizes,    -1},
    {"c2r_many",             neon,   real_quad,      offsets, real_many_sizes,    +1},
    {"r2hc_quad",            neon,   real_quad,      offsets, quad_only_sizes,    -1},
    {"r2hc_loop",            neon,   real_rows,      offsets, half_complex_sizes, -1},
    {"hc2r_loop",            neon,   real_rows,      offsets, half_complex_sizes, +1},
    {"redft00_loop",         neon,   cosine_rows,    offsets, cosine_sizes,       -1},

    {"sorensen_first_neon",  neon,   sorensen_first, contig,  sorensen_sizes,     +1},
    {"sorensen_other_neon",  neon,   sorensen_other, contig,  sorensen_sizes,     +1},
    {"sorensen_last_neon",   neon,   sorensen_last,  contig,  sorensen_sizes,     +1},
    {"sorensen_first_sve",   sve,    sorensen_first, contig,  sorensen_sizes,     +1},
    {"sorensen_other_sve",   sve,    sorensen_other, contig,  sorensen_sizes,     +1},
    {"sorensen_last_sve",    sve,    sorensen_last,  contig,  sorensen_sizes,     +1},
};
// clang-format on

}  // namespace

std::span<const form> forms() { return table; }

}  // namespace generator
