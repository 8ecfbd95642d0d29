// SPDX-License-Identifier: Apache-2.0
// dft_split: one transform on split arrays. The two parts are interleaved into the buffer, transformed there on packed
// dimensions, and separated again; the real side of r2c and c2r is read or written where it stands. Rank 0 would leave
// nothing to transform and is refused.
#include "batch/split_arrays.h"
#include "dft/sizes.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool accepts(const fft_plan& p) { return p.split == split_arrays && p.howmany_rank == 0 && p.rank >= 1; }

bool reads_real(const fft_plan& p) { return p.kind == kind_r2c; }
bool writes_real(const fft_plan& p) { return p.kind == kind_c2r; }

// Gives the sides that lie in the buffer the strides of an array without gaps.
void pack_strides(fft_plan* s) {
    int64_t stride = 1;
    for (int d = s->rank - 1; d >= 0; --d) {
        const int64_t n = s->dims[d].n;
        if (!reads_real(*s)) s->dims[d].is = stride;
        if (!writes_real(*s)) s->dims[d].os = stride;
        const bool hermitian = d == s->rank - 1 && (reads_real(*s) || writes_real(*s));
        stride *= hermitian ? n / 2 + 1 : n;
    }
}

// The arrays of the subplan, given what stands for the real side and for the buffer.
float* input_of(const fft_plan& p, float* real, float* buffer) { return reads_real(p) ? real : buffer; }
float* output_of(const fft_plan& p, float* real, float* buffer) { return writes_real(p) ? real : buffer; }

void execute_split(fft_plan* plan, float* in_re, float* in_im, float* out_re, float* out_im) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan* s = plan->subplans[0];
    if (!reads_real(*plan)) split_pack(in_re, in_im, scratch.data(), plan->kind, plan->rank, plan->dims, s->dims);
    s->execute(s, input_of(*plan, in_re, scratch.data()), output_of(*plan, out_re, scratch.data()));
    if (!writes_real(*plan)) split_unpack(scratch.data(), out_re, out_im, plan->kind, plan->rank, plan->dims, s->dims);
}

}  // namespace

int solve_problem_dft_split(fft_plan* plan) {
    if (!accepts(*plan) || !attach_buffer(plan, problem_total_bytes(plan)) || !make_subplans(plan, 1)) return refused;
    plan->execute_split = execute_split;
    fft_plan* s = plan->subplans[0];
    s->split = interleaved_arrays;
    s->in = input_of(*plan, plan->in, static_cast<float*>(plan->buffer));
    s->out = output_of(*plan, plan->out, static_cast<float*>(plan->buffer));
    pack_strides(s);
    plan_split_hook(plan);
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_by_split, "execute_split");
}
