// SPDX-License-Identifier: Apache-2.0
#include "tests/planner/hostile_outcome.h"

#include "record/fft_plan.h"
#include "tests/batch/differential/check.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int64_t largest_array = 1 << 12;  // floats

// Floats that one array of a side needs, or a number above largest_array.
int64_t floats_needed(const fft_plan& p, bool input) {
    const bool complex_side = p.kind == kind_c2c || p.kind == (input ? kind_c2r : kind_r2c);
    int64_t last = 0;
    const auto reach = [&](const fft_dim& d, int64_t n) {
        last = std::min(last + (n - 1) * (input ? d.is : d.os), largest_array);
    };
    for (int k = 0; k < p.rank; ++k) {
        const bool half = complex_side && p.kind != kind_c2c && k == p.rank - 1;
        reach(p.dims[k], half ? p.dims[k].n / 2 + 1 : p.dims[k].n);
    }
    for (int k = 0; k < p.howmany_rank; ++k) reach(p.howmany[k], p.howmany[k].n);
    return (last + 1) * (complex_side && p.split != split_arrays ? 2 : 1);
}

// Elements of all transforms, more than the floats where they overlap; or a number above largest_array.
int64_t elements(const fft_plan& p) {
    int64_t count = 1;
    for (int k = 0; k < p.rank; ++k)
        count = std::min(count * std::min(p.dims[k].n, 2 * largest_array), 2 * largest_array);
    for (int k = 0; k < p.howmany_rank; ++k)
        count = std::min(count * std::min(p.howmany[k].n, 2 * largest_array), 2 * largest_array);
    return count;
}

std::unique_ptr<float[]> noughts(int64_t count) {
    return std::unique_ptr<float[]>(new float[static_cast<size_t>(count)]());
}

void execute_upsampling(qsl_fftf_plan plan) {
    const auto in = noughts(plan->dims[0].n * plan->dims[1].n), out = noughts(plan->howmany[0].n * plan->howmany[1].n);
    qsl_fftf_execute_r2r(plan, in.get(), out.get());
}

// The problem that the call has put into the record.
transform_problem problem_of(const fft_plan& p) {
    transform_problem problem;
    problem.kind = p.kind;
    problem.sign = p.sign;
    problem.split = p.split == split_arrays;
    problem.dims.assign(p.dims, p.dims + p.rank);
    problem.batch.assign(p.howmany, p.howmany + p.howmany_rank);
    if (p.kind == kind_r2r) problem.r2r_kinds.assign(p.r2r_kind, p.r2r_kind + p.rank);
    problem.in_place = p.in == p.out;
    problem.guarded = false;
    return problem;
}

}  // namespace

outcome execute_if_small(qsl_fftf_plan plan) {
    const fft_plan& p = *plan;
    const bool upsampling = p.kind == kind_upsampling_2d;
    const int64_t in_count = upsampling ? p.dims[0].n * p.dims[1].n : floats_needed(p, true);
    const int64_t out_count = upsampling ? p.howmany[0].n * p.howmany[1].n : floats_needed(p, false);
    if (in_count > largest_array || out_count > largest_array || elements(p) > largest_array) return {};
    if (upsampling) return execute_upsampling(plan), outcome{.executed = true};
    const transform_problem problem = problem_of(p);
    const check_result result = check_plan(problem, plan);
    if (elements_overlap(problem)) return {.executed = true};
    return {.executed = true,
            .compared = true,
            .failure = result.failure.empty() ? "" : result.failure + "\n" + result.tree};
}

hostile_arrays draw_arrays(uint64_t number) {
    static float a[2], b[2], c[2], d[2];
    switch (number % 8) {
        case 0:
            return {nullptr, nullptr, nullptr, nullptr};
        case 1:
            return {a, b, nullptr, nullptr};
        case 2:
        case 3:
        case 4:
            return {a, b, a, b};
        default:
            return {a, b, c, d};
    }
}
