// SPDX-License-Identifier: Apache-2.0
// dft_many: any batch that no faster row took. The outermost batch dimension is peeled into a loop over one subplan.
// It leaves four complex transforms side by side to the four-lane form of the multi-stage solver, one-dimensional real
// batches of unit distances to the rows in front of it, and batches in place whose later inputs would be overwritten.
#include "dft/four_lanes.h"
#include "dft/sizes.h"
#include "dft/two_stages_each.h"
#include "kernels/lookup.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"
#include "record/subplans.h"

namespace {

bool side_by_side(const fft_plan& p) { return p.howmany_rank == 1 && p.howmany[0].is == 1 && p.howmany[0].os == 1; }

// Four adjacent transforms of a smooth length: one run of the multi-stage solver on four lanes.
bool fills_four_lanes(const fft_plan& p) {
    return p.rank == 1 && side_by_side(p) && p.howmany[0].n == 4 && !has_large_prime_factor(p.dims[0].n);
}

bool takes_kind(const fft_plan& p) {
    switch (p.kind) {
        case kind_c2c:
            return !fills_four_lanes(p);
        case kind_c2r:
            return !(p.rank == 1 && side_by_side(p) && p.dims[0].n != 1);
        case kind_r2c:
            return !(p.rank == 1 && side_by_side(p));
        case kind_r2r:
        case kind_c2r_upsampling:
            return true;
        default:
            return false;
    }
}

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.rank >= 1 && p.howmany_rank >= 1 && takes_kind(p) && may_run_in_pieces(p);
}

void execute_many(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(plan->kind, &in_bytes, &out_bytes);
    const int64_t in_step = plan->howmany[0].is * static_cast<int64_t>(in_bytes / sizeof(float));
    const int64_t out_step = plan->howmany[0].os * static_cast<int64_t>(out_bytes / sizeof(float));
    fft_plan* item = plan->subplans[0];
    for (int64_t i = 0; i < plan->howmany[0].n; ++i) item->execute(item, in + i * in_step, out + i * out_step);
}

void execute_two_stages_of_many(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    const fft_dim batch = plan->howmany[0];
    execute_two_stages_each(plan->subplans[0], in, out, batch.n, 2 * batch.is, 2 * batch.os);
}

void execute_straight_of_many(fft_plan* plan, float* in, float* out) {
    const fft_dim batch = plan->howmany[0];
    execute_straight_each(*plan->subplans[0], in, out, batch.n, 2 * batch.is, 2 * batch.os);
}

// Adjacent elements on one side, adjacent transforms on the other.
bool turns_rows_to_columns(const fft_plan& p) { return p.dims[0].is == 1 && p.howmany[0].os == 1; }
bool turns_columns_to_rows(const fft_plan& p) { return p.howmany[0].is == 1 && p.dims[0].os == 1; }

// Rows to columns or back. Four transforms run in the lanes of vectors: where they stand side by side they are read and
// written four at a time, and on the other side a transposition between `turned` and four rows exchanges them.
// `four_lanes` does four such transforms.
template <class FourLanes>
void run_rows_and_columns(fft_plan* plan, float* in, float* out, float* turned, const FourLanes& four_lanes) {
    const int64_t n = plan->dims[0].n;
    const fft_dim batch = plan->howmany[0];
    const bool to_columns = turns_rows_to_columns(*plan);
    fft_plan* item = plan->subplans[0];
    int64_t i = 0;
    for (; i + 4 <= batch.n; i += 4) {
        float *const from = in + 2 * i * batch.is, *const to = out + 2 * i * batch.os;
        if (to_columns) transpose_cpx_tiled(from, turned, 4, n, batch.is, 4);
        four_lanes(to_columns ? turned : from, to_columns ? to : turned);
        if (!to_columns) transpose_cpx_tiled(turned, to, n, 4, 4, batch.os);
    }
    for (; i < batch.n; ++i) item->execute(item, in + 2 * i * batch.is, out + 2 * i * batch.os);
}

void execute_rows_and_columns(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_rows_and_columns(plan, in, out, scratch.data(), [&](const float* from, float* to) {
        execute_four_lanes(plan->aux, from, to, scratch.data());
    });
}

// Rows to columns that lie far apart: four of them are half a cache line, whose other half would have to come again.
// Four groups of four are transformed in their place, and their sixteen columns written together.
constexpr int64_t columns_at_once = 16;

bool columns_lie_far_apart(const fft_plan& p) {
    constexpr int64_t cached_output_bytes = 1 << 19;
    return turns_rows_to_columns(p) && p.howmany[0].n % columns_at_once == 0 &&
           p.dims[0].n * p.dims[0].os * 8 > cached_output_bytes;
}

void execute_rows_to_far_columns(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim d = plan->dims[0], batch = plan->howmany[0];
    float* const working = scratch.data() + 2 * columns_at_once * d.n;
    for (int64_t i = 0; i < batch.n; i += columns_at_once) {
        for (int64_t g = 0; g < columns_at_once; g += 4) {
            float* const group = scratch.data() + 2 * g * d.n;
            transpose_cpx_tiled(in + 2 * (i + g) * batch.is, group, 4, d.n, batch.is, 4);
            execute_four_lanes(plan->aux, group, group, working);
        }
        unpack_lanes4(scratch.data(), out + 2 * i, d.n, columns_at_once, d.n, d.os);
    }
}

// Rows and columns over items of one kernel call: a plan of such items owns no storage. What is turned fits on the
// stack, and the kernel for four lanes is told by the execute function, one for each direction.
constexpr int64_t one_kernel_length = 64;

template <bool forward>
void execute_short_rows_and_columns(fft_plan* plan, float* in, float* out) {
    const fft_dim d = plan->dims[0];
    const bool to_columns = turns_rows_to_columns(*plan);
    const int64_t is = to_columns ? 4 : d.is, os = to_columns ? d.os : 4;
    const many_kernel kernel = (forward ? many_quad_sve_fwd : many_quad_sve_bwd)[one_kernel_length - 1];
    alignas(64) float turned[2 * 4 * one_kernel_length];
    run_rows_and_columns(plan, in, out, turned, [&](const float* from, float* to) { kernel(to, from, is, os); });
}

bool is_one_kernel(const fft_plan& item) {
    return item.dims[0].n == one_kernel_length && item.subplan_count == 0 && !item.buffer;
}

int install_short_rows_and_columns(fft_plan* plan) {
    const bool forward = plan->sign == sign_forward;
    return install(plan, forward ? execute_short_rows_and_columns<true> : execute_short_rows_and_columns<false>,
                   "execute_many", runs_turned_by_kernel);
}

bool turns_in_four_lanes(const fft_plan& p) {
    return p.kind == kind_c2c && p.rank == 1 && p.howmany_rank == 1 && p.howmany[0].n >= 4 &&
           (turns_rows_to_columns(p) || turns_columns_to_rows(p)) && can_run_in_four_lanes(*p.subplans[0]);
}

int install_loop(fft_plan* plan) {
    const fft_plan& item = *plan->subplans[0];
    if (plan->howmany_rank != 1 || !runs_by_two_stages(item)) return install(plan, execute_many, "execute_many");
    if (has_straight_kernels(item)) return install(plan, execute_straight_of_many, "execute_many", runs_straight_each);
    return install(plan, execute_two_stages_of_many, "execute_many", runs_two_stages_each);
}

}  // namespace

int solve_problem_dft_many(fft_plan* plan) {
    if (!accepts(*plan) || !make_subplans(plan, 1)) return refused;
    plan->howmany[0].os = doubled_stride(plan->double_os, plan->howmany[0].os);
    fft_plan* item = plan->subplans[0];
    drop_outer_batch(item, plan);
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    item = plan->subplans[0];
    if (!turns_in_four_lanes(*plan)) return install_loop(plan);
    if (is_one_kernel(*item)) return install_short_rows_and_columns(plan);
    const bool to_columns = turns_rows_to_columns(*plan), far = columns_lie_far_apart(*plan);
    if (!attach_buffer(plan, (far ? columns_at_once + 2 * 4 : 2 * 4) * 8 * plan->dims[0].n) ||
        !attach_aux(plan, four_lanes_list_bytes(*item)))
        return refused;
    fill_four_lanes_list(*item, plan->aux, to_columns ? 4 : plan->dims[0].is,
                         to_columns && !far ? plan->dims[0].os : 4);
    return install(plan, far ? execute_rows_to_far_columns : execute_rows_and_columns, "execute_many",
                   runs_by_straight_kernel(*item) ? runs_turned_by_kernel : runs_turned_by_stages);
}
