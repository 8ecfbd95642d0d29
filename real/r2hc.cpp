// SPDX-License-Identifier: Apache-2.0
// r2hc_1d and r2hc_many: real to half-complex. The first takes one transform of any length: an even one by a complex
// transform of half the length, an odd one by a complex transform of the reals. The second takes a batch, two rows at a
// time as one complex transform; it leaves length 1 to the generic loop.
#include "planner/solvers.h"
#include "real/half_complex_passes.h"
#include "real/half_length.h"
#include "real/pair_passes.h"
#include "real/pair_subplans.h"
#include "real/real_subplan.h"
#include "record/in_place.h"

namespace {

void execute_r2hc_1d(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_subplan(plan, in, scratch.data());
    r2hc_post_pass(scratch.data(), out, static_cast<const float*>(plan->aux), plan->dims[0].n / 2, 1);
}

void execute_r2hc_1d_discrete(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    gather_reals(scratch.data(), in, dim.n, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    r2hc_post_pass(scratch.data(), out, static_cast<const float*>(plan->aux), dim.n / 2, dim.os);
}

void execute_1d_r2hc_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    gather_as_complex(scratch.data(), in, dim.n, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    pack_half_complex(scratch.data(), out, dim.n, dim.os);
}

bool accepts_pairs(const fft_plan& p) {
    return p.kind == kind_r2r && p.r2r_kind[0] == r2r_r2hc && p.rank == 1 && p.howmany_rank == 1 && p.dims[0].n != 1 &&
           may_run_in_pieces(p);  // a pair written before a later row is read would spoil that row
}

void execute_r2hc_many(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    float* const pair = scratch.data();
    int64_t i = 0;
    for (; i + 2 <= rows.n; i += 2) {
        const float* const row = in + i * rows.is;
        float* const result = out + i * rows.os;
        pair_interleave(row, row + rows.is, pair, dim.n, dim.is);
        run(plan, complex_pair, pair, pair);
        pair_split_r2hc(result, result + rows.os, pair, dim.n, dim.os);
    }
    if (i < rows.n) run(plan, single_row, in + i * rows.is, out + i * rows.os);
}

}  // namespace

int solve_problem_r2hc_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_r2hc)) return refused;
    const int64_t n = plan->dims[0].n;
    if (n & 1) {
        if (!attach_buffer(plan, 8 * n) || !plan_buffer_subplan(plan, kind_c2c, n, sign_forward)) return refused;
        return install(plan, execute_1d_r2hc_odd, "execute_1d_r2hc_odd");
    }
    if (!attach_buffer(plan, 32 * (n + 2)) || !plan_buffer_subplan(plan, kind_c2c, n / 2, sign_forward) ||
        !attach_half_table(plan, n / 2))
        return refused;
    if (unit_strides(*plan)) return install(plan, execute_r2hc_1d, "execute_r2hc_1d");
    return install(plan, execute_r2hc_1d_discrete, "execute_r2hc_1d_discrete");
}

int solve_problem_r2hc_many(fft_plan* plan) {
    if (!accepts_pairs(*plan)) return refused;
    if (!attach_buffer(plan, 8 * plan->dims[0].n)) return refused;
    fft_plan** const subplans = make_pair_subplans(plan);
    if (!subplans) return refused;
    subplans[complex_pair]->sign = sign_forward;
    subplans[complex_pair]->split = interleaved_arrays;
    if (plan_subplans(subplans, 2) != accepted) return refused;
    return install(plan, execute_r2hc_many, "execute_r2hc_many");
}
