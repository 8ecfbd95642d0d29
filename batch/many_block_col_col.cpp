// SPDX-License-Identifier: Apache-2.0
// c2c_many_block_col_col: complex batches stored by columns, a multiple of 4 above 4, in blocks cut by a tuned table.
// Side by side on both sides any case fits, and groups of four that run where they stand are the fallback. Side by side
// on one side only, a block has to be gathered: without a copying case it refuses. (Transposing moves adjacent columns,
// so those cases need both sides.)
#include "batch/block_col_col_table.h"
#include "batch/many_direct.h"
#include "dft/four_lanes.h"
#include "dft/two_stages_each.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

#include <algorithm>

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_c2c && p.rank == 1 && p.howmany_rank == 1 &&
           (p.dims[0].is != 1 || p.dims[0].os != 1) && p.howmany[0].n > 4 && p.howmany[0].n % 4 == 0 &&
           may_run_in_pieces(p);
}

struct block_choice {
    int64_t block;  // 0: no case fits
    uint64_t variant;
};

block_choice choose_block(const fft_plan& p) {
    const uint64_t n = p.dims[0].n, count = p.howmany[0].n;
    const bool in_adjacent = p.howmany[0].is == 1, out_adjacent = p.howmany[0].os == 1;
    if (!in_adjacent && !out_adjacent) return {};
    const bool both_adjacent = in_adjacent && out_adjacent;
    for (const block_col_col_case& c : block_col_col_table)
        if (c.n == n && count % c.block == 0 && count > c.block && (c.exact == 0 || c.exact == count) &&
            (both_adjacent || c.variant == block_copy))
            return {static_cast<int64_t>(c.block), c.variant};
    return both_adjacent ? block_choice{4, block_parallel} : block_choice{};
}

void execute_c2c_many_block_col_col_parallel(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan* const group = plan->subplans[0];
    const fft_dim batch = plan->howmany[0];
    for (int64_t i = 0; i < batch.n; i += group->howmany[0].n)
        group->execute(group, in + 2 * i * batch.is, out + 2 * i * batch.os);
}

// The same where a group is one call of a kernel, or two: no plan between the kernels, which for short lengths costs as
// much.
void execute_groups_by_kernel(fft_plan* plan, float* in, float* out) {
    execute_adjacent_groups(*plan->subplans[0], in, out, plan->howmany[0].n);
}

void execute_groups_by_straight(fft_plan* plan, float* in, float* out) {
    const fft_plan& group = *plan->subplans[0];
    const fft_dim batch = plan->howmany[0];
    const int64_t lanes = group.howmany[0].n;
    execute_straight_each(group, in, out, batch.n / lanes, 2 * lanes * batch.is, 2 * lanes * batch.os);
}

void execute_groups_by_stages(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan* const group = plan->subplans[0];
    const fft_dim batch = plan->howmany[0];
    const int64_t lanes = group->howmany[0].n;
    execute_two_stages_each(group, in, out, batch.n / lanes, 2 * lanes * batch.is, 2 * lanes * batch.os);
}

int install_parallel(fft_plan* plan) {
    constexpr const char* name = "execute_c2c_many_block_col_col_parallel";
    const fft_plan& group = *plan->subplans[0];
    if (group.runs == runs_kernel_of_four_lanes)
        return install(plan, execute_groups_by_kernel, name, runs_groups_by_kernel);
    if (!runs_by_two_stages(group)) return install(plan, execute_c2c_many_block_col_col_parallel, name, runs_groups);
    if (has_straight_kernels(group)) return install(plan, execute_groups_by_straight, name, runs_groups_by_straight);
    return install(plan, execute_groups_by_stages, name, runs_groups_by_stages);
}

// A plan of the form above, which runs the plan of a group at one place after the other.
bool runs_in_groups(const fft_plan& p) {
    return p.runs == runs_groups || p.runs == runs_groups_by_kernel || p.runs == runs_groups_by_stages ||
           p.runs == runs_groups_by_straight;
}
fft_plan* group_of(const fft_plan& columns) { return columns.subplans[0]; }

void execute_c2c_many_block_col_col_copy(fft_plan* plan, float* in, float* out) {
    plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan* const columns = plan->subplans[0];
    const fft_dim d = plan->dims[0], batch = plan->howmany[0];
    const int64_t block = columns->howmany[0].n;
    for (int64_t i = 0; i < batch.n; i += block) {
        copy_matrix_cpx(in + 2 * i * batch.is, scratch.data(), d.n, block, batch.is, d.is, 1, block);
        columns->execute(columns, scratch.data(), scratch.data());
        copy_matrix_cpx(scratch.data(), out + 2 * i * batch.os, d.n, block, 1, block, batch.os, d.os);
    }
}

// The same where groups of four run by stages, or by a kernel that needs no working memory. As few columns are gathered
// at once as fill whole cache lines, each group of four by itself, at the start of the scratch, which stays in the
// caches.
constexpr int64_t columns_at_once = 16;

void gather_groups(const fft_plan& plan, const float* in, float* grouped, int64_t count) {
    const fft_dim d = plan.dims[0], batch = plan.howmany[0];
    if (batch.is == 1) return pack_lanes4(in, grouped, d.n, count, d.n, d.is);
    for (int64_t g = 0; g < count; g += 4) {
        const float* const from = in + 2 * g * batch.is;
        float* const group = grouped + 2 * g * d.n;
        if (d.is == 1)
            transpose_cpx_tiled(from, group, 4, d.n, batch.is, 4);
        else
            copy_matrix_cpx(from, group, d.n, 4, batch.is, d.is, 1, 4);
    }
}

void scatter_groups(const fft_plan& plan, const float* grouped, float* out, int64_t count) {
    const fft_dim d = plan.dims[0], batch = plan.howmany[0];
    if (batch.os == 1) return unpack_lanes4(grouped, out, d.n, count, d.n, d.os);
    for (int64_t g = 0; g < count; g += 4)
        copy_matrix_cpx(grouped + 2 * g * d.n, out + 2 * g * batch.os, d.n, 4, 1, 4, batch.os, d.os);
}

// Four columns are half a cache line. Where the lines of a block don't stay in a second-level cache of 1 MiB until the
// next four columns come, they would travel twice, which costs more than the copy. Else the last stage writes to the
// output itself.
constexpr int64_t cached_output_bytes = 1 << 19;

bool ends_in_stages(const fft_plan& p) {
    return p.howmany[0].os == 1 && p.dims[0].n * p.dims[0].os * 8 <= cached_output_bytes;
}

void run_blocks(const fft_plan& plan, float* in, float* out, float* grouped, float* working) {
    const fft_dim d = plan.dims[0], batch = plan.howmany[0];
    const bool scatters = !ends_in_stages(plan);
    for (int64_t i = 0; i < batch.n; i += columns_at_once) {
        const int64_t count = std::min(columns_at_once, batch.n - i);
        float *const from = in + 2 * i * batch.is, *const to = out + 2 * i * batch.os;
        gather_groups(plan, from, grouped, count);
        for (int64_t g = 0; g < count; g += 4) {
            float* const group = grouped + 2 * g * d.n;
            execute_four_lanes(plan.aux, group, scatters ? group : to + 2 * g, working);
        }
        if (scatters) scatter_groups(plan, grouped, to, count);
    }
}

void execute_blocks_by_kernel(fft_plan* plan, float* in, float* out) {
    if (plan_scratch scratch{plan}) run_blocks(*plan, in, out, scratch.data(), nullptr);
}

void execute_blocks_by_stages(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan), working(group_of(*plan->subplans[0]));
    if (scratch && working) run_blocks(*plan, in, out, scratch.data(), working.data());
}

bool takes_columns_in_groups(const fft_plan& p) {
    const fft_plan& columns = *p.subplans[0];
    return columns.howmany[0].n >= columns_at_once && runs_in_groups(columns) &&
           can_run_in_four_lanes(*group_of(columns));
}

void execute_c2c_many_block_col_col_trans(fft_plan* plan, float* in, float* out) {
    plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan* const rows = plan->subplans[0];
    const fft_dim d = plan->dims[0], batch = plan->howmany[0];
    const int64_t block = rows->howmany[0].n;
    for (int64_t i = 0; i < batch.n; i += block) {
        transpose_cpx_tiled(in + 2 * i * batch.is, scratch.data(), d.n, block, d.is, d.n);
        rows->execute(rows, scratch.data(), scratch.data());
        transpose_cpx_tiled(scratch.data(), out + 2 * i * batch.os, block, d.n, d.n, d.os);
    }
}

// Groups of four run on the plan's own arrays, gathered blocks on its buffer.
void set_block(fft_plan* sub, const block_choice& choice, float* buffer) {
    const int64_t n = sub->dims[0].n, block = choice.block;
    if (choice.variant == block_parallel) {
        sub->howmany[0] = {block, 1, 1};
        return;
    }
    const bool rows = choice.variant == block_trans;
    sub->dims[0] = rows ? fft_dim{n, 1, 1} : fft_dim{n, block, block};
    sub->howmany[0] = rows ? fft_dim{block, n, n} : fft_dim{block, 1, 1};
    sub->double_os = 0;
    sub->in = sub->out = buffer;
}

int install_copy(fft_plan* plan) {
    constexpr const char* name = "execute_c2c_many_block_col_col_copy";
    if (!takes_columns_in_groups(*plan)) return install(plan, execute_c2c_many_block_col_col_copy, name);
    const fft_plan& group = *group_of(*plan->subplans[0]);
    // The working memory of the stages is that of the group, if it has some: where the clock had the choice, the group
    // may be a plan of another kind.
    const bool straight = runs_by_straight_kernel(group);
    if ((!straight && !group.buffer) || !attach_aux(plan, four_lanes_list_bytes(group))) return refused;
    fill_four_lanes_list(group, plan->aux, 4, ends_in_stages(*plan) ? plan->dims[0].os : 4);
    return straight ? install(plan, execute_blocks_by_kernel, name, runs_blocks_by_kernel)
                    : install(plan, execute_blocks_by_stages, name, runs_blocks_by_stages);
}

int install_variant(fft_plan* plan, uint64_t variant) {
    switch (variant) {
        case block_parallel:
            return install_parallel(plan);
        case block_copy:
            return install_copy(plan);
        default:
            return install(plan, execute_c2c_many_block_col_col_trans, "execute_c2c_many_block_col_col_trans");
    }
}

}  // namespace

int solve_problem_c2c_many_block_col_col(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const block_choice choice = choose_block(*plan);
    if (!choice.block || !attach_buffer(plan, choice.block * plan->dims[0].n * 8) || !make_subplans(plan, 1))
        return refused;
    set_block(plan->subplans[0], choice, static_cast<float*>(plan->buffer));
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    plan->howmany[0].os = doubled_stride(plan->double_os, plan->howmany[0].os);
    plan->dims[0].os = doubled_stride(plan->double_os, plan->dims[0].os);
    return install_variant(plan, choice.variant);
}
