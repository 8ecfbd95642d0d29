// SPDX-License-Identifier: Apache-2.0
// Random problems through the exported calls, each element of each result against a double-precision reference and
// every other float against what it was. By hand:  test_differential [count [seed]]
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "include/qfftf.h"
#include "tests/batch/differential/check.h"

namespace {

#ifdef __aarch64__
int64_t problem_count = 1000;  // an emulator takes ten times as long
#else
int64_t problem_count = 10000;
#endif
uint64_t first_seed = 20260;

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

// A small problem that fails too, in the same manner: takes the first simpler one that does until none does.
transform_problem shrink(transform_problem p, bool refused) {
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

std::string report(const transform_problem& p) {
    const check_result result = check_problem(p);
    return p.text() + "\n  " + result.failure + "\n" + result.tree;
}

}  // namespace

TEST(Differential, RandomProblems) {
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
            << "problem " << i << " of seed " << first_seed << ": " << p.text() << "\n  " << result.failure << "\n"
            << result.tree << "which shrinks to " << report(shrink(p, result.refused));
    }
    std::cout << problem_count << " problems of seed " << first_seed << ", " << refused
              << " in place between two layouts refused; largest error of an element " << worst_error
              << " units: " << worst << "\n";
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) problem_count = std::atoll(argv[1]);
    if (argc > 2) first_seed = std::strtoull(argv[2], nullptr, 10);
    return RUN_ALL_TESTS();
}
