// SPDX-License-Identifier: Apache-2.0
// The guards that give an execute function its scratch memory, and what a record tells of it. Any number of threads may
// execute one plan at once: the storage of its tree is lent to one execution at a time.
#pragma once
#include "record/fft_plan.h"
#include "record/thread_state.h"
#include "threads/partition.h"

// What `lending` of a record says about the buffers of the record and of all below it.
enum storage_lending : uint32_t {
    storage_free = 0,
    storage_lent = 1,     // to an execution that runs
    storage_of_tree = 2,  // a subplan's: whoever was lent the storage of the root has it
    storage_lacking = 3,  // never to be lent: the tree has a record of which each execution brings its storage
};

// Turns a free word into a lent one; false when it isn't free. A pair of exclusives serves every Arm machine with the
// same few instructions; the compiler's own exchange would be a call of a run-time library where Armv8.0 is the target.
inline bool lend_storage(uint32_t& lending) {
#ifdef __aarch64__
    uint32_t refusal;
    asm volatile(
        "1: ldaxr %w0, %1\n\t"
        "cbnz %w0, 2f\n\t"
        "stxr %w0, %w2, %1\n\t"
        "cbnz %w0, 1b\n"
        "2:"
        : "=&r"(refusal), "+Q"(lending)
        : "r"(storage_lent)
        : "memory");
    return refusal == 0;
#else
    uint32_t free = storage_free;
    return __atomic_compare_exchange_n(&lending, &free, storage_lent, false, __ATOMIC_ACQUIRE, __ATOMIC_RELAXED);
#endif
}

// Records in the tree what the guards want to know. For a record that a solver has accepted.
void settle_storage(fft_plan* plan);

// Scratch of one execution. On a thread that has planned the outermost of the plans that run is lent its tree's
// buffers, if they are free. Any other execution brings its own: the outermost guard allocates for all below it at
// once, so that an execution finds its memory before it writes anything, or does nothing. False when that allocation
// failed: the execute function then returns. Every execute function that reaches scratch begins with a guard on its own
// plan.
class plan_scratch {
public:
    explicit plan_scratch(fft_plan* plan) : plan_scratch(plan, true) {}
    ~plan_scratch() {
        if (how_ == lent) __atomic_store_n(&plan_->lending, storage_free, __ATOMIC_RELEASE);
        if (how_ == brought) give_back(loan_);
    }
    plan_scratch(const plan_scratch&) = delete;
    plan_scratch& operator=(const plan_scratch&) = delete;
    explicit operator bool() const { return how_ != brought || !loan_.missing; }
    float* data() const { return loan_.data; }  // null where the plan has no buffer

protected:
    plan_scratch(fft_plan* plan, bool wanted) : plan_(plan), how_(wanted ? find(*plan) : nothing_to_return) {
        if (how_ == brought)
            loan_ = take(*plan);
        else
            loan_.data = static_cast<float*>(plan->buffer);
    }

private:
    enum source { nothing_to_return, lent, brought };

    // Passed by value, and but for `data` without a value unless brought: an execution that works in the plan's buffer
    // keeps the guard in registers.
    struct loan {
        float* data;
        void* block;  // what this guard allocated
        char *before_begin, *before_end;
        uint64_t use_plan_buffer_before;
        bool missing;  // there was no memory
    };

    static source find(fft_plan& plan) {
        if (this_thread_state().use_plan_buffer != 1) return brought;
        const uint32_t lending = __atomic_load_n(&plan.lending, __ATOMIC_RELAXED);
        if (lending == storage_free) return lend_storage(plan.lending) ? lent : brought;
        return lending == storage_of_tree ? nothing_to_return : brought;
    }
    static loan take(const fft_plan& plan);
    static void give_back(loan l);

    fft_plan* const plan_;
    const source how_;
    loan loan_;
};

// The same for execute functions that have no scratch of their own but run other plans: once something is written none
// of these may lack its scratch. Nothing for a tree without scratch.
class scratch_below : plan_scratch {
public:
    explicit scratch_below(fft_plan* plan) : plan_scratch(plan, plan->scratch_lines != no_scratch_lines) {}
    using plan_scratch::operator bool;

private:
    static constexpr uint32_t no_scratch_lines = 1;
};

// The storage of the calling thread's execution, shared out to the subplans of a plan, which several threads run.
class parts_scratch {
public:
    explicit parts_scratch(const fft_plan& plan);

    // For the thread that runs subplan `part`, while it does.
    class guard {
    public:
        guard(const parts_scratch& all, uint64_t part);
        ~guard();
        guard(const guard&) = delete;
        guard& operator=(const guard&) = delete;

    private:
        const scratch_range before_;
        const uint64_t use_plan_buffer_before_;
    };

private:
    uint64_t use_plan_buffer_;
    char* begin_[thread_cap + 1];  // of each part's share and the end of the last; unless plans have their buffers
};
