// SPDX-License-Identifier: Apache-2.0
// nop: complex transforms of length 1, the identity in both directions: a copy, or nothing in place. Batches of more
// than one dimension are peeled by dft_many first. In place the two batch distances must agree, or values would have to
// change places.
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.kind == kind_c2c && p.split != split_arrays && p.howmany_rank <= 1 && p.rank <= 1 && p.dims[0].n == 1 &&
           may_run_in_pieces(p);
}

void execute_nop(fft_plan* plan, float* in, float* out) {
    if (in == out) return;
    const fft_dim batch = plan->howmany_rank == 0 ? fft_dim{1, 1, 1} : plan->howmany[0];
    copy_cpx(in, out, batch.n, batch.is, batch.os);
}

}  // namespace

int solve_problem_nop(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    return install(plan, execute_nop, "execute_nop");
}
