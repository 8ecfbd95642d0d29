// SPDX-License-Identifier: Apache-2.0
// Problems as records, planned through the solver table, for the tests of the reshaping solvers.
#pragma once
#include "planner/solver.h"
#include "record/fft_plan.h"
#include "record/thread_state.h"

#include <memory>
#include <sstream>
#include <string>
#include <vector>

struct plan_deleter {
    void operator()(fft_plan* p) const { fft_plan_free(p); }
};
using plan_pointer = std::unique_ptr<fft_plan, plan_deleter>;

struct problem {
    uint32_t kind = kind_c2c;
    std::vector<fft_dim> dims;
    std::vector<fft_dim> batch;
    bool in_place = false;
    int64_t sign = sign_forward;
    uint32_t flags = 0;
    int64_t nthreads = 1;

    // A record of its own, not yet planned.
    plan_pointer record(float* in, float* out) const {
        plan_pointer p(fft_plan_clone(nullptr));
        p->kind = kind;
        p->sign = kind == kind_r2r ? 0 : sign;
        p->split = interleaved_arrays;
        p->rank = static_cast<int32_t>(dims.size());
        p->howmany_rank = static_cast<int32_t>(batch.size());
        fft_plan_copy_dims(p->dims, dims.data(), p->rank);
        fft_plan_copy_dims(p->howmany, batch.data(), p->howmany_rank);
        p->in = in;
        p->out = out;
        p->flags = flags;
        p->nthreads = nthreads;
        return p;
    }

    // Null where every row refuses.
    plan_pointer plan(float* in, float* out) const {
        fft_plan* p = record(in, out).release();
        if (plan_problem(&p) == accepted) return plan_pointer(p);
        fft_plan_free(p);
        return nullptr;
    }

    // Elements that one side reaches over.
    int64_t reach(bool input) const {
        int64_t last = 1;
        for (const auto* list : {&dims, &batch})
            for (const fft_dim& d : *list) {
                if (d.n == 0) return 0;
                last += (d.n - 1) * (input ? d.is : d.os);
            }
        return last;
    }

    std::string text() const {
        std::ostringstream s;
        s << "kind " << kind << (in_place ? " in place" : " out of place") << " flags " << flags << " dims";
        for (const fft_dim& d : dims) s << " " << d.n << ":" << d.is << ":" << d.os;
        s << " batch";
        for (const fft_dim& d : batch) s << " " << d.n << ":" << d.is << ":" << d.os;
        return s.str();
    }
};

// Calls visit(input position, output position) for every index of the triples.
template <class visitor>
void for_each_position(const std::vector<fft_dim>& triples, const visitor& visit, size_t level = 0, int64_t in = 0,
                       int64_t out = 0) {
    if (level == triples.size()) return visit(in, out);
    for (int64_t i = 0; i < triples[level].n; ++i)
        for_each_position(triples, visit, level + 1, in + i * triples[level].is, out + i * triples[level].os);
}

// Runs as on a thread that has never planned, where execute functions allocate their scratch.
template <class action>
void with_own_scratch(const action& run) {
    this_thread_state().use_plan_buffer = 0;
    run();
    this_thread_state().use_plan_buffer = 1;
}

// Asks one solver alone, and finishes the record as the walk over the table would.
inline bool is_accepted_by(int (*solver)(fft_plan*), fft_plan* plan) {
    if (solver(plan) != accepted) return false;
    settle_storage(plan);
    return true;
}

// From now on executions that bring their own scratch get none.
inline void make_scratch_unaffordable(fft_plan* plan) {
    plan->buffer_size = UINT64_MAX;
    settle_storage(plan);
}

// "row: execute" of a plan and, indented, of its subplans.
inline std::string tree(const fft_plan& p, int depth = 0) {
    std::string s = std::string(2 * depth, ' ') + p.solver_name + ": " + p.execute_name + "\n";
    for (int i = 0; i < p.subplan_count; ++i) s += tree(*p.subplans[i], depth + 1);
    return s;
}
