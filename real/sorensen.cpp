// SPDX-License-Identifier: Apache-2.0
// c2r_1d_sorensen_sve and c2r_1d_sorensen_neon: one contiguous complex-to-real transform as a chain of stages on the
// stored half of Hermitian spectra (Sorensen et al. 1987), in arithmetic of the size of a real transform: no complex
// transform is formed. The twins take the same problems, so that NEON gets only those for which the clock prefers it.
#include <utility>

#include "dft/sizes.h"
#include "dft/stage_list.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "real/alone.h"
#include "real/half_length.h"
#include "real/sorensen_stages.h"

namespace {

constexpr int64_t longest = 32768;  // above it a complex transform of half the length is faster

struct sorensen_form {
    apply_radices fill;
    const char* one_stage;
    const char* two_stages;
    const char* any;
};

bool accepts(const fft_plan& p) {
    return p.dims[0].n <= longest && p.dims[0].n > 1 && p.split != split_arrays && p.kind == kind_c2r &&
           p.sign == sign_backward  // the stages have kernels of this direction only
           && p.nthreads < 2 && p.howmany_rank == 0 && p.rank == 1 && has_unit_strides(p) &&
           factor_list_strip(p.dims[0].n, radix_order_sorensen, radix_order_sorensen_count) == 1;
}

bool find_order(const fft_plan& plan, radix_order& order) {
    radix_schedule_result result = {};
    sorensen_radix_schedule(&result, plan.dims[0].n, order.radices);
    order.stage_count = result.stage_count;
    return result.stage_count > 0 && result.list_count > 0;
}

// One stage needs no scratch, two need one working array, a longer chain alternates between two.
bool attach_storage(fft_plan* plan, uint64_t stage_count) {
    const uint64_t n = plan->dims[0].n;
    return attach_aux(plan, sorensen_list_bytes(n, stage_count)) &&
           attach_buffer(plan, (stage_count == 2 ? 8 : 16) * n);
}

void run(const sorensen_stage_record& stage, const float* in, float* out) { stage.kernel(&stage, in, out); }

void execute_one_stage(fft_plan* plan, float* in, float* out) { run(sorensen_stages(plan->aux).stages[0], in, out); }

void execute_two_stages(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const sorensen_stage_record* stages = sorensen_stages(plan->aux).stages;
    run(stages[0], in, scratch.data());
    run(stages[1], scratch.data(), out);
}

void execute_stages(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const auto [count, stages] = sorensen_stages(plan->aux);
    const sorensen_stage_record *stage = stages, *const last = stages + *count - 1;
    float *to = scratch.data(), *other = to + plan->buffer_size / 2 / sizeof(float);
    const float* from = in;
    for (; stage != last; ++stage) {
        run(*stage, from, to);
        from = to;
        std::swap(to, other);
    }
    run(*last, from, out);
}

// Stages behind the first go along the branches that it made, four to a vector. Where these are few most lanes stay
// empty, and the complex transform of half the length is faster. Measuring compares the solvers by the clock instead.
bool leaves_lanes_empty(const fft_plan& plan, const radix_order& order) {
    const uint64_t branches = order.radices[order.stage_count - 1];  // the first stage stands last
    return plan.dims[0].n % 2 == 0 && order.stage_count > 1 && plan.flags != plan_flag_measured &&
           (branches < 4 || (branches == 5 && order.stage_count > 2));
}

void execute_half_length(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    plan->subplans[0]->execute(plan->subplans[0], in, out);
}

// Keeps the chain as it is told, and runs the same problem by half length.
bool run_by_half_length(fft_plan* plan) {
    if (!make_subplans(plan, 1) || solve_problem_c2r_1d(plan->subplans[0]) != accepted) return false;
    plan->subplans[0]->solver_name = "solve_problem_c2r_1d";
    plan->execute = execute_half_length;
    plan->runs = runs_half_length;
    return true;
}

int install_form(fft_plan* plan, const sorensen_form& form, uint64_t stage_count) {
    if (stage_count == 1) return install(plan, execute_one_stage, form.one_stage);
    if (stage_count == 2) return install(plan, execute_two_stages, form.two_stages);
    return install(plan, execute_stages, form.any);
}

int solve(fft_plan* plan, const sorensen_form& form) {
    radix_order order;
    if (!accepts(*plan) || !find_order(*plan, order) || !attach_storage(plan, order.stage_count)) return refused;
    install_form(plan, form, order.stage_count);
    build_stages(plan, order, form.fill, 0, 0);
    run_alone<c2r_alone_bwd>(plan);
    return !leaves_lanes_empty(*plan, order) || run_by_half_length(plan) ? accepted : refused;
}

}  // namespace

int solve_problem_c2r_1d_sorensen_sve(fft_plan* plan) {
    return solve(plan, {sorensen_stage_fill_sve, "execute_c2r_1d_sorensen_one_stage_sve",
                        "execute_c2r_1d_sorensen_two_stages_sve", "execute_c2r_1d_sorensen_sve"});
}

int solve_problem_c2r_1d_sorensen_neon(fft_plan* plan) {
    return solve(plan, {sorensen_stage_fill_neon, "execute_c2r_1d_sorensen_one_stage_neon",
                        "execute_c2r_1d_sorensen_two_stages_neon", "execute_c2r_1d_sorensen_neon"});
}
