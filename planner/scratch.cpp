// SPDX-License-Identifier: Apache-2.0
#include "planner/scratch.h"

#include "record/memory.h"

#include <algorithm>

namespace {

constexpr uint64_t line = 64;
constexpr uint32_t too_many_lines = UINT32_MAX;

// More than there is stays more than there is.
uint64_t sum(uint64_t a, uint64_t b) { return a + b < a ? UINT64_MAX : a + b; }

// A record that an earlier solver has left without its buffer keeps the size of that.
uint64_t own_scratch(const fft_plan& plan) {
    const uint64_t bytes = plan.buffer ? sum(plan.buffer_size, line - 1) : 0;
    return bytes == UINT64_MAX ? bytes : (bytes & ~(line - 1)) + plan.brought_lines * line;
}

uint64_t add_up_tree(const fft_plan& plan);

// What the plan and all below it take at most. Subplans of a multithreaded batch run at once; the others need not be
// told apart from them.
uint64_t scratch_of_tree(const fft_plan& plan) {
    const bool known = plan.scratch_lines != 0 && plan.scratch_lines != too_many_lines;
    return known ? (plan.scratch_lines - 1) * line : add_up_tree(plan);
}

uint64_t add_up_tree(const fft_plan& plan) {
    uint64_t bytes = own_scratch(plan);
    for (int i = 0; i < plan.subplan_count; ++i)
        if (plan.subplans[i]) bytes = sum(bytes, scratch_of_tree(*plan.subplans[i]));
    return bytes;
}

}  // namespace

void settle_storage(fft_plan* plan) {
    plan->lending = plan->brought_lines ? storage_lacking : storage_free;
    for (int i = 0; i < plan->subplan_count; ++i) {
        if (!plan->subplans[i]) continue;
        uint32_t& below = plan->subplans[i]->lending;
        if (below == storage_lacking)
            plan->lending = storage_lacking;
        else
            below = storage_of_tree;
    }
    plan->scratch_lines = static_cast<uint32_t>(std::min<uint64_t>(add_up_tree(*plan) / line + 1, too_many_lines));
}

plan_scratch::loan plan_scratch::take(const fft_plan& plan) {
    thread_state& self = this_thread_state();
    scratch_range& left = self.scratch;
    const uint64_t needed = scratch_of_tree(plan);
    loan l = {nullptr, nullptr, left.begin, left.end, self.use_plan_buffer, false};
    self.use_plan_buffer = 0;  // so that all below works in what this execution brings
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
    thread_state& self = this_thread_state();
    self.scratch = {l.before_begin, l.before_end};
    self.use_plan_buffer = l.use_plan_buffer_before;
    qsl_fftf_free(l.block);
}

parts_scratch::parts_scratch(const fft_plan& plan) : use_plan_buffer_(this_thread_state().use_plan_buffer) {
    if (use_plan_buffer_ == 1) return;
    char* begin = this_thread_state().scratch.begin;
    for (int i = 0; i < plan.subplan_count; ++i) {
        begin_[i] = begin;
        begin += scratch_of_tree(*plan.subplans[i]);
    }
    begin_[plan.subplan_count] = begin;
}

parts_scratch::guard::guard(const parts_scratch& all, uint64_t part)
    : before_(this_thread_state().scratch), use_plan_buffer_before_(this_thread_state().use_plan_buffer) {
    thread_state& self = this_thread_state();
    self.use_plan_buffer = all.use_plan_buffer_;
    if (all.use_plan_buffer_ != 1) self.scratch = {all.begin_[part], all.begin_[part + 1]};
}

parts_scratch::guard::~guard() {
    thread_state& self = this_thread_state();
    self.scratch = before_;
    self.use_plan_buffer = use_plan_buffer_before_;
}
