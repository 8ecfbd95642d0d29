// SPDX-License-Identifier: Apache-2.0
// What the batch solvers do to a fresh copy of their problem to make it a subplan.
#pragma once
#include "record/fft_plan.h"

// The subplan does one transform of the batch. The triple is zeroed too, since some solvers look at it first.
inline void drop_batch(fft_plan* subplan) {
    subplan->howmany_rank = 0;
    subplan->howmany[0] = {};
}

// The subplan does one step of the plan's outermost batch dimension.
inline void drop_outer_batch(fft_plan* subplan, const fft_plan* plan) {
    const int left = plan->howmany_rank - 1;
    fft_plan_copy_dims(subplan->howmany, plan->howmany + 1, left);
    subplan->howmany_rank = left;
    subplan->howmany[left] = {};
}

// Both sides of a dimension laid out as `side` says: what runs in place on an array that another subplan has written.
inline fft_dim input_on_both_sides(fft_dim d) { return {d.n, d.is, d.is}; }
inline fft_dim output_on_both_sides(fft_dim d) { return {d.n, d.os, d.os}; }
