// SPDX-License-Identifier: Apache-2.0
// c2r_1d_upsampling: the c2r row pass of upsampling to twice the row length n / 2 = m. The coefficients above m / 2 are
// known to be zero, so the pre pass of c2r reads half of its input and no partners.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "real/half_length.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_c2r_upsampling && p.howmany_rank == 0 && p.rank == 1;
}

// For k = m / 2 the two stores meet and the second stands.
void upsample_c2r_pre_pass(const float* z, float* c, const float* table, int64_t m) {
    const float first = z[0], end = z[2 * m];
    c[0] = first + end;
    c[1] = first - end;
    for (int64_t k = 1; k <= m >> 1; ++k) {
        const float re = z[2 * k], im = z[2 * k + 1], *w = table + 2 * (k - 1);
        const float t = __builtin_fmaf(w[0], im, -(w[1] * re));
        const float u = __builtin_fmaf(w[0], re, w[1] * im);
        c[2 * k] = re - t;
        c[2 * k + 1] = im + u;
        c[2 * (m - k)] = re + t;
        c[2 * (m - k) + 1] = u - im;
    }
}

void execute_c2r_1d_upsampling(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    upsample_c2r_pre_pass(in, out, static_cast<const float*>(plan->aux), plan->dims[0].n >> 1);
    plan->subplans[0]->execute(plan->subplans[0], out, out);
}

}  // namespace

int solve_problem_c2r_1d_upsampling(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const int64_t m = plan->dims[0].n >> 1;
    if (!attach_half_table(plan, m)) return refused;
    fft_plan* const sub = make_complex_subplan(plan, m);
    if (!sub) return refused;
    sub->in = sub->out;
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_c2r_1d_upsampling, "execute_c2r_1d_upsampling");
}
