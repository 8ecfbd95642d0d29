// SPDX-License-Identifier: Apache-2.0
// c2c_1d_sve and c2c_1d_neon: one complex transform of a smooth length as a self-sorting chain of stages (Cooley-Tukey,
// Stockham's order), or four (SVE) and two (NEON) at once whose elements stand side by side. The twins differ by that
// count and by their kernels; of single transforms NEON gets only those for which the clock prefers it.
#include "dft/multi_stage.h"

#include "dft/stage_list.h"
#include "dft/stage_lookup.h"
#include "kernels/lookup.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/problem.h"

namespace {

struct multi_stage_form {
    const stage_isa& isa;
    apply_radices fill;
    const char* contiguous;
    const char* discrete;
    const char* two_stages;
};

bool accepts(const fft_plan& p, int64_t lanes) {
    return is_complex_of_rank_1(p) && (p.howmany_rank == 0 || is_batch_of_lanes(p, lanes)) && p.dims[0].n > 1 &&
           !has_large_prime_factor(p.dims[0].n);
}

// A contiguous output may serve as a working array. A strided one can't, nor can that of several transforms with unit
// strides: they overlap each other, in an array shorter than the working array of all.
bool output_serves_as_array(const fft_plan& p) { return has_unit_strides(p) && p.howmany_rank == 0; }

bool attach_storage(fft_plan* plan, uint64_t stage_count, int64_t lanes) {
    const uint64_t n = plan->dims[0].n, working_arrays = output_serves_as_array(*plan) ? 1 : 2;
    return attach_aux(plan, 8 * (n + 9 + stage_record_words * stage_count)) &&
           attach_buffer(plan, 8 * n * working_arrays * (plan->howmany_rank ? lanes : 1));
}

void execute_contiguous(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_stages(counted_stages(plan->aux), stage_count_of(plan->aux), in, {out, scratch.data()}, out);
}

void execute_discrete(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    float* second_half = scratch.data() + plan->buffer_size / 2 / sizeof(float);
    run_stages(counted_stages(plan->aux), stage_count_of(plan->aux), in, {second_half, scratch.data()}, out);
}

void execute_two_stages(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const stage_record* stages = two_stages(plan->aux);
    stages[0].kernel(&stages[0], in, scratch.data());
    stages[1].kernel(&stages[1], scratch.data(), out);
}

// Where four transforms fill the lanes of vectors the straight kernel of their length, if there is one, costs less than
// the stages and runs in their place. The stage list serves transforms that are left over.
void execute_straight(fft_plan* plan, float* in, float* out) {
    const fft_dim d = plan->dims[0];
    straight_kernels_of(two_stages(plan->aux)[0]).quad(out, in, d.is, d.os);
}

int install_form(fft_plan* plan, const multi_stage_form& form, uint64_t stage_count) {
    if (stage_count == 2) {
        const bool straight = is_batch_of_lanes(*plan, 4) && lookup_straight_quad_sve(plan, plan->dims[0].n);
        return install(plan, straight ? execute_straight : execute_two_stages, form.two_stages);
    }
    return install(plan, output_serves_as_array(*plan) ? execute_contiguous : execute_discrete,
                   has_unit_strides(*plan) ? form.contiguous : form.discrete);
}

// `count` executions by a straight kernel, if there is one: four lanes each, or all contiguous rows in one call.
bool execute_straight_each(const fft_dim& d, const straight_kernels& kernels, const float* in, float* out,
                           int64_t count, int64_t in_step, int64_t out_step) {
    if (kernels.quad) {
        for (int64_t i = 0; i < count; ++i) kernels.quad(out + i * out_step, in + i * in_step, d.is, d.os);
        return true;
    }
    if (kernels.rows) kernels.rows(out, in, in_step / 2, out_step / 2, count);
    return kernels.rows;
}

int solve(fft_plan* plan, const multi_stage_form& form) {
    radix_order order;
    if (!accepts(*plan, form.isa.lanes) || !find_radix_order(plan, order) ||
        !attach_storage(plan, order.stage_count, form.isa.lanes))
        return refused;
    install_form(plan, form, order.stage_count);
    build_stages(plan, order, form.fill, 0, 0);
    return accepted;
}

}  // namespace

bool runs_two_stages(const fft_plan& plan) {
    return plan.execute == execute_two_stages || plan.execute == execute_straight;
}

void execute_two_stages_each(fft_plan* plan, float* in, float* out, int64_t count, int64_t in_step, int64_t out_step) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const stage_record* stages = two_stages(plan->aux);
    if (execute_straight_each(plan->dims[0], straight_kernels_of(stages[0]), in, out, count, in_step, out_step)) return;
    for (int64_t i = 0; i < count; ++i) {
        stages[0].kernel(&stages[0], in + i * in_step, scratch.data());
        stages[1].kernel(&stages[1], scratch.data(), out + i * out_step);
    }
}

namespace {

many_kernel straight_kernel(const fft_plan& plan) { return lookup_straight_quad_sve(&plan, plan.dims[0].n); }

// A straight kernel has a record all the same, for its strides.
uint64_t stages_in_four_lanes(const fft_plan& plan) {
    if (straight_kernel(plan)) return 1;
    return plan.execute == execute_two_stages ? 2 : stage_count_of(plan.aux);
}

void copy_into_four_lanes(const fft_plan& plan, stage_record* stages, uint64_t count) {
    const stage_record* single = plan.execute == execute_two_stages ? two_stages(plan.aux) : counted_stages(plan.aux);
    fft_plan four = plan;  // a problem for the look-ups alone
    four.howmany_rank = 1;
    four.howmany[0] = {4, 1, 1};
    for (uint64_t q = 0; q < count; ++q) {
        stages[q] = single[q];
        stages[q].is = stages[q].os = 4;
        (q == 0          ? stage_lookup_first_sve
         : q + 1 < count ? stage_lookup_other_sve
                         : stage_lookup_last_sve)(&stages[q], &four);
    }
}

}  // namespace

bool runs_by_straight_kernel(const fft_plan& plan) { return straight_kernel(plan); }

// A straight kernel needs nothing of the plan. Contiguous plans have their last table in another order, that of rows
// side by side.
bool can_run_in_four_lanes(const fft_plan& plan) {
    if ((plan.howmany_rank != 0 && !is_batch_of_lanes(plan, 4)) || has_unit_strides(plan)) return false;
    return plan.execute == execute_two_stages || plan.execute == execute_discrete || straight_kernel(plan);
}

// The count of the stages, then their records.
uint64_t four_lanes_list_bytes(const fft_plan& plan) { return 8 + stages_in_four_lanes(plan) * sizeof(stage_record); }

void fill_four_lanes_list(const fft_plan& plan, void* list, int64_t is, int64_t os) {
    const uint64_t count = stage_count_of(list) = stages_in_four_lanes(plan);
    stage_record* const stages = counted_stages(list);
    const many_kernel straight = straight_kernel(plan);
    if (!straight) copy_into_four_lanes(plan, stages, count);
    keep_straight_kernels(stages[0], {straight, nullptr});
    stages[0].is = is;
    stages[count - 1].os = os;
}

void execute_four_lanes(void* list, const float* in, float* out, float* working) {
    const stage_record* stages = counted_stages(list);
    if (const many_kernel straight = straight_kernels_of(stages[0]).quad)
        return straight(out, in, stages->is, stages->os);
    const uint64_t n = stages->radix * stages->rest;
    run_stages(stages, stage_count_of(list), in, {working, working + 8 * n}, out);
}

int solve_problem_c2c_1d_sve(fft_plan* plan) {
    return solve(
        plan, {stages_sve, stage_fill_sve, "execute_1d_sve", "execute_1d_discrete_sve", "execute_1d_two_stages_sve"});
}

int solve_problem_c2c_1d_neon(fft_plan* plan) {
    return solve(plan, {stages_neon, stage_fill_neon, "execute_1d_neon", "execute_1d_discrete_neon",
                        "execute_1d_two_stages_neon"});
}
