// SPDX-License-Identifier: Apache-2.0
// c2c_1d_large: one contiguous complex transform of a large power of two, n = r m, as a matrix: columns of r points
// first, the twiddles folded into their way out, then rows of m points (the six-step method without its transposes).
// Both passes are batched subplans, so that blocking and threads are theirs. Shorter transforms run faster as one chain
// of stages.
#include "dft/roots.h"
#include "dft/sizes.h"
#include "planner/solver.h"
#include "planner/solvers.h"

#include <cmath>

namespace {

// Several threads gain from two batched passes much earlier than one.
int64_t longest_chain(const fft_plan& p) { return p.nthreads <= 1 ? 32768 : 4096; }

bool accepts(const fft_plan& p) {
    return is_one_complex_transform(p) && has_unit_strides(p) && is_power_of_two(p.dims[0].n) &&
           p.dims[0].n > longest_chain(p);
}

// The largest divisor that isn't above the square root.
int64_t column_length(int64_t n) {
    int64_t r = static_cast<int64_t>(std::sqrt(static_cast<double>(n)));
    while (n % r) --r;
    return r;
}

// exp(2 pi i sign i j / n) for column i and j < r. Four columns at a time stand together, as four lanes.
void fill_large_twiddles(float* table, int64_t r, int64_t m, int64_t sign) {
    const root_circle roots(r * m, 1, sign);
    int64_t i = 0;
    for (; i + 4 <= m; i += 4) roots.take_four_rows(i, 0, r, table + 2 * i * r);
    for (; i < m; ++i) roots.take_row(i, 0, r, table + 2 * i * r, 1);
}

// Its kind leads to the one solver that knows the twiddles, which it borrows. It is never measured: the candidates of a
// race are clones, which have no twiddles.
void set_column_pass(fft_plan* pass, const fft_plan& plan, int64_t r, int64_t m) {
    pass->kind = kind_c2c_large_piece;
    pass->rank = 1;
    pass->dims[0] = {r, m, m};
    pass->howmany_rank = 1;
    pass->howmany[0] = {m, 1, 1};
    pass->in = plan.in;
    pass->flags = plan_flag_fast_pass;
    pass->double_os = 0;
    pass->aux = plan.aux;
    pass->aux_size = plan.aux_size;
    pass->aux_owned = 0;
}

void set_row_pass(fft_plan* pass, int64_t r, int64_t m) {
    pass->kind = kind_c2c;
    pass->rank = 1;
    pass->dims[0] = {m, 1, r};
    pass->howmany_rank = 1;
    pass->howmany[0] = {r, m, 1};
    pass->double_is = 0;
}

// The rows are planned on the caller's arrays. In place that is stricter than what runs, which reads the scratch array:
// a batch that no solver runs in place is then planned on what it reads.
int plan_row_pass(fft_plan* plan) {
    fft_plan** slot = &plan->subplans[1];
    if (plan_problem(slot) == accepted) return accepted;
    (*slot)->in = static_cast<float*>(plan->buffer);
    (*slot)->flags = plan->flags;
    return plan_problem(slot);
}

void execute_large(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan* const* pass = plan->subplans;
    pass[0]->execute(pass[0], in, scratch.data());
    pass[1]->execute(pass[1], scratch.data(), out);
}

}  // namespace

int solve_problem_c2c_1d_large(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const int64_t n = plan->dims[0].n, r = column_length(n), m = n / r;
    if (!make_subplans(plan, 2) || !attach_buffer(plan, 16 * n) || !attach_aux(plan, 8 * n)) return refused;
    fill_large_twiddles(static_cast<float*>(plan->aux), r, m, plan->sign);
    set_column_pass(plan->subplans[0], *plan, r, m);
    set_row_pass(plan->subplans[1], r, m);
    install(plan, execute_large, "execute_c2c_1d_large");
    return plan_problem(&plan->subplans[0]) == accepted ? plan_row_pass(plan) : refused;
}
