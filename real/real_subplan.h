// SPDX-License-Identifier: Apache-2.0
// The r2r solvers' usual subplan: one transform with unit strides that runs on the plan's scratch.
#pragma once
#include "planner/solver.h"

// Is this one real-to-real transform, without batch, of the given kind?
inline bool is_single_r2r(const fft_plan& p, uint32_t r2r_kind) {
    return p.kind == kind_r2r && p.r2r_kind[0] == r2r_kind && p.howmany_rank == 0 && p.rank == 1;
}

// Makes the one subplan, in place on the buffer, which is allocated by then. Null when memory is short.
inline fft_plan* make_buffer_subplan(fft_plan* plan, uint32_t kind, int64_t n, int64_t sign) {
    if (!make_subplans(plan, 1)) return nullptr;
    fft_plan* const sub = plan->subplans[0];
    sub->kind = kind;
    sub->sign = sign;  // an r2r record has none to inherit
    sub->split = interleaved_arrays;
    sub->howmany_rank = 0;
    sub->dims[0] = {n, 1, 1};
    sub->in = sub->out = static_cast<float*>(plan->buffer);
    return sub;
}

inline bool plan_buffer_subplan(fft_plan* plan, uint32_t kind, int64_t n, int64_t sign) {
    return make_buffer_subplan(plan, kind, n, sign) && plan_subplans(plan->subplans, 1) == accepted;
}

inline void run_subplan(fft_plan* plan, float* in, float* out) {
    plan->subplans[0]->execute(plan->subplans[0], in, out);
}

// Strided reals to a contiguous array, as reals or as complex numbers with zero imaginary parts, and back.
inline void gather_reals(float* to, const float* from, int64_t n, int64_t is) {
    for (int64_t j = 0; j < n; ++j) to[j] = from[j * is];
}
inline void gather_as_complex(float* to, const float* from, int64_t n, int64_t is) {
    for (int64_t j = 0; j < n; ++j) {
        to[2 * j] = from[j * is];
        to[2 * j + 1] = 0;
    }
}
inline void scatter_reals(float* to, const float* from, int64_t n, int64_t os) {
    for (int64_t j = 0; j < n; ++j) to[j * os] = from[j];
}
