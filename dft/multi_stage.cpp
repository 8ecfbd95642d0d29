// SPDX-License-Identifier: Apache-2.0
// c2c_1d_sve and c2c_1d_neon: one complex transform of a smooth length as a self-sorting chain of stages (Cooley-Tukey,
// Stockham's order), or four (SVE) and two (NEON) at once whose elements stand side by side. The twins differ by that
// count and by their kernels; of single transforms NEON gets only those for which the clock prefers it.
#include "dft/stage_list.h"
#include "kernels/lookup.h"
#include "planner/solver.h"
#include "planner/solvers.h"

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

int install_two_stages(fft_plan* plan, const char* name) {
    if (is_batch_of_lanes(*plan, 4) && lookup_straight_quad_sve(plan, plan->dims[0].n))
        return install(plan, execute_straight, name, runs_straight_kernel);
    return install(plan, execute_two_stages, name, runs_two_stages);
}

int install_form(fft_plan* plan, const multi_stage_form& form, uint64_t stage_count) {
    if (stage_count == 2) return install_two_stages(plan, form.two_stages);
    const char* const name = has_unit_strides(*plan) ? form.contiguous : form.discrete;
    return output_serves_as_array(*plan) ? install(plan, execute_contiguous, name, runs_stages)
                                         : install(plan, execute_discrete, name, runs_stages_in_scratch);
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

int solve_problem_c2c_1d_sve(fft_plan* plan) {
    return solve(
        plan, {stages_sve, stage_fill_sve, "execute_1d_sve", "execute_1d_discrete_sve", "execute_1d_two_stages_sve"});
}

int solve_problem_c2c_1d_neon(fft_plan* plan) {
    return solve(plan, {stages_neon, stage_fill_neon, "execute_1d_neon", "execute_1d_discrete_neon",
                        "execute_1d_two_stages_neon"});
}
