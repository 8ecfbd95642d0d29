// SPDX-License-Identifier: Apache-2.0
// dft_many_split: any batch on split arrays, peeled one dimension at a time into a loop over the four arrays. Each
// transform reads all its input before it writes, but a batch in place whose later inputs would be overwritten is
// refused.
#include "batch/split_arrays.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"
#include "record/subplans.h"

namespace {

bool accepts(const fft_plan& p) { return p.split == split_arrays && p.howmany_rank >= 1 && may_run_in_pieces(p); }

// The side that a real transform has no imaginary array for stays null.
float* advanced(float* array, int64_t by) { return array ? array + by : nullptr; }

void execute_many_split(fft_plan* plan, float* in_re, float* in_im, float* out_re, float* out_im) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan* item = plan->subplans[0];
    const fft_dim batch = plan->howmany[0];
    for (int64_t i = 0; i < batch.n; ++i) {
        const int64_t in_at = i * batch.is, out_at = i * batch.os;
        item->execute_split(item, in_re + in_at, advanced(in_im, in_at), out_re + out_at, advanced(out_im, out_at));
    }
}

}  // namespace

void execute_by_split(fft_plan* plan, float* in, float* out) {
    if (has_imaginary_arrays(*plan)) plan->execute_split(plan, in, plan->in_imag, out, plan->out_imag);
}

int solve_problem_dft_many_split(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    install(plan, execute_by_split, "execute_many_split");
    plan->execute_split = execute_many_split;
    if (!make_subplans(plan, 1)) return refused;
    fft_plan* item = plan->subplans[0];
    drop_outer_batch(item, plan);
    item->out_imag = plan->out;  // a measured run of the item alone writes both parts there
    plan_split_hook(plan);
    return plan_subplans(plan->subplans, 1);
}
