// SPDX-License-Identifier: Apache-2.0
#include "tests/scratch/every_execution.h"

#include "planner/solver.h"
#include "planner/solver_table.h"
#include "planner/solvers.h"
#include "problems/plan_tree.h"
#include "tests/support/signals.h"

namespace {

bool is_upsampling(const problem_case& p) { return p.kind == kind_upsampling_2d; }

// Elements that one side reaches over, at the most: real sides and halves of spectra take less.
int64_t reach(const problem_case& p, bool input) {
    if (is_upsampling(p)) return input ? p.dims[0].n * p.dims[1].n : p.batch[0].n * p.batch[1].n;
    int64_t last = 1;
    for (const auto* list : {&p.dims, &p.batch})
        for (const fft_dim& d : *list) last += (d.n - 1) * (input ? d.is : d.os);
    return last;
}

arrays arrays_of(const problem_case& p) {
    arrays a = {floats(2 * (p.in_place ? std::max(reach(p, true), reach(p, false)) : reach(p, true))),
                floats(p.in_place ? 0 : 2 * reach(p, false), -3.5f)};
    uniform_noise noise(7);
    for (float& x : a.in) x = noise();
    return a;
}

struct array_pointers {
    float *in, *in_imag, *out, *out_imag;
};

// The first floats of both arrays, as many as are `ahead`, don't belong to the problem.
array_pointers pointers_of(const problem_case& p, arrays& a, size_t ahead = 0) {
    const size_t in_size = a.in.size() - ahead, out_size = p.in_place ? in_size : a.out.size() - ahead;
    array_pointers at = {a.in.data() + ahead, nullptr, (p.in_place ? a.in.data() : a.out.data()) + ahead, nullptr};
    if (p.split && p.kind != kind_r2c) at.in_imag = at.in + in_size / 2;
    if (p.split && p.kind != kind_c2r) at.out_imag = at.out + out_size / 2;
    return at;
}

fft_plan* record_of(const problem_case& p, arrays& planned_on, uint32_t flags) {
    fft_plan* const record = fft_plan_clone(nullptr);
    record->kind = p.kind;
    record->sign = p.kind == kind_r2r || is_upsampling(p) ? 0 : p.kind == kind_c2r ? sign_backward : p.sign;
    record->split = p.split ? split_arrays : interleaved_arrays;
    record->rank = static_cast<int32_t>(p.dims.size());
    record->howmany_rank = static_cast<int32_t>(p.batch.size());
    fft_plan_copy_dims(record->dims, p.dims.data(), record->rank);
    fft_plan_copy_dims(record->howmany, p.batch.data(), record->howmany_rank);
    if (p.kind == kind_r2r)
        for (int d = 0; d < record->rank; ++d) record->r2r_kind[d] = p.r2r;
    const array_pointers at = pointers_of(p, planned_on);
    record->in = at.in;
    record->in_imag = at.in_imag;
    record->out = at.out;
    record->out_imag = at.out_imag;
    record->flags = flags;
    record->nthreads = p.nthreads;
    record->upsample_shift_x = 0.25f;
    return record;
}

// As a plan call does.
bool plan_by_rules(fft_plan** record) {
    if (plan_problem(record) == accepted) return true;
    if (solve_problem_compact_input(*record) != accepted) return false;
    settle_storage(*record);
    return true;
}

bool plan_by_row(fft_plan* record, int row) {
    if (solver_table[row].solve(record) != accepted) return false;
    record->solver_name = solver_table[row].name;
    settle_storage(record);
    return true;
}

}  // namespace

planned_execution::planned_execution(const problem_case& problem, int row)
    : problem_(problem), row_(row), before_(arrays_of(problem)), planned_on_(before_) {
    fft_plan* record = record_of(problem, planned_on_, row < 0 ? 0u : plan_flag_measured);
    const bool made = row < 0 ? plan_by_rules(&record) : plan_by_row(record, row);
    plan_.reset(record);
    if (!made) plan_.reset();
}

planned_execution::~planned_execution() = default;

std::string planned_execution::text() const {
    return (row_ < 0 ? "by the rules: " : std::string("by ") + solver_table[row_].name + " alone: ") +
           plan_tree_text(*plan_);
}

void planned_execution::execute(arrays& on) const { execute_behind(on, 0); }

void planned_execution::execute_behind(arrays& on, size_t floats_ahead) const {
    const array_pointers at = pointers_of(problem_, on, floats_ahead);
    if (problem_.split)
        plan_->execute_split(plan_.get(), at.in, at.in_imag, at.out, at.out_imag);
    else
        plan_->execute(plan_.get(), at.in, at.out);
}

arrays planned_execution::result_behind(size_t floats_ahead) const {
    const auto ahead = static_cast<ptrdiff_t>(floats_ahead);
    arrays on = before_;
    on.in.insert(on.in.begin(), floats_ahead, 0.0f);
    if (!problem_.in_place) on.out.insert(on.out.begin(), floats_ahead, 0.0f);
    execute_behind(on, floats_ahead);
    on.in.erase(on.in.begin(), on.in.begin() + ahead);
    if (!problem_.in_place) on.out.erase(on.out.begin(), on.out.begin() + ahead);
    return on;
}

void for_each_execution(const std::function<void(const planned_execution&)>& visit) {
    for (const problem_case& problem : every_problem())
        for (int row = -1; row < (problem.every_row ? solver_count : 0); ++row)
            if (const planned_execution e(problem, row); e) visit(e);
}
