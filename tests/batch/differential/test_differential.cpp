// SPDX-License-Identifier: Apache-2.0
// Random problems through the exported calls, each element of each result against a double-precision reference and
// every other float against what it was, also with memory that runs out. Measured problems are planned so that every
// candidate wins in turn. By hand:  test_differential [count [seed]]
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <memory>

#include "include/qfftf.h"
#include "problems/call_words.h"
#include "tests/batch/differential/check.h"
#include "tests/batch/differential/short_memory.h"

namespace {

#ifdef __aarch64__
int64_t problem_count = 1000;  // an emulator takes ten times as long
#else
int64_t problem_count = 10000;
#endif
uint64_t first_seed = 20260;
constexpr int64_t short_memory_share = 20;  // one problem of these many is planned and executed again and again

std::vector<uint32_t> built_r2r_kinds() {
    std::vector<uint32_t> kinds;
    float in[8] = {}, out[8];
    for (uint32_t kind = 0; kind <= r2r_rodft11; ++kind)
        if (qsl_fftf_plan plan = qsl_fftf_plan_r2r_1d(8, in, out, kind, QSL_FFTF_RULES)) {
            kinds.push_back(kind);
            qsl_fftf_destroy_plan(plan);
        }
    return kinds;
}

using check = check_result (*)(const transform_problem&);

// A small problem that fails too, in the same manner: takes the first simpler one that does until none does.
transform_problem shrink(transform_problem p, check check_problem, bool refused) {
    int tries = 0;
    auto fails_too = [&](const transform_problem& simpler) {
        if (++tries > 400) return false;
        const check_result result = check_problem(simpler);
        return !result.failure.empty() && result.refused == refused;
    };
    for (bool found = true; found;) {
        found = false;
        for (const transform_problem& simpler : simpler_problems(p))
            if (fails_too(simpler)) {
                p = simpler;
                found = true;
                break;
            }
    }
    return p;
}

std::string report(const transform_problem& p, const check_result& result) {
    return p.text() + "\n  " + result.failure + "\n" + result.tree;
}

// The problem and what it shrinks to.
std::string report(const transform_problem& p, check check_problem, const check_result& result) {
    const transform_problem small = shrink(p, check_problem, result.refused);
    return report(p, result) + "which shrinks to " + report(small, check_problem(small));
}

bool is_short(const transform_problem& p) { return p.points() * p.transforms() <= 512; }

}  // namespace

TEST(Differential, RandomProblemsAreSolvedWithinTheirLayout) {
    problem_source source(first_seed, built_r2r_kinds());
    int64_t refused = 0;
    double worst_error = 0;
    std::string worst;
    for (int64_t i = 0; i < problem_count; ++i) {
        const transform_problem p = source.draw();
        const check_result result = check_problem(p);
        refused += result.refused;
        if (result.worst_error > worst_error) {
            worst_error = result.worst_error;
            worst = p.text();
        }
        EXPECT_TRUE(result.failure.empty())
            << "problem " << i << " of seed " << first_seed << ": " << report(p, check_problem, result);
    }
    std::cout << problem_count << " problems of seed " << first_seed << ", " << refused
              << " onto overlapping outputs refused; largest error of an element " << worst_error << " units: " << worst
              << "\n";
}

TEST(Differential, RandomProblemsAreSolvedOrLeftAloneWhereMemoryIsShort) {
    problem_source source(first_seed + 1, built_r2r_kinds());
    int64_t checked = 0, refused = 0;
    for (int64_t i = 0; i < problem_count; ++i) {
        const transform_problem p = source.draw();
        if (i % short_memory_share != 0 || !is_short(p)) continue;
        const check_result result = check_short_memory(p);
        ++checked;
        refused += result.refused;
        EXPECT_TRUE(result.failure.empty())
            << "problem " << i << " of seed " << first_seed + 1 << ": " << report(p, check_short_memory, result);
    }
    std::cout << checked << " problems with every allocation failing in turn, " << refused << " of them refused\n";
    EXPECT_GT(checked - refused, problem_count / short_memory_share / 2);
}

// What a failing test prints can be given to qfftf-plan.
TEST(Differential, ProblemsAreToldInWordsThatMakeTheirCall) {
    problem_source source(first_seed + 2, built_r2r_kinds());
    for (int i = 0; i < 1000; ++i) {
        const transform_problem p = source.draw();
        const call_words call(p.call_text());
        if (p.call == plan_call::guru && !call.reason().empty()) continue;  // left to the 64-bit call
        ASSERT_EQ(call.reason(), "") << p.text();
        const std::unique_ptr<fft_plan, void (*)(fft_plan*)> record(call.record(), fft_plan_free);
        ASSERT_NE(record, nullptr) << p.text();
        EXPECT_EQ(record->kind, p.kind) << p.text();
        EXPECT_EQ(record->split == split_arrays, p.split) << p.text();
        EXPECT_EQ(record->in == record->out, p.in_place) << p.text();
        if (p.points() == 1 && record->rank == 0) continue;  // guru calls make data movements of some single points
        ASSERT_EQ(record->rank, static_cast<int>(p.dims.size())) << p.text();
        for (size_t d = 0; d < p.dims.size(); ++d) {
            EXPECT_EQ(record->dims[d].n, p.dims[d].n) << p.text();
            EXPECT_EQ(record->dims[d].is, p.dims[d].is) << p.text();
            EXPECT_EQ(record->dims[d].os, p.dims[d].os) << p.text();
        }
    }
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) problem_count = std::atoll(argv[1]);
    if (argc > 2) first_seed = std::strtoull(argv[2], nullptr, 10);
    return RUN_ALL_TESTS();
}
