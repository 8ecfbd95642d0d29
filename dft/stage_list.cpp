// SPDX-License-Identifier: Apache-2.0
#include "dft/stage_list.h"

#include "dft/stage_lookup.h"
#include "dft/twiddles.h"
#include "kernels/level.h"
#include "kernels/lookup.h"
#include "record/problem.h"

constinit const stage_isa stages_neon = {2,
                                         stage_lookup_first_neon,
                                         stage_lookup_other_neon,
                                         stage_lookup_last_neon,
                                         stage_lookup_other_plain_neon,
                                         stage_lookup_last_plain_neon,
                                         twiddle_fill_last_neon,
                                         false,
                                         false};
constinit const stage_isa stages_sve = {4,
                                        stage_lookup_first_sve,
                                        stage_lookup_other_sve,
                                        stage_lookup_last_sve,
                                        stage_lookup_other_plain_sve,
                                        stage_lookup_last_plain_sve,
                                        twiddle_fill_last_sve,
                                        true,
                                        has_registers_of_four};

namespace {

constexpr uint64_t table_alignment = 64;

// Counts, strides and switches of every stage. Between the stages the lanes of an element stand side by side.
void fill_records(const fft_plan* plan, const stage_isa& isa, stage_record* stages, uint64_t count,
                  const uint64_t* radices, int64_t lanes) {
    uint64_t done = 1, rest = plan->dims[0].n;
    for (uint64_t q = 0; q < count; ++q) {
        rest /= radices[q];
        stages[q] = {};
        stages[q].rest = rest;
        stages[q].done = done;
        stages[q].is = stages[q].os = lanes;
        stages[q].radix = radices[q];
        stages[q].sign = plan->sign;
        done *= radices[q];
    }
    stage_record& first = stages[0];
    stage_record& last = stages[count - 1];
    first.is = plan->dims[0].is;
    last.os = plan->dims[0].os;
    if (isa.copies_switches) {
        first.double_is = plan->double_is;
        last.double_os = plan->double_os;
    }
}

// Kernels and tables of the stages behind the first. `across_rows` tells that the last stage's kernel runs along the
// rows, several at a time, and wants their entries interleaved.
void fill_later_stages(const fft_plan* plan, stage_isa::lookup other, stage_isa::lookup last,
                       decltype(stage_isa::fill_last) fill_last, stage_record* stages, uint64_t count, float* table) {
    stages[0].twiddles = table;
    for (uint64_t q = 1; q < count; ++q) {
        stage_record& s = stages[q];
        s.twiddles = table;
        const bool is_last = q + 1 == count;
        (is_last ? last : other)(&s, plan);
        (is_last ? fill_last : twiddle_fill_rows)(table, plan->dims[0].n, s.radix, s.done, s.rest, s.sign);
        table += 2 * (s.radix - 1) * s.done;
    }
}

// Where it can, the last stage gets its rows in blocks, which costs it half the shuffles of gathers. A stage without a
// kernel is the solver's own and knows no blocks.
void pass_rows_in_blocks(stage_record* stages, uint64_t count) {
    if (count < 2) return;
    stage_record &last = stages[count - 1], &before = stages[count - 2];
    const bool whole_groups = (before.done == 1 ? before.radix : before.done) % 4 == 0;
    if (before.kernel && whole_groups && takes_blocks(last.radix))
        before.spare[word_of_blocks] = last.spare[word_of_blocks] = 1;
}

straight_kernels find_straight_kernels(const fft_plan& plan) {
    const uint64_t n = plan.dims[0].n;
    if (is_batch_of_lanes(plan, 4)) return {lookup_straight_quad_sve(&plan, n), nullptr};
    if (plan.howmany_rank == 0 && has_unit_strides(plan)) return {nullptr, lookup_straight_rows_neon(&plan, n)};
    return {};
}

void fill_stages(const fft_plan* plan, const stage_isa& isa, uint64_t count, const uint64_t* radices) {
    const stage_list list = multi_stage_list(plan->aux, count);
    if (count != 2) stage_count_of(plan->aux) = count;
    const bool batched = is_batch_of_lanes(*plan, isa.lanes);
    fill_records(plan, isa, list.stages, count, radices, batched ? isa.lanes : 1);
    isa.first(&list.stages[0], plan);
    keep_straight_kernels(list.stages[0], find_straight_kernels(*plan));
    const bool across_rows = !batched && has_unit_strides(*plan);
    fill_later_stages(plan, isa.other, isa.last, across_rows ? isa.fill_last : twiddle_fill_rows, list.stages, count,
                      list.tables);
    if (across_rows && isa.passes_blocks) pass_rows_in_blocks(list.stages, count);
}

}  // namespace

std::span<stage_record> stages_of(const fft_plan& plan) {
    switch (plan.runs) {
        case runs_two_stages:
        case runs_straight_kernel:  // in place of the stages, which serve transforms that are left over
            return {two_stages(plan.aux), 2};
        case runs_stages:
        case runs_stages_in_scratch:
            return {counted_stages(plan.aux), stage_count_of(plan.aux)};
        default:
            return {};
    }
}

stage_list multi_stage_list(void* aux, uint64_t stage_count) {
    stage_record* stages = stage_count == 2 ? two_stages(aux) : counted_stages(aux);
    const uintptr_t behind = reinterpret_cast<uintptr_t>(stages + stage_count);
    return {stages, reinterpret_cast<float*>((behind + table_alignment - 1) & ~(table_alignment - 1))};
}

bool find_radix_order(const fft_plan* plan, radix_order& order) {
    radix_schedule_result result = {};
    radix_schedule(plan, &result, plan->dims[0].n, order.radices);
    order.stage_count = result.stage_count;
    return result.stage_count > 0 && result.list_count > 0;
}

void build_stages(fft_plan* plan, const radix_order& order, apply_radices fill, uint64_t argument,
                  uint64_t first_free) {
    radix_order chosen = order;
    if (is_measured(*plan) && order.stage_count > first_free) {
        radix_order tried = order;
        search_radix_orders(plan, tried.radices, 1, chosen.radices, order.stage_count, fill, argument, first_free);
    }
    fill(plan, chosen.stage_count, chosen.radices, argument);
}

void stage_fill_neon(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t) {
    fill_stages(plan, stages_neon, stage_count, radices);
}

void stage_fill_sve(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t) {
    fill_stages(plan, stages_sve, stage_count, radices);
}

void fill_convolution_stages(const fft_plan* plan, const stage_isa& isa, const stage_list& list, uint64_t count,
                             const uint64_t* radices) {
    fill_records(plan, isa, list.stages, count, radices, 1);
    fill_later_stages(plan, isa.other_plain, isa.last_plain,
                      has_unit_strides(*plan) ? isa.fill_last : twiddle_fill_rows, list.stages, count, list.tables);
    if (has_unit_strides(*plan) && isa.passes_blocks) pass_rows_in_blocks(list.stages, count);
}
