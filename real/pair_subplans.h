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

// Rows that are contiguous and far apart, and long enough that one half-length transform each is faster.
inline bool long_rows_apart(const fft_plan& p) {
    return p.dims[0].n > 80 && p.dims[0].is == 1 && p.dims[0].is + p.dims[0].os < p.howmany[0].is + p.howmany[0].os;
}

// In place with neighbouring rows next to each other element by element.
inline bool interleaved_in_place(const fft_plan& p) {
    return p.in == p.out && p.howmany[0].is == 1 && p.howmany[0].os == 1;
}
