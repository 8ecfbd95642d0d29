// SPDX-License-Identifier: Apache-2.0
#include "tests/batch/differential/check.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <sstream>
#include <thread>

#include "problems/plan_tree.h"
#include "tests/batch/differential/expected.h"
#include "tests/support/signals.h"
#include "tests/support/steered_clock.h"

namespace {

// Bounds of one element's error, in units of 2^-24 sqrt(log2 points) times the rms of its transform. An element that
// comes from the wrong place is off by about 10^7 of them.
constexpr double allowed_error = 60;

// One element's share of the allowed error of its transform.
double error_scale(const transform_problem& p, const values& expected) {
    double square = 0;
    for (const auto& z : expected) square += std::norm(z);
    const double rms = std::sqrt(square / static_cast<double>(expected.size()));
    return rms * error_unit(p.points());
}

void execute(const transform_problem& p, qsl_fftf_plan plan, const problem_arrays& at) {
    auto run = [&] { p.new_arrays ? execute_on(p, plan, at) : qsl_fftf_execute(plan); };
    p.stranger ? std::thread(run).join() : run();
}

// Planning by rules leaves the arrays as they were; measured, it writes outputs at most. This holds where there is no
// plan, too.
std::string trace_of_planning(const transform_problem& p, const arrays& planned) {
    if (p.measured) {
        const std::string stray = planned.stray_write();
        return stray.empty() ? "" : "in planning, " + stray;
    }
    return planned.are_as_before() ? "" : "planning by rules has written to the arrays";
}

// Plans and, unless `known` holds the plan's tree already, executes and compares.
check_result check_one_plan(const transform_problem& p, std::set<std::string>* known = nullptr) {
    check_result result;
    arrays planned(p);
    qsl_fftf_plan plan = make_plan(p, planned.pointers());
    result.failure = trace_of_planning(p, planned);
    if (!plan) {
        result.refused = true;
        if (!p.outputs_overlap) result.failure = "no plan";
        return result;
    }
    result.tree = plan_tree_text(*plan);
    if (known && !known->insert(result.tree).second) {
        qsl_fftf_destroy_plan(plan);
        return result;
    }
    std::optional<arrays> fresh;
    if (p.new_arrays) fresh.emplace(p);
    arrays& used = p.new_arrays ? *fresh : planned;
    if (p.new_arrays) planned.take_pictures();
    used.fill();
    execute(p, plan, used.pointers());
    qsl_fftf_destroy_plan(plan);
    if (p.nthreads > 1) qsl_fftf_cleanup_threads();  // idle workers spin
    compare(p, used, result);
    if (p.new_arrays && result.failure.empty() && !planned.are_as_before()) result.failure = "planned array written";
    return result;
}

// Every candidate of the problem wins in turn, while the clock's seed settles the races below them, of subplans and of
// radices.
check_result check_candidates(const transform_problem& p) {
    check_result result;
    double worst_error = 0;
    std::set<std::string> known;
    for (int s = 0; s < p.clock_seeds && result.failure.empty(); ++s) {
        const uint64_t seed = p.data_seed + static_cast<uint64_t>(s);
        steered_clock::start(seed);
        result = check_one_plan(p, &known);
        worst_error = std::max(worst_error, result.worst_error);
        const int64_t last = steered_clock::readings() - 1;
        for (int i = 0; i < steered_clock::candidates && result.failure.empty() && !result.refused; ++i) {
            steered_clock::start(seed, last - 2 * i);
            result = check_one_plan(p, &known);
            worst_error = std::max(worst_error, result.worst_error);
        }
        if (result.refused) break;
    }
    steered_clock::stop();
    result.worst_error = worst_error;
    return result;
}

}  // namespace

bool elements_overlap(const transform_problem& p) {
    side in = {p, true}, out = {p, false};
    in.lay_out();
    out.lay_out();
    return in.overlaps() || out.overlaps();
}

qsl_fftf_plan make_plan(const transform_problem& p, const problem_arrays& at) {
    qsl_fftf_plan_with_nthreads(p.nthreads);
    qsl_fftf_plan plan = plan_by_call(p, p.call, at);
    // These test the shape of what they are given; the 64-bit guru calls don't.
    const bool tests_shape = p.call == plan_call::guru || (p.call == plan_call::many && p.in_place);
    if (!plan && tests_shape) plan = plan_by_call(p, plan_call::guru64, at);
    qsl_fftf_plan_with_nthreads(1);
    return plan;
}

void compare(const transform_problem& p, const arrays& a, check_result& result) {
    for (int64_t t = 0; t < p.transforms() && !p.outputs_overlap; ++t) {
        values in;
        a.in.for_each(t, [&](size_t, int64_t at) { in.push_back(a.in.before(at)); });
        const values expected = p.dims.empty() ? in : expected_transform(p, in);
        const double scale = error_scale(p, expected);
        a.out.for_each(t, [&](size_t e, int64_t at) {
            const std::complex<double> actual = a.out.get(at);
            const double error = std::abs(actual - expected[e]) / (scale > 0 ? scale : 1);
            result.worst_error = std::max(result.worst_error, error);
            if (error <= allowed_error || !result.failure.empty()) return;  // written so that a NaN fails
            std::ostringstream s;
            s << "transform " << t << " element " << e << " is " << actual << " in place of " << expected[e];
            result.failure = s.str();
        });
    }
    if (result.failure.empty()) result.failure = a.stray_write();
}

check_result check_plan(const transform_problem& p, qsl_fftf_plan plan) {
    check_result result;
    result.tree = plan_tree_text(*plan);
    arrays used(p);
    used.fill();
    execute_on(p, plan, used.pointers());
    compare(p, used, result);
    return result;
}

check_result check_problem(const transform_problem& p) { return p.measured ? check_candidates(p) : check_one_plan(p); }
