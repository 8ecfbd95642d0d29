// SPDX-License-Identifier: Apache-2.0
// redft00_1d and r2r_1d: the cosine and the sine transform of type I (redft00, rodft00) of one sequence. The sequence
// is extended to an even or odd one of length 2m, m = n - 1 or n + 1, which is transformed as m complex numbers; of the
// post pass of r2c only the half that isn't zero is computed.
#include "planner/solvers.h"
#include "real/half_length.h"
#include "real/mirror.h"
#include "real/real_subplan.h"
#include "real/real_tables.h"

namespace {

// e[t] = x[t] for t from 0 to m, e[2m - t] = x[t]
void extend_even(float* e, const float* x, int64_t m, int64_t is) {
    e[0] = x[0];
    e[m] = x[m * is];
    if (is == 1 && m > 8)
        return cover<8>(m - 1, [=](int64_t t) {
            const complex4 v = load4(x + t);
            store4(e + t, v);
            store8_down(e + 2 * m - t, v);
        });
    for (int64_t t = 1; t < m; ++t) e[t] = e[2 * m - t] = x[t * is];
}

// e[t] = x[t - 1] for t from 1 to m - 1, e[2m - t] = -x[t - 1], and zero at 0 and m
void extend_odd(float* e, const float* x, int64_t m, int64_t is) {
    e[0] = e[m] = 0;
    if (is == 1 && m > 8)
        return cover<8>(m - 1, [=](int64_t t) {
            const complex4 v = load4(x + t - 1);
            store4(e + t, v);
            store8_down(e + 2 * m - t, negate(v));
        });
    for (int64_t t = 1; t < m; ++t) {
        e[t] = x[(t - 1) * is];
        e[2 * m - t] = -x[(t - 1) * is];
    }
}

void real_parts(const float* y, float* out, const float* table, int64_t m, int64_t os) {
    const int64_t last = m >> 1;
    out[0] = y[0] + y[1];
    out[m * os] = y[0] - y[1];
    const float *const again = another_pointer(y), *const mirrors = mirror_table_behind(table, m);
    if (os == 1 && last >= 8)
        return cover<8>(last, [=](int64_t k) {
            const mirror8_parts x = mirror8(y, again, mirrors, m, k);
            store4(out + k, x.re);
            store8_down(out + m - k, x.back_re);
        });
    for (int64_t k = 1; k <= last; ++k) {
        const mirror_terms t = mirror(y + 2 * k, y + 2 * (m - k), table + 2 * (k - 1));
        out[k * os] = 0.5f * (t.s + t.p);
        out[(m - k) * os] = 0.5f * (t.s - t.p);
    }
}

void negated_imaginary_parts(const float* y, float* out, const float* table, int64_t m, int64_t os) {
    const int64_t last = m >> 1;
    const float *const again = another_pointer(y), *const mirrors = mirror_table_behind(table, m);
    if (os == 1 && last >= 8)
        return cover<8>(last, [=](int64_t k) {
            const mirror8_parts x = mirror8(y, again, mirrors, m, k);
            store4(out + k - 1, negate(x.im));
            store8_down(out + m - 1 - k, negate(x.back_im));
        });
    for (int64_t k = 1; k <= last; ++k) {
        const mirror_terms t = mirror(y + 2 * k, y + 2 * (m - k), table + 2 * (k - 1));
        out[(k - 1) * os] = -0.5f * (t.q + t.d);
        out[(m - 1 - k) * os] = -0.5f * (t.q - t.d);
    }
}

void execute_redft00(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t m = dim.n - 1;
    extend_even(scratch.data(), in, m, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    real_parts(scratch.data(), out, static_cast<const float*>(plan->aux), m, dim.os);
}

void execute_rodft00(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t m = dim.n + 1;
    extend_odd(scratch.data(), in, m, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    negated_imaginary_parts(scratch.data(), out, static_cast<const float*>(plan->aux), m, dim.os);
}

}  // namespace

int solve_problem_redft00_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_redft00) || plan->dims[0].n <= 1) return refused;
    const int64_t m = plan->dims[0].n - 1;
    if (!attach_buffer(plan, 32 * m) || !plan_buffer_subplan(plan, kind_c2c, m, sign_forward) ||
        !attach_half_table(plan, m))
        return refused;
    return install(plan, execute_redft00,
                   has_unit_strides(*plan) ? "execute_redft00_1d" : "execute_redft00_1d_discrete");
}

// The execute name is that of the table slot through which type I sine transforms were once reached.
int solve_problem_r2r_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_rodft00)) return refused;
    const int64_t m = plan->dims[0].n + 1;
    if (!attach_buffer(plan, 64 * m) || !attach_half_table(plan, m) ||
        !plan_buffer_subplan(plan, kind_c2c, m, sign_forward))
        return refused;
    return install(plan, execute_rodft00, "r2r_plan_solver_func[k]");
}
