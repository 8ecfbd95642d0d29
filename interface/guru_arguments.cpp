// SPDX-License-Identifier: Apache-2.0
// What the guru calls demand of their arguments. The calls differ, and each difference is meant: the 64-bit calls test
// less and never reduce the rank, and only the complex and r2r calls of 32 bits take a null `dims` at rank 0.
#include "interface/guru_arguments.h"

#include "interface/plan_call.h"

namespace {

using arguments = guru_arguments;

bool has_rank_0_form(const arguments& a) {
    return a.split != split_arrays && (a.kind == kind_c2c || a.kind == kind_r2r);
}

bool has_dims(const arguments& a) {
    const bool may_lack = a.rank == 0 && a.call == width::narrow && has_rank_0_form(a);
    return a.dims || may_lack;
}

bool has_howmany_dims(const arguments& a) { return a.howmany_rank < 1 || a.howmany_dims; }

bool rank_holds(int rank) { return rank >= 0 && rank <= max_rank; }

bool triples_are_positive(const dim_list& dims, int count) {
    for (int k = 0; k < count; ++k)
        if (dims[k].n < 1 || dims[k].is < 1 || dims[k].os < 1) return false;
    return true;
}

bool has_kinds(const arguments& a) {
    return a.kind != kind_r2r || a.r2r_kinds || (a.call == width::narrow && a.rank < 1);
}

// The data movement of rank 0 has neither a half-complex side nor a split form.
bool has_dimensions(const arguments& a) { return a.rank >= 1 || has_rank_0_form(a); }

// `inner` as a block fits between two elements of `outer`; one side.
bool nests(const fft_dim& inner, const fft_dim& outer, int64_t fft_dim::* stride) {
    return multiply_32(inner.n, inner.*stride) <= outer.*stride;
}

bool dims_interleave_4(const dim_list& d, int64_t fft_dim::* stride) {  // dims[3] isn't looked at
    return multiply_32(d[2].n - 1, d[2].*stride) >= d[1].*stride || !nests(d[1], d[0], stride);
}

bool dims_interleave_2(const dim_list& d, int64_t fft_dim::* stride) {
    return d[1].*stride < d[0].*stride && d[0].*stride <= multiply_32(d[1].n - 1, d[1].*stride);
}

bool batch_interleaves(const dim_list& m, int rank, int64_t fft_dim::* stride) {
    if (rank == 3) return !nests(m[2], m[1], stride) || !nests(m[1], m[0], stride);
    if (rank == 2) return !nests(m[1], m[0], stride);
    return false;
}

bool dims_hold_shape(int rank, const dim_list& dims) {
    for (const auto stride : {&fft_dim::is, &fft_dim::os}) {
        if (rank == 4 && dims_interleave_4(dims, stride)) return false;
        if (rank == 2 && dims_interleave_2(dims, stride)) return false;
    }
    return true;
}

// The two halves of the shape test, which the complex calls of 32 bits alone have.
bool has_shape(const arguments& a) {
    return a.call == width::wide || a.kind != kind_c2c || dims_hold_shape(a.rank, a.dims);
}

bool has_batch_shape(const arguments& a) {
    return a.call == width::wide || a.kind != kind_c2c ||
           guru_shape_test(a.rank, a.dims, a.howmany_rank, a.howmany_dims);
}

// One strided r2r can't run in place with two strides.
bool is_r2r_in_place(const arguments& a) {
    const bool in_place = a.in == a.out && a.rank == 1 && a.howmany_rank == 0 && a.dims[0].n != 1;
    return a.call == width::wide || a.kind != kind_r2r || !in_place || a.dims[0].is == a.dims[0].os;
}

constexpr argument_check<arguments> checks[] = {
    {"dims is not null", has_dims},
    {"howmany_dims is not null", has_howmany_dims},
    {"rank is 0 to 4", [](const arguments& a) { return rank_holds(a.rank); }},
    {"all of dims are at least 1", [](const arguments& a) { return triples_are_positive(a.dims, a.rank); }},
    {"howmany_rank is 0 to 4", [](const arguments& a) { return rank_holds(a.howmany_rank); }},
    {"all of howmany_dims are at least 1",
     [](const arguments& a) { return triples_are_positive(a.howmany_dims, a.howmany_rank); }},
    {"kinds is not null", has_kinds},
    {"rank is at least 1 but for interleaved complex and r2r", has_dimensions},
    {"dimensions do not interleave", has_shape},
    {"batch dimensions stand slowest first, each at least as far apart as the ones behind it are long",
     has_batch_shape},
    {"a single r2r in place has equal strides", is_r2r_in_place},
};

}  // namespace

bool guru_shape_test(int rank, const dim_list& dims, int howmany_rank, const dim_list& howmany_dims) {
    if (rank == 0 || (rank == 1 && dims[0].n == 1)) return true;
    if (!dims_hold_shape(rank, dims)) return false;
    for (const auto stride : {&fft_dim::is, &fft_dim::os})
        if (batch_interleaves(howmany_dims, howmany_rank, stride)) return false;
    return true;
}

const char* guru_refusal(const guru_arguments& a) { return first_failed<guru_arguments>(checks, a); }

bool becomes_rank_0(const guru_arguments& a) {
    if (a.call == width::wide || !has_rank_0_form(a) || a.rank != 1 || a.dims[0].n != 1) return false;
    if (a.kind == kind_c2c) return true;
    switch (a.r2r_kinds[0]) {  // the kinds of which one point is the identity
        case r2r_r2hc:
        case r2r_hc2r:
        case r2r_dht:
        case r2r_redft01:
        case r2r_rodft01:
            return true;
        default:
            return false;
    }
}
