// SPDX-License-Identifier: Apache-2.0
// r2c_many_direct and c2r_many_direct: a batch of real-to-complex or complex-to-real rows. A length of 2, 3, 4, 8 or 16
// has a kernel that takes four rows at a time, one a lane, each group read whole before it is written; what is left of
// a count that is no multiple of 4 runs singly. Of other lengths up to four rows are taken here, one after the other.
#include "planner/solvers.h"
#include "real/direct_tables.h"
#include "real/rows_kernels.h"
#include "record/in_place.h"
#include "record/subplans.h"

namespace {

constexpr int64_t most_rows_without_kernel = 4;
constexpr int64_t group = 4;

bool accepts(const fft_plan& p, uint32_t kind, int64_t real_distance, int64_t complex_distance) {
    return p.split != split_arrays && p.kind == kind && p.rank == 1 && p.howmany_rank == 1 &&
           !(p.in == p.out && real_distance < 2 * complex_distance);  // the reals of a row end in front of its spectrum
}

// In place with two distances: a row that runs singly reads everything first if it is short, odd or strided.
bool may_run_ascending(const fft_plan& p, real_kernel kernel) {
    const fft_dim d = p.dims[0];
    const bool reads_first = d.n <= 64 || d.n % 2 || d.is != 1 || d.os != 1;
    return may_run_ascending(p, {kernel ? group : 1, reads_first});
}

void run_r2c_kernel(fft_plan* plan, float* in, float* out, int64_t count) {
    const auto& aux = *static_cast<const r2c_direct_aux*>(plan->aux);
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    aux.kernel(in, in + dim.is, out, out + 1, aux.in_offsets, aux.out_offsets_re, aux.out_offsets_im, count, rows.is,
               2 * rows.os);
    const int64_t last = dim.n % 2 ? 0 : dim.n * dim.os;  // the last coefficient without an imaginary part
    for (float* row = out; count > 0; --count, row += 2 * rows.os) row[1] = row[last + 1] = 0;
}

void run_c2r_kernel(fft_plan* plan, float* in, float* out, int64_t count) {
    const auto& aux = *static_cast<const r2c_direct_aux*>(plan->aux);
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    aux.kernel(out, out + dim.os, in, in + 1, aux.in_offsets, aux.out_offsets_re, aux.out_offsets_im, count,
               2 * rows.is, rows.os);
}

template <void (*run_kernel)(fft_plan*, float*, float*, int64_t)>
void execute_groups(fft_plan* plan, float* in, float* out) {
    run_kernel(plan, in, out, plan->howmany[0].n);
}

void run_single_rows(fft_plan* plan, float* in, float* out, int64_t first) {
    const fft_dim rows = plan->howmany[0];
    fft_plan* const single = plan->subplans[0];
    const int64_t in_step = plan->kind == kind_c2r ? 2 * rows.is : rows.is;
    const int64_t out_step = plan->kind == kind_r2c ? 2 * rows.os : rows.os;
    for (int64_t i = first; i < rows.n; ++i) single->execute(single, in + i * in_step, out + i * out_step);
}

template <void (*run_kernel)(fft_plan*, float*, float*, int64_t)>
void execute_groups_tail(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    const int64_t in_groups = plan->howmany[0].n / group * group;
    run_kernel(plan, in, out, in_groups);
    run_single_rows(plan, in, out, in_groups);
}

void execute_rows(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    run_single_rows(plan, in, out, 0);
}

struct many_direct_form {
    execute_function groups, groups_tail;
    execute_function (*contiguous)(const fft_plan&);
    const char *groups_name, *groups_tail_name, *rows_name;
};

constexpr many_direct_form r2c_form = {execute_groups<run_r2c_kernel>, execute_groups_tail<run_r2c_kernel>,
                                       rows_function<kind_r2c, 0>,     "execute_r2c_many_direct",
                                       "execute_r2c_many_direct_tail", "execute_r2c_many_1d_direct"};
constexpr many_direct_form c2r_form = {execute_groups<run_c2r_kernel>, execute_groups_tail<run_c2r_kernel>,
                                       rows_function<kind_c2r, 0>,     "execute_c2r_many_direct",
                                       "execute_c2r_many_direct_tail", "execute_c2r_many_1d_direct"};

bool plan_single_row(fft_plan* plan) {
    if (!make_subplans(plan, 1)) return false;
    drop_batch(plan->subplans[0]);
    return plan_subplans(plan->subplans, 1) == accepted;
}

int solve(fft_plan* plan, const many_direct_form& form, real_kernel kernel, int64_t real_stride,
          int64_t complex_stride) {
    const int64_t count = plan->howmany[0].n;
    if (!kernel && count > most_rows_without_kernel) return refused;
    if (!plan_single_row(plan) || !attach_r2c_direct_aux(plan, kernel, real_stride, complex_stride)) return refused;
    if (!kernel) return install(plan, execute_rows, form.rows_name);
    const char* const name = count % group ? form.groups_tail_name : form.groups_name;
    if (has_rows_kernel(*plan)) return install(plan, form.contiguous(*plan), name, runs_rows_kernel);
    return install(plan, count % group ? form.groups_tail : form.groups, name);
}

}  // namespace

int solve_problem_r2c_many_direct(fft_plan* plan) {
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    const real_kernel kernel = lookup_r2c_many(plan, dim.n);
    if (!accepts(*plan, kind_r2c, rows.is, rows.os)) return refused;
    if (!may_run_in_pieces(*plan) && !may_run_ascending(*plan, kernel)) return refused;
    return solve(plan, r2c_form, kernel, dim.is, dim.os);
}

int solve_problem_c2r_many_direct(fft_plan* plan) {
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    if (!accepts(*plan, kind_c2r, rows.os, rows.is) || !may_run_in_pieces(*plan)) return refused;
    return solve(plan, c2r_form, lookup_c2r_many(plan, dim.n), dim.os, dim.is);
}
