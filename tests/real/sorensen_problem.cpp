// SPDX-License-Identifier: Apache-2.0
#include "tests/real/sorensen_problem.h"

#include "planner/solver.h"
#include "real/sorensen_stages.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_sorensen.h"
#include "tests/support/signals.h"

#include <limits>

using reference::complex;

void stage_by_formula(const sorensen_stage_record* stage, const float* in, float* out) {
    const std::vector<complex> rows = reference::hermitian_stage(in, stage->done, stage->radix, stage->rest);
    const bool last = stage->rest == 1;
    for (size_t e = 0; e < rows.size(); ++e) {
        out[last ? e : 2 * e] = float(rows[e].real());
        if (!last) out[2 * e + 1] = float(rows[e].imag());
    }
}

void execute_plan(fft_plan* plan, float* in, float* out) { plan->execute(plan, in, out); }

void run_stages(fft_plan* plan, float* in, float* out) {
    const sorensen_stage_list list = sorensen_stages(plan->aux);
    std::vector<float> from, to;
    for (uint64_t q = 0; q < *list.count; ++q) {
        const bool last = q + 1 == *list.count;
        to.assign(last ? 0 : 2 * plan->dims[0].n, 0);
        list.stages[q].kernel(&list.stages[q], q == 0 ? in : from.data(), last ? out : to.data());
        from.swap(to);
    }
}

double error_of(fft_plan* plan, int64_t n, bool in_place, plan_runner run) {
    guarded_floats input(2 * (n / 2 + 1)), separate(n);
    guarded_floats& output = in_place ? input : separate;
    auto z = complex_noise(n / 2 + 1, n);
    std::vector<complex> x(n);
    for (int64_t k = 0; k <= n / 2; ++k) {
        input.set_complex(k, k == 0 || 2 * k == n ? std::complex<float>(z[k].real(), 1000) : z[k]);
        const bool real = k == 0 || 2 * k == n;
        x[k] = real ? complex(z[k].real()) : complex(z[k]);
        if (k) x[n - k] = std::conj(x[k]);
    }
    guarded_floats before = input;
    this_thread_state().use_plan_buffer = 1;
    run(plan, input.data(), output.data());
    std::vector<std::complex<float>> actual;
    for (int64_t j = 0; j < n; ++j) actual.push_back(output[j]);
    bool kept = input.zones_are_intact() && separate.zones_are_intact();
    for (size_t i = 0; i < input.size() && !in_place; ++i) kept = kept && before[i] == input[i];
    return kept ? relative_error(actual, reference::dft(x, 1)) : std::numeric_limits<double>::infinity();
}
