// SPDX-License-Identifier: Apache-2.0
// c2c_many_parallel: a complex batch of 5 or more whose count is no multiple of 4 is cut into a part that is one and a
// rest of 1 to 3. Lengths with a large prime factor gain nothing from it, and two tuned shapes run faster uncut.
#include "dft/sizes.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

namespace {

bool is_faster_uncut(const fft_plan& p) {
    const fft_dim d = p.dims[0], batch = p.howmany[0];
    return (d.n == 8 && batch.n == 5 && d.is == 20 && d.os == 20) ||
           (d.n == 2048 && d.is == 1025 && batch.n == 1025 && batch.is == 1 && batch.os == 1);
}

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && (p.kind == kind_c2c || p.kind == kind_c2c_large_piece) && p.rank == 1 &&
           p.howmany_rank == 1 && p.howmany[0].n >= 5 && p.howmany[0].n % 4 != 0 &&
           !has_large_prime_factor(p.dims[0].n) && (is_measured(p) || !is_faster_uncut(p)) && may_run_in_pieces(p);
}

int64_t whole_groups(int64_t count) { return count & ~int64_t{3}; }

void execute_c2c_many_parallel(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan *groups = plan->subplans[0], *rest = plan->subplans[1];
    const fft_dim batch = plan->howmany[0];
    const int64_t done = whole_groups(batch.n);
    groups->execute(groups, in, out);
    rest->execute(rest, in + 2 * done * batch.is, out + 2 * done * batch.os);
}

// Two or three short transforms side by side cost more one by one than in a group with some that are computed already.
int64_t longest_in_two_groups(int64_t count) { return count == 7 ? 1000 : count == 6 ? 64 : 0; }

bool is_cheaper_in_two_groups(const fft_plan& p) {
    const fft_dim batch = p.howmany[0];
    return p.dims[0].n <= longest_in_two_groups(batch.n) && batch.is == 1 && batch.os == 1 && p.kind == kind_c2c &&
           p.in != p.out;
}

void execute_two_groups(fft_plan* plan, float* in, float* out) {
    if (in == out) return execute_c2c_many_parallel(plan, in, out);
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan* group = plan->subplans[0];
    group->execute(group, in, out);
    const int64_t again = plan->howmany[0].n - 4;
    group->execute(group, in + 2 * again, out + 2 * again);
}

}  // namespace

int solve_problem_c2c_many_parallel(fft_plan* plan) {
    if (!accepts(*plan) || !make_subplans(plan, 2)) return refused;
    const int64_t count = plan->howmany[0].n;
    plan->subplans[0]->howmany[0].n = whole_groups(count);
    plan->subplans[1]->howmany[0].n = count - whole_groups(count);
    if (plan_subplans(plan->subplans, 2) != accepted) return refused;
    plan->howmany[0].os = doubled_stride(plan->double_os, plan->howmany[0].os);
    const char* const name = "execute_c2c_many_parallel";
    return is_cheaper_in_two_groups(*plan) ? install(plan, execute_two_groups, name, runs_overlapping_groups)
                                           : install(plan, execute_c2c_many_parallel, name);
}
