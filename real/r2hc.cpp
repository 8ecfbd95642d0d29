// SPDX-License-Identifier: Apache-2.0
// r2hc_1d and r2hc_many: real to half-complex. The first takes one transform of any length: an even one by a complex
// transform of half the length, an odd one by a complex transform of the reals. The second takes a batch, two rows at a
// time as one complex transform; it leaves length 1 to the generic loop.
#include "planner/solvers.h"
#include "real/packed_spectrum.h"
#include "real/pair_passes.h"
#include "real/pair_subplans.h"
#include "record/in_place.h"

namespace {

constexpr packed_form half_complex = {r2hc_post_pass, pack_half_complex};

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
    if (!is_single_r2r(*plan, r2r_r2hc) || !attach_packed(plan, sign_forward)) return refused;
    return install_packed<half_complex>(plan, {"execute_r2hc_1d", "execute_r2hc_1d_discrete", "execute_1d_r2hc_odd"});
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
