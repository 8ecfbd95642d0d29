// SPDX-License-Identifier: Apache-2.0
// multidimension: two or more dimensions without a batch. The slowest dimension is set apart: first the rest of each of
// its steps is transformed (rows), from input to output, then the slowest dimension over everything else (columns), in
// place on the output. Both are batches, which the batch solvers peel; the rows meet this solver again.
// Complex-to-real needs the opposite order and has a solver of its own.
// multidimension_parallel stands for a parallel form and takes nothing.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/subplans.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind != kind_c2r && p.howmany_rank == 0 && p.rank >= 2;
}

// A whole array of the problem in complex elements, kept by a plan whose `private_copy` is set.
bool attach_private_copy(fft_plan* plan) {
    if (plan->private_copy != 1) return true;
    const int last = plan->rank - 1;
    uint64_t bytes = 8;
    for (int i = 0; i < last; ++i) bytes *= plan->dims[i].n;
    bytes *= plan->kind == kind_r2c ? (plan->dims[last].n >> 1) + 1 : plan->dims[last].n;
    plan->private_copy_stride = static_cast<int64_t>(bytes / 4);
    return attach_buffer(plan, bytes);
}

void set_rows(fft_plan* rows, const fft_plan* plan) {
    rows->rank = plan->rank - 1;
    fft_plan_copy_dims(rows->dims, plan->dims + 1, rows->rank);
    fft_plan_copy_r2r_kinds(rows->r2r_kind, plan->r2r_kind + 1, rows->rank);
    rows->howmany_rank = 1;
    rows->howmany[0] = plan->dims[0];
    rows->double_os = 0;
}

void set_columns(fft_plan* columns, const fft_plan* plan) {
    columns->rank = 1;
    columns->dims[0] = output_on_both_sides(plan->dims[0]);
    columns->howmany_rank = plan->rank - 1;
    for (int i = 0; i < columns->howmany_rank; ++i) columns->howmany[i] = output_on_both_sides(plan->dims[i + 1]);
    if (plan->kind == kind_r2c) {
        columns->kind = kind_c2c;
        int64_t& n = columns->howmany[columns->howmany_rank - 1].n;
        n = (n >> 1) + 1;
    }
    columns->in = plan->out;
    columns->double_is = 0;
}

void execute_multidimension(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan *rows = plan->subplans[0], *columns = plan->subplans[1];
    rows->execute(rows, in, out);
    columns->execute(columns, out, out);
}

}  // namespace

int solve_problem_multidimension(fft_plan* plan) {
    if (!accepts(*plan) || !make_subplans(plan, 2) || !attach_private_copy(plan)) return refused;
    set_rows(plan->subplans[0], plan);
    set_columns(plan->subplans[1], plan);
    install(plan, execute_multidimension, "execute_multidimension");
    return plan_subplans(plan->subplans, 2);
}

int solve_problem_multidimension_parallel(fft_plan*) { return refused; }
