// SPDX-License-Identifier: Apache-2.0
// What the many calls demand of their arguments. A test may rely on the tests before it. Whoever adds one: solvers
// never look at the caller's numbers again, so what passes here is a problem that they can take or refuse.
#include "interface/many_arguments.h"

#include "interface/plan_call.h"

namespace {

using arguments = many_arguments;

bool has_sizes(const arguments& a) { return a.n != nullptr; }

bool has_direction(const arguments& a) { return a.kind != kind_c2c || a.sign == -1 || a.sign == 1; }

bool has_rank(const arguments& a) { return a.rank >= 1 && a.rank <= max_rank; }

bool has_positive_sizes(const arguments& a) {
    for (int k = 0; k < a.rank; ++k)
        if (a.n[k] < 1) return false;
    return true;
}

// embed[0] is never looked at, so rank 1 has nothing to test. `complex_half` is the side of n / 2 + 1 elements.
bool embed_holds(const arguments& a, const int* embed, bool complex_half) {
    if (!embed) return true;
    for (int k = 1; k < a.rank; ++k) {
        const bool half = complex_half && k == a.rank - 1;
        if (embed[k] < (half ? a.n[k] / 2 + 1 : a.n[k])) return false;
    }
    return true;
}

bool input_embed_holds(const arguments& a) { return embed_holds(a, a.inembed, a.kind == kind_c2r); }

bool output_embed_holds(const arguments& a) { return embed_holds(a, a.onembed, a.kind == kind_r2c); }

bool has_kinds(const arguments& a) { return a.kind != kind_r2r || a.r2r_kinds != nullptr; }

bool has_batch(const arguments& a) { return a.howmany >= 1; }

bool has_positive_strides(const arguments& a) { return a.istride >= 1 && a.ostride >= 1; }

bool has_positive_distances(const arguments& a) { return a.howmany == 1 || (a.idist >= 1 && a.odist >= 1); }

// Either all elements of a transform lie within one distance, or the whole batch fits between two elements.
bool side_is_separable(const arguments& a, int stride, int dist) {
    if (stride == 1) return a.rank != 2 || dist >= a.n[1];
    uint32_t points = 1;
    for (int k = 0; k < a.rank; ++k) points *= static_cast<uint32_t>(a.n[k]);
    return stride >= multiply_32(dist, a.howmany) || dist > multiply_32(points - 1, stride);
}

bool is_separable_in_place(const arguments& a) {
    if (a.kind != kind_c2c || a.in != a.out || a.howmany == 1) return true;
    return side_is_separable(a, a.istride, a.idist) && side_is_separable(a, a.ostride, a.odist);
}

constexpr argument_check<arguments> checks[] = {
    {"n is not null", has_sizes},
    {"sign is -1 or +1", has_direction},
    {"rank is 1 to 4", has_rank},
    {"every size is at least 1", has_positive_sizes},
    {"inembed holds the input's sizes", input_embed_holds},
    {"onembed holds the output's sizes", output_embed_holds},
    {"kinds is not null", has_kinds},
    {"howmany is at least 1", has_batch},
    {"strides are at least 1", has_positive_strides},
    {"distances are at least 1 where howmany is above 1", has_positive_distances},
    {"in place, the transforms of a batch do not interleave in part", is_separable_in_place},
};

}  // namespace

const char* many_refusal(const many_arguments& a) { return first_failed<many_arguments>(checks, a); }

void fft_plan_fill_dims(fft_plan* plan, int rank, const int* n, const int* inembed, int istride, const int* onembed,
                        int ostride) {
    const int last = rank - 1;
    const bool in_place = plan->in == plan->out;
    const int64_t row = n[last];
    const int64_t half_row = row / 2 + 1;
    // lengths of a row on both sides, in elements of the side; in place, a row of floats is padded to the complex one
    int64_t in_row = plan->kind == kind_c2r ? half_row : row;
    int64_t out_row = plan->kind == kind_r2c ? half_row : row;
    if (plan->kind == kind_r2c && in_place) in_row = 2 * half_row;
    if (plan->kind == kind_c2r && in_place) out_row = 2 * half_row;
    if (inembed) in_row = inembed[last];
    if (onembed) out_row = onembed[last];

    plan->rank = rank;
    plan->dims[last] = {row, istride, ostride};
    for (int k = last - 1; k >= 0; --k) {
        const fft_dim& inner = plan->dims[k + 1];
        if (k < last - 1) {
            in_row = inembed ? inembed[k + 1] : n[k + 1];
            out_row = onembed ? onembed[k + 1] : n[k + 1];
        }
        plan->dims[k] = {n[k], saturating_multiply(inner.is, in_row), saturating_multiply(inner.os, out_row)};
    }
}
