// SPDX-License-Identifier: Apache-2.0
// r2c_nop and c2r_nop: a batch of real transforms of one point. r2c writes (x, 0) for each row, out of place or in
// place; c2r writes the real part of each row, in place only: out of place it is left to the pair solvers. A batch in
// place whose rows would overwrite what later rows read is left to the buffered pair solvers.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

namespace {

bool one_point_rows(const fft_plan& p, uint32_t kind) {
    return p.split != split_arrays && p.kind == kind && p.rank == 1 && p.howmany_rank == 1 && p.dims[0].n == 1;
}

bool may_run(const fft_plan& p) { return may_run_in_pieces(p) || may_run_ascending(p, {1, true}); }

bool accepts_r2c(const fft_plan& p) {
    return one_point_rows(p, kind_r2c) && !(p.in == p.out && p.howmany[0].is == 1) && may_run(p);
}

bool accepts_c2r(const fft_plan& p) { return one_point_rows(p, kind_c2r) && p.in == p.out && may_run(p); }

void execute_r2c_nop(fft_plan* plan, float* in, float* out) {
    const fft_dim rows = plan->howmany[0];
    for (int64_t i = 0; i < rows.n; ++i) {
        out[2 * i * rows.os] = in[i * rows.is];
        out[2 * i * rows.os + 1] = 0;
    }
}

void execute_c2r_nop(fft_plan* plan, float* in, float* out) {
    const fft_dim rows = plan->howmany[0];
    for (int64_t i = 0; i < rows.n; ++i) out[i * rows.os] = in[2 * i * rows.is];
}

}  // namespace

int solve_problem_r2c_nop(fft_plan* plan) {
    if (!accepts_r2c(*plan)) return refused;
    return install(plan, execute_r2c_nop, "execute_r2c_nop");
}

int solve_problem_c2r_nop(fft_plan* plan) {
    if (!accepts_c2r(*plan)) return refused;
    return install(plan, execute_c2r_nop, "execute_c2r_nop");
}
