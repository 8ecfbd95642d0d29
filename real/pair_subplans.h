// SPDX-License-Identifier: Apache-2.0
// The two subplans of every pair solver: 0 is the complex transform of a pair of rows, in place in scratch; 1 is the
// single row that an odd count leaves over.
#pragma once
#include "planner/solver.h"

enum pair_subplan { complex_pair = 0, single_row = 1 };

// Makes both as descriptions, to be altered and planned. Null when memory is short. Needs the plan's buffer.
inline fft_plan** make_pair_subplans(fft_plan* plan) {
    if (!make_subplans(plan, 2)) return nullptr;
    fft_plan* const pair = plan->subplans[complex_pair];
    pair->kind = kind_c2c;
    pair->dims[0] = {plan->dims[0].n, 1, 1};
    pair->in = pair->out = static_cast<float*>(plan->buffer);
    pair->howmany_rank = 0;
    plan->subplans[single_row]->howmany_rank = 0;
    return plan->subplans;
}

inline void run(fft_plan* plan, pair_subplan which, float* in, float* out) {
    plan->subplans[which]->execute(plan->subplans[which], in, out);
}

// Contiguous rows of which the kernel for a single row takes less time than half of a pair's transform and passes. That
// of 32 points backward doesn't: it computes in double precision.
inline bool singles_win(const fft_plan& p) {
    const fft_dim d = p.dims[0];
    return d.is == 1 && d.os == 1 && (d.n == 64 || (d.n == 32 && p.kind == kind_r2c));
}

// All rows as single ones. `in_step` and `out_step` in floats.
inline void run_singly(fft_plan* plan, float* in, float* out, int64_t in_step, int64_t out_step) {
    const int64_t count = plan->howmany[0].n;
    for (int64_t i = 0; i < count; ++i) run(plan, single_row, in + i * in_step, out + i * out_step);
}

// Rows that are contiguous and far apart, and long enough that one half-length transform each is faster.
inline bool long_rows_apart(const fft_plan& p) {
    return p.dims[0].n > 80 && p.dims[0].is == 1 && p.dims[0].is + p.dims[0].os < p.howmany[0].is + p.howmany[0].os;
}

// In place with neighbouring rows next to each other element by element.
inline bool interleaved_in_place(const fft_plan& p) {
    return p.in == p.out && p.howmany[0].is == 1 && p.howmany[0].os == 1;
}
