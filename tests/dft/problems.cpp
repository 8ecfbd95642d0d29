// SPDX-License-Identifier: Apache-2.0
#include "tests/dft/problems.h"

#include "dft/sizes.h"
#include "planner/solver.h"
#include "tests/support/guarded_floats.h"

namespace {

int64_t count_of(const complex_problem& p) { return p.lanes ? p.lanes : 1; }

// Complex elements that a side spans.
size_t span_of(const complex_problem& p, int64_t stride) { return (p.n - 1) * stride + count_of(p); }

using complexes = std::vector<std::complex<float>>;

// Lane t transforms the sample's signal times this, so that the lanes differ and one reference serves all.
std::complex<float> lane_factor(int64_t lane) {
    static constexpr float parts[5] = {1, -2, 0.5, 4, -1};
    return {lane % 2 ? 0 : parts[lane % 5], lane % 2 ? parts[lane % 5] : 0};
}

testing::AssertionResult compare_lane(const complex_problem& p, const sample& expected, guarded_floats& out,
                                      int64_t lane) {
    complexes actual(p.n);
    std::vector<reference::complex> reference = expected.transform(p.sign);
    for (int64_t k = 0; k < p.n; ++k) {
        actual[k] = out.complex_at(k * p.os + lane);
        reference[k] *= reference::complex(lane_factor(lane));
    }
    const double error = relative_error(actual, reference), limit = error_limit(p.n);
    if (error <= limit) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "relative error " << error << ", limit " << limit << ", lane " << lane;
}

testing::AssertionResult only_written_where(guarded_floats& array, size_t span, const std::vector<bool>& addressed) {
    if (!array.zones_are_intact()) return testing::AssertionFailure() << "written outside the array";
    for (size_t i = 0; i < span; ++i)
        if (!addressed[i] && !array.complex_is_untouched(i))
            return testing::AssertionFailure() << "element " << i << ", between the addressed ones, was written";
    return testing::AssertionSuccess();
}

std::vector<bool> addressed_elements(const complex_problem& p, int64_t stride, size_t span) {
    std::vector<bool> addressed(span);
    for (int64_t j = 0; j < p.n; ++j)
        for (int64_t lane = 0; lane < count_of(p); ++lane) addressed[j * stride + lane] = true;
    return addressed;
}

void write_input(const complex_problem& p, const sample& source, guarded_floats& in) {
    for (int64_t j = 0; j < p.n; ++j)
        for (int64_t lane = 0; lane < count_of(p); ++lane)
            in.set_complex(j * p.is + lane, source.signal()[j] * lane_factor(lane));
}

testing::AssertionResult input_is_kept(const complex_problem& p, const sample& source, guarded_floats& in) {
    for (int64_t j = 0; j < p.n; ++j)
        for (int64_t lane = 0; lane < count_of(p); ++lane)
            if (in.complex_at(j * p.is + lane) != source.signal()[j] * lane_factor(lane))
                return testing::AssertionFailure() << "input " << j << " was overwritten";
    return testing::AssertionSuccess();
}

}  // namespace

fft_plan record_of(const complex_problem& p) {
    fft_plan record = {};
    record.kind = kind_c2c;
    record.sign = p.sign;
    record.split = interleaved_arrays;
    record.rank = 1;
    record.dims[0] = {p.n, p.is, p.os};
    if (p.lanes) {
        record.howmany_rank = 1;
        record.howmany[0] = {p.lanes, 1, 1};
    }
    record.flags = p.flags;
    record.nthreads = p.nthreads;
    return record;
}

std::string description(const complex_problem& p, const fft_plan* plan) {
    std::string text = "c2c " + std::to_string(p.n);
    const auto given = [&](const char* word, int64_t value, int64_t usual) {
        if (value != usual) text += word + std::to_string(value);
    };
    if (p.sign == sign_backward) text += " backward";
    if (p.in_place) text += " inplace";
    if (p.lanes) text += " batch=" + std::to_string(p.lanes) + " interleaved";
    given(" istride=", p.is, count_of(p));
    given(" ostride=", p.os, count_of(p));
    if (p.flags == plan_flag_measured) text += " measured";
    given(" threads=", p.nthreads, 1);
    if (p.flags != plan_flag_measured) given(", flags ", p.flags, 0);
    if (p.sign != sign_backward) given(", sign ", p.sign, sign_forward);
    if (!plan) return text + ": no plan";
    return text + " by " + (plan->solver_name ? plan->solver_name : "one solver") + ", " + plan->execute_name;
}

planned::planned(const fft_plan& problem, solve_function solve) : plan_(fft_plan_clone(&problem)) {
    if ((solve ? solve(plan_) : plan_problem(&plan_)) == accepted) return;
    fft_plan_free(plan_);
    plan_ = nullptr;
}

sample::sample(int64_t n, uint64_t seed)
    : signal_(complex_noise(n, seed)),
      forward_(reference::dft(widened(signal_), -1)),
      backward_(reference::other_direction(forward_)) {}

const std::vector<reference::complex>& sample::transform(int64_t sign) const {
    return sign == sign_forward ? forward_ : backward_;
}

double error_limit(int64_t n) {
    static constexpr uint64_t up_to_13[] = {2, 3, 5, 7, 11, 13};
    const double units = has_large_prime_factor(n) ? 2.2 : factor_list_strip(n, up_to_13, 6) == 1 ? 1.2 : 1.6;
    return units * error_unit(n);
}

testing::AssertionResult computes(const complex_problem& p, const sample& expected, planned::solve_function solve) {
    const size_t in_span = span_of(p, p.is), out_span = span_of(p, p.os);
    guarded_floats in(2 * (p.in_place ? std::max(in_span, out_span) : in_span)), separate_out(2 * out_span);
    guarded_floats& out = p.in_place ? in : separate_out;

    fft_plan record = record_of(p);
    record.in = in.data();
    record.out = out.data();
    const planned plan(record, solve);
    if (!plan) return testing::AssertionFailure() << description(p, nullptr);

    std::vector<bool> addressed = addressed_elements(p, p.os, out.size() / 2);
    if (p.in_place) {
        const std::vector<bool> read = addressed_elements(p, p.is, out.size() / 2);
        for (size_t i = 0; i < addressed.size(); ++i) addressed[i] = addressed[i] || read[i];
    }
    // a measured search has run on the arrays
    testing::AssertionResult result = only_written_where(out, out.size() / 2, addressed);
    in.reset();
    separate_out.reset();

    write_input(p, expected, in);
    plan->execute(plan.get(), in.data(), out.data());
    if (result) result = only_written_where(out, out.size() / 2, addressed);
    if (result && !p.in_place) result = input_is_kept(p, expected, in);
    for (int64_t lane = 0; result && lane < count_of(p); ++lane) result = compare_lane(p, expected, out, lane);
    if (result) return result;
    return testing::AssertionFailure() << description(p, plan.get()) << ": " << result.message();
}
