// SPDX-License-Identifier: Apache-2.0
// r2c_1d_direct and c2r_1d_direct: one real-to-complex or complex-to-real transform whose length has a kernel of its
// own: 2, 3, 4, 5, 7, 8, 16, 32 or 64, with any strides. The plan is that kernel and its offsets in `aux`, executing it
// is one call. The kernels leave out the imaginary parts that are zero by symmetry: r2c writes them here, c2r never
// reads them.
#include "planner/solvers.h"
#include "real/alone.h"
#include "real/direct_tables.h"

namespace {

bool accepts(const fft_plan& p, uint32_t kind) {
    return p.split != split_arrays && p.kind == kind && p.rank == 1 && p.howmany_rank == 0;
}

bool attach_private_buffer(fft_plan* plan, uint64_t bytes) {
    return plan->private_copy != 1 || attach_buffer(plan, bytes);
}

void execute_r2c_1d_direct_odd(fft_plan* plan, float* in, float* out) {
    const auto& aux = *static_cast<const r2c_direct_aux*>(plan->aux);
    aux.kernel(in, in + plan->dims[0].is, out, out + 1, aux.in_offsets, aux.out_offsets_re, aux.out_offsets_im, 1, 0,
               0);
    out[1] = 0;
}

void execute_r2c_1d_direct_even(fft_plan* plan, float* in, float* out) {
    execute_r2c_1d_direct_odd(plan, in, out);
    out[plan->dims[0].n * plan->dims[0].os + 1] = 0;
}

void execute_c2r_1d_direct(fft_plan* plan, float* in, float* out) {
    const auto& aux = *static_cast<const r2c_direct_aux*>(plan->aux);
    const int64_t os = plan->dims[0].os;
    aux.kernel(out, out + os, in, in + 1, aux.in_offsets, aux.out_offsets_re, aux.out_offsets_im, plan->howmany[0].n,
               os, 0);
}

}  // namespace

int solve_problem_r2c_1d_direct(fft_plan* plan) {
    if (!accepts(*plan, kind_r2c)) return refused;
    const fft_dim dim = plan->dims[0];
    const real_kernel kernel = lookup_r2c_direct(plan, dim.n);
    if (!kernel || !attach_r2c_direct_aux(plan, kernel, dim.is, dim.os)) return refused;
    if (!attach_private_buffer(plan, 8 * (dim.n / 2 + 1))) return refused;
    if (dim.n & 1)
        install(plan, execute_r2c_1d_direct_odd, "execute_r2c_1d_direct_odd");
    else
        install(plan, execute_r2c_1d_direct_even, "execute_r2c_1d_direct_even");
    return run_alone<r2c_alone_fwd, true>(plan);
}

int solve_problem_c2r_1d_direct(fft_plan* plan) {
    if (!accepts(*plan, kind_c2r)) return refused;
    const fft_dim dim = plan->dims[0];
    const real_kernel kernel = lookup_c2r_direct(plan, dim.n);
    if (!kernel || !attach_r2c_direct_aux(plan, kernel, dim.os, dim.is)) return refused;
    if (!attach_private_buffer(plan, 4 * dim.n)) return refused;
    plan->howmany[0].n = 1;
    install(plan, execute_c2r_1d_direct, "execute_c2r_1d_direct");
    return run_alone<c2r_alone_bwd>(plan);
}
