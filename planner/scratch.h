// SPDX-License-Identifier: Apache-2.0
// The guards that give an execute function its scratch memory.
#pragma once
#include "interface/fft_plan.h"
#include "threads/thread_state.h"

// Scratch of one execution: the plan's own buffer on a thread that has planned. On any other thread the outermost of
// the plans that run allocates for itself and all below it at once, so that an execution finds its memory before it
// writes anything, or does nothing; a tree without scratch allocates nothing. False when that allocation failed: the
// execute function then returns.
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
    explicit operator bool() const { return !(taken_ && loan_.missing); }
    float* data() const { return loan_.data; }  // null where the plan has no buffer

private:
    // Passed by value, and but for `data` without a value unless taken: a thread with the plan's buffer keeps the guard
    // in registers.
    struct loan {
        float* data;
        void* block;  // what this guard allocated
        char *before_begin, *before_end;
        bool missing;  // there was no memory
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
    using plan_scratch::plan_scratch;
    using plan_scratch::operator bool;
};

// What the plan and all below it take at most.
uint64_t scratch_of_tree(const fft_plan& plan);
