// SPDX-License-Identifier: Apache-2.0
#include "planner/scratch.h"

namespace {

constexpr uint64_t alignment = 64;

// More than there is stays more than there is.
uint64_t sum(uint64_t a, uint64_t b) { return a + b < a ? UINT64_MAX : a + b; }

// A record that an earlier solver has left without its buffer keeps the size of that.
uint64_t own_scratch(const fft_plan& plan) {
    if (!plan.buffer) return 0;
    const uint64_t bytes = sum(plan.buffer_size, alignment - 1);
    return bytes == UINT64_MAX ? bytes : bytes & ~(alignment - 1);
}

}  // namespace

// Subplans of a multithreaded batch run at once; the others need not be told apart from them.
uint64_t scratch_of_tree(const fft_plan& plan) {
    uint64_t bytes = own_scratch(plan);
    for (int i = 0; i < plan.subplan_count; ++i)
        if (plan.subplans[i]) bytes = sum(bytes, scratch_of_tree(*plan.subplans[i]));
    return bytes;
}

plan_scratch::loan plan_scratch::take(const fft_plan& plan) {
    scratch_range& left = this_thread_state().scratch;
    const uint64_t needed = scratch_of_tree(plan);
    loan l = {nullptr, nullptr, left.begin, left.end, false};
    if (static_cast<uint64_t>(left.end - left.begin) < needed) {
        l.block = qsl_fftf_malloc(needed);
        l.missing = !l.block;
        left = {static_cast<char*>(l.block), static_cast<char*>(l.block) + (l.block ? needed : 0)};
    }
    l.data = reinterpret_cast<float*>(left.begin);
    if (!l.missing) left.begin += own_scratch(plan);
    return l;
}

void plan_scratch::give_back(loan l) {
    this_thread_state().scratch = {l.before_begin, l.before_end};
    qsl_fftf_free(l.block);
}
