// SPDX-License-Identifier: Apache-2.0
// rearrange_inplace and rearrange_outplace: rank 0, so that only the batch is left and data moves without a transform.
// Out of place it is one transpose or one copy. In place a square matrix is transposed where it stands; anything else
// goes to the buffer and back, by two subplans that are out of place. Split arrays have no plan of rank 0.
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool moves_data(const fft_plan& p) {
    return (p.kind == kind_c2c || p.kind == kind_r2r) && p.split != split_arrays && p.howmany_rank >= 1 && p.rank == 0;
}

bool is_transpose(const fft_plan& p) { return p.howmany_rank == 2 && p.howmany[1].is == 1 && p.howmany[0].os == 1; }

// Both sides must agree on the leading dimension too, or the mirror of an element isn't where the transpose puts it.
bool is_square_transpose(const fft_plan& p) {
    return is_transpose(p) && p.howmany[0].n == p.howmany[1].n && p.howmany[0].is == p.howmany[1].os;
}

uint64_t batch_bytes(const fft_plan& p) {
    uint64_t bytes = p.kind == kind_c2c ? 8 : 4;
    for (int i = 0; i < p.howmany_rank; ++i) bytes *= p.howmany[i].n;
    return bytes;
}

// The strides of the buffer: its elements stand in the order of the input, without gaps.
void compact_strides(const fft_plan& p, int64_t* strides) {
    for (int i = 0; i < p.howmany_rank; ++i) {
        strides[i] = 1;
        for (int k = 0; k < p.howmany_rank; ++k) {
            const bool inside = p.howmany[k].is < p.howmany[i].is || (p.howmany[k].is == p.howmany[i].is && k > i);
            if (inside) strides[i] *= p.howmany[k].n;
        }
    }
}

int plan_through_buffer(fft_plan* plan, execute_function execute, const char* execute_name) {
    if (!make_subplans(plan, 2) || !attach_buffer(plan, batch_bytes(*plan))) return refused;
    fft_plan *to_buffer = plan->subplans[0], *from_buffer = plan->subplans[1];
    int64_t strides[max_rank];
    compact_strides(*plan, strides);
    for (int i = 0; i < plan->howmany_rank; ++i) to_buffer->howmany[i].os = from_buffer->howmany[i].is = strides[i];
    to_buffer->out = from_buffer->in = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 2) != accepted) return refused;
    return install(plan, execute, execute_name);
}

void execute_rearrange_inplace(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan *to_buffer = plan->subplans[0], *from_buffer = plan->subplans[1];
    to_buffer->execute(to_buffer, in, scratch.data());
    from_buffer->execute(from_buffer, scratch.data(), out);
}

void execute_trans_cpx_square_matrix(fft_plan* plan, float*, float* out) {
    transpose_cpx_square(out, plan->howmany[0].n, plan->howmany[0].is);
}

void execute_trans_fp_square_matrix(fft_plan* plan, float*, float* out) {
    transpose_fp_square(out, plan->howmany[0].n, plan->howmany[0].is);
}

void execute_trans_cpx(fft_plan* plan, float* in, float* out) {
    const fft_dim rows = plan->howmany[0], columns = plan->howmany[1];
    transpose_cpx(in, out, rows.n, columns.n, rows.is, columns.os);
}

void execute_trans_fp(fft_plan* plan, float* in, float* out) {
    const fft_dim rows = plan->howmany[0], columns = plan->howmany[1];
    transpose_fp(in, out, rows.n, columns.n, rows.is, columns.os);
}

void execute_copy_cpx(fft_plan* plan, float* in, float* out) {
    copy_nd_cpx(in, out, plan->howmany_rank, plan->howmany);
}

void execute_copy_fp(fft_plan* plan, float* in, float* out) { copy_nd_fp(in, out, plan->howmany_rank, plan->howmany); }

}  // namespace

int solve_problem_rearrange_inplace(fft_plan* plan) {
    if (!moves_data(*plan) || plan->in != plan->out) return refused;
    if (!is_square_transpose(*plan))
        return plan_through_buffer(plan, execute_rearrange_inplace, "execute_rearrange_inplace");
    return plan->kind == kind_c2c ? install(plan, execute_trans_cpx_square_matrix, "execute_trans_cpx_square_matrix")
                                  : install(plan, execute_trans_fp_square_matrix, "execute_trans_fp_square_matrix");
}

int solve_problem_rearrange_outplace(fft_plan* plan) {
    if (!moves_data(*plan) || plan->in == plan->out) return refused;
    if (is_transpose(*plan))
        return plan->kind == kind_c2c ? install(plan, execute_trans_cpx, "execute_trans_cpx")
                                      : install(plan, execute_trans_fp, "execute_trans_fp");
    return plan->kind == kind_c2c ? install(plan, execute_copy_cpx, "execute_copy_cpx")
                                  : install(plan, execute_copy_fp, "execute_copy_fp");
}
