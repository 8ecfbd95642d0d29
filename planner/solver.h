// SPDX-License-Identifier: Apache-2.0
// What a solver works with: the two results, the ways to attach storage and subplans, the planner's entry points, and
// the guard that gives an execute function its scratch memory.
#pragma once
#include "interface/fft_plan.h"
#include "threads/thread_state.h"

#include <initializer_list>

constexpr int accepted = 0;
constexpr int refused = -1;

// Attaches zeroed storage of this size, recorded so that fft_plan_clear releases it. False when memory is short.
bool attach_buffer(fft_plan* plan, uint64_t bytes);
bool attach_aux(fft_plan* plan, uint64_t bytes);

// Makes `count` subplans that start as copies of the plan's problem; older ones are released. False when memory is
// short.
bool make_subplans(fft_plan* plan, int count);

// Plans the record in the slot through solver_table. The slot may receive another record (measured planning).
// A record that was planned before is cleared first. Returns 0 or -1.
int plan_problem(fft_plan** slot);

// Plans `count` slots, first to last, and stops at the first failure. Returns 0 or -1.
int plan_subplans(fft_plan** slots, int count);

// Hooks without effect: every plan call ends in the first, the split solvers call the second ahead of plan_subplans.
void plan_finish(fft_plan* plan);
void plan_split_hook(fft_plan* plan);

// Installs the execute function and returns `accepted`, the last line of every solver.
inline int install(fft_plan* plan, execute_function execute, const char* execute_name) {
    plan->execute = execute;
    plan->execute_name = execute_name;
    return accepted;
}

// Scratch of one execution: the plan's own buffer on a thread that has planned. On any other thread the outermost of
// the plans that run allocates for itself and all below it at once, so that an execution finds its memory before it
// writes anything, or does nothing. False when that allocation failed: the execute function then returns.
class plan_scratch {
public:
    explicit plan_scratch(fft_plan* plan) : taken_(this_thread_state().use_plan_buffer != 1) {
        if (taken_)
            loan_ = take(*plan);
        else
            loan_.data = static_cast<float*>(plan->buffer);
    }
    ~plan_scratch() {
        if (taken_) give_back(loan_);
    }
    plan_scratch(const plan_scratch&) = delete;
    plan_scratch& operator=(const plan_scratch&) = delete;
    explicit operator bool() const { return data() != nullptr; }
    float* data() const { return loan_.data; }

protected:
    bool missing() const { return taken_ && !data(); }

private:
    // Passed by value, and but for `data` without a value unless taken: a thread with the plan's buffer keeps the guard
    // in registers.
    struct loan {
        float* data;
        void* block;  // what this guard allocated
        char *before_begin, *before_end;
    };
    static loan take(const fft_plan& plan);
    static void give_back(loan l);

    const bool taken_;
    loan loan_;
};

// The same for execute functions that have no scratch of their own but run several plans, or one behind a pass of
// theirs: once something is written none of the plans below may lack its scratch.
class scratch_below : plan_scratch {
public:
    explicit scratch_below(fft_plan* plan) : plan_scratch(plan) {}
    explicit operator bool() const { return !missing(); }
};

// What the plan and all below it take at most.
uint64_t scratch_of_tree(const fft_plan& plan);
