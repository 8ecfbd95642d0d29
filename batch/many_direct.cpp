// SPDX-License-Identifier: Apache-2.0
// c2c_many_direct_parallel_sve, _parallel_neon and _assemble_neon: one batch of complex transforms of a kernel size,
// several at once across the lanes of a vector. The parallel forms (four lanes by SVE, two by NEON) take transforms
// side by side; the assemble form loads each lane from its own address and takes any other distances. What is left of
// a count that is no multiple of 4 runs singly. Where the elements of a transform stand side by side, one kernel that
// loads and stores whole rows runs all of them instead. Length 64 is left to rows further down unless measured.
// A kernel reads all its input before it writes.
#include "batch/many_direct.h"

#include "kernels/lookup.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"
#include "record/problem.h"
#include "record/subplans.h"

#include <iterator>
#include <utility>

namespace {

bool side_by_side(const fft_plan& p) { return p.howmany[0].is == 1 && p.howmany[0].os == 1; }

bool accepts(const fft_plan& p, bool wants_side_by_side) {
    return p.split != split_arrays && p.kind == kind_c2c && p.rank == 1 && p.howmany_rank == 1 &&
           (is_measured(p) || p.dims[0].n != 64)  // the clock decides on 64
           && side_by_side(p) == wants_side_by_side && may_run_in_pieces(p);
}

void call(many_kernel kernel, float* in, float* out, const fft_dim& d, const fft_dim&) { kernel(out, in, d.is, d.os); }
void call(many_assemble_kernel kernel, float* in, float* out, const fft_dim& d, const fft_dim& batch) {
    kernel(out, in, d.is, d.os, batch.is, batch.os);
}

// Transforms 0 to `end` in groups; returns the first transform behind the last group.
template <class Kernel, int lanes>
int64_t execute_until(const fft_plan* plan, float* in, float* out, int64_t end) {
    const Kernel kernel = *static_cast<Kernel*>(plan->aux);
    const fft_dim d = plan->dims[0], batch = plan->howmany[0];
    int64_t i = 0;
    for (; i < end; i += lanes) call(kernel, in + 2 * i * batch.is, out + 2 * i * batch.os, d, batch);
    return i;
}

template <class Kernel, int lanes>
void execute_groups(fft_plan* plan, float* in, float* out) {
    execute_until<Kernel, lanes>(plan, in, out, plan->howmany[0].n);
}

// The last transforms run singly: 1 to 3 of four lanes, 1 or 2 of two.
template <class Kernel, int lanes>
void execute_groups_tail(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    const fft_dim batch = plan->howmany[0];
    fft_plan* const single = plan->subplans[0];
    for (int64_t i = execute_until<Kernel, lanes>(plan, in, out, batch.n - lanes); i < batch.n; ++i)
        single->execute(single, in + 2 * i * batch.is, out + 2 * i * batch.os);
}

// Transforms of adjacent elements: one call for all of them. `aux` is kept for the kernel that any caller of the
// assemble form expects there, so that each length and direction has an execute function that knows its rows kernel.
template <bool forward, size_t n>
void execute_rows(fft_plan* plan, float* in, float* out) {
    const many_rows_kernel kernel = (forward ? many_rows_neon_fwd : many_rows_neon_bwd)[n - 1];
    kernel(out, in, plan->howmany[0].is, plan->howmany[0].os, plan->howmany[0].n);
}

constexpr size_t longest_rows = std::size(many_rows_neon_fwd);

struct rows_functions {
    execute_function of[longest_rows];
};

template <bool forward, size_t... i>
constexpr rows_functions make_rows_functions(std::index_sequence<i...>) {
    return {{execute_rows<forward, i + 1>...}};
}

execute_function rows_function(const fft_plan& p) {
    static constexpr auto lengths = std::make_index_sequence<longest_rows>();
    static constexpr rows_functions forward = make_rows_functions<true>(lengths);
    static constexpr rows_functions backward = make_rows_functions<false>(lengths);
    return (p.sign == sign_forward ? forward : backward).of[p.dims[0].n - 1];
}

bool plan_tail(fft_plan* plan) {
    if (!make_subplans(plan, 1)) return false;
    drop_batch(plan->subplans[0]);
    return plan_subplans(plan->subplans, 1) == accepted;
}

struct many_direct_form {
    bool side_by_side;
    execute_function execute;
    const char* name;
    execute_function execute_tail;
    const char* tail_name;
    what_runs runs = runs_as_named;  // without a tail
};

template <class Kernel>
int solve(fft_plan* plan, const many_direct_form& form, Kernel (*lookup)(const fft_plan*, uint64_t)) {
    if (!accepts(*plan, form.side_by_side)) return refused;
    const Kernel kernel = lookup(plan, plan->dims[0].n);
    const bool tail = plan->howmany[0].n % 4 != 0;
    if (!kernel || (tail && !plan_tail(plan)) || !attach_kernel(plan, kernel)) return refused;
    return tail ? install(plan, form.execute_tail, form.tail_name) : install(plan, form.execute, form.name, form.runs);
}

constexpr many_direct_form sve_form = {true,
                                       execute_groups<many_kernel, 4>,
                                       "execute_c2c_many_direct_parallel_sve",
                                       execute_groups_tail<many_kernel, 4>,
                                       "execute_c2c_many_direct_parallel_sve_tail",
                                       runs_kernel_of_four_lanes};
constexpr many_direct_form neon_form = {true, execute_groups<many_kernel, 2>, "execute_c2c_many_direct_parallel_neon",
                                        execute_groups_tail<many_kernel, 2>,
                                        "execute_c2c_many_direct_parallel_neon_tail"};
constexpr many_direct_form assemble_form = {
    false, execute_groups<many_assemble_kernel, 2>, "execute_c2c_many_direct_assemble_neon",
    execute_groups_tail<many_assemble_kernel, 2>, "execute_c2c_many_direct_assemble_neon_tail"};

}  // namespace

void execute_adjacent_groups(const fft_plan& group, float* in, float* out, int64_t count) {
    execute_until<many_kernel, 4>(&group, in, out, count);
}

int solve_problem_c2c_many_direct_parallel_sve(fft_plan* plan) {
    const int result = solve(plan, sve_form, lookup_many_quad_sve);
    if (result != accepted) return refused;
    for (int twice = 0; twice < 2; ++twice) plan->howmany[0].os = doubled_stride(plan->double_os, plan->howmany[0].os);
    return accepted;
}

int solve_problem_c2c_many_direct_parallel_neon(fft_plan* plan) {
    return solve(plan, neon_form, lookup_many_pair_neon);
}

int solve_problem_c2c_many_direct_assemble_neon(fft_plan* plan) {
    if (solve(plan, assemble_form, lookup_many_assemble_neon) != accepted) return refused;
    if (!has_unit_strides(*plan)) return accepted;
    const char* const name = plan->howmany[0].n % 4 == 0 ? assemble_form.name : assemble_form.tail_name;
    return install(plan, rows_function(*plan), name, runs_rows_kernel);
}
