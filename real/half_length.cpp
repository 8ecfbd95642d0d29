// SPDX-License-Identifier: Apache-2.0
#include "real/half_length.h"

#include <algorithm>

#include "threads/threads.h"

namespace {

constexpr int64_t shortest_threaded_length = 16384;
constexpr uint64_t shortest_spread_share = 8192;

struct pass_closure {
    half_length_range range;
    const float* from;
    float* to;
    const float* table;
    uint64_t m;
};

void run_partition(parallel_task* task) {
    const pass_closure& pass = *static_cast<const pass_closure*>(task->closure);
    const uint64_t first = task->chunk * task->index + 1;
    const uint64_t last = std::min(task->chunk * (task->index + 1), pass.m >> 1);
    pass.range(pass.from, pass.to, pass.table, pass.m, 1, first, last);
}

}  // namespace

fft_plan* make_complex_subplan(fft_plan* plan, int64_t n) {
    if (!make_subplans(plan, 1)) return nullptr;
    fft_plan* sub = plan->subplans[0];
    sub->kind = kind_c2c;
    sub->split = interleaved_arrays;
    sub->double_os = 0;
    sub->dims[0] = {n, 1, 1};
    return sub;
}

bool attach_half_table(fft_plan* plan, uint64_t m, void (*mirrors)(float* table, const float* half, uint64_t m)) {
    if (!attach_aux(plan, 8 * m)) return false;
    float* const half = static_cast<float*>(plan->aux);
    real_half_table(half, m);
    mirrors(mirror_table_behind(half, m), half, m);
    return true;
}

namespace {

// May this transform run its pass on the team? Only with the pool, unit strides, and 16384 points or more. If so, the
// workers are asked to stay close together when a thread's share is below 8192 points.
bool prepare_threaded_pass(const fft_plan& plan) {
    const bool threaded = thread_backend_type() == backend_pool && has_unit_strides(plan) && plan.nthreads >= 2 &&
                          plan.dims[0].n >= shortest_threaded_length;
    if (!threaded) return false;
    const uint64_t team = thread_limit_nthreads(plan.nthreads);
    const uint64_t share = team ? (static_cast<uint64_t>(plan.dims[0].n) >> 1) / team : 0;
    thread_set_affinity_mode(share < shortest_spread_share ? affinity_close : affinity_spread);
    return true;
}

int install_form(fft_plan* plan, const half_length_form& form) { return install(plan, form.execute, form.name); }

int solve_odd(fft_plan* plan, const half_length_form& form) {
    const int64_t n = plan->dims[0].n;
    if (!attach_buffer(plan, 8 * n)) return refused;
    fft_plan* const sub = make_complex_subplan(plan, n);
    if (!sub) return refused;
    sub->in = sub->out = static_cast<float*>(plan->buffer);  // the caller's arrays are too small for n complex numbers
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install_form(plan, form);
}

int solve_even(fft_plan* plan, const half_length_forms& forms, bool wants_buffer) {
    const int64_t m = plan->dims[0].n / 2;
    if (wants_buffer && !attach_buffer(plan, 8 * m)) return refused;
    fft_plan* const sub = make_complex_subplan(plan, m);
    if (!sub) return refused;
    // It runs in place on the buffer, and so it is measured: the caller's arrays are others' between the strides.
    if (wants_buffer && is_measured(*plan)) sub->in = sub->out = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 1) != accepted || !attach_half_table(plan, m, forms.mirrors)) return refused;
    if (prepare_threaded_pass(*plan)) return install_form(plan, forms.threaded);
    return install_form(plan, has_unit_strides(*plan) ? forms.contiguous : forms.discrete);
}

}  // namespace

int solve_half_length(fft_plan* plan, const half_length_forms& forms, bool wants_buffer) {
    return plan->dims[0].n & 1 ? solve_odd(plan, forms.odd) : solve_even(plan, forms, wants_buffer);
}

void run_threaded_pass(const fft_plan& plan, half_length_range range, const float* from, float* to) {
    const uint64_t m = static_cast<uint64_t>(plan.dims[0].n) >> 1, pairs = m >> 1;
    const uint64_t team = thread_limit_nthreads(plan.nthreads);
    pass_closure closure = {range, from, to, static_cast<const float*>(plan.aux), m};
    thread_refresh_binding();
    thread_parallel_for(pairs, team, pairs > 16 * team ? 16 : 1, run_partition, &closure);
}
