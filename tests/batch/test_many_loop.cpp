// SPDX-License-Identifier: Apache-2.0
// The loops inside dft_many that don't call the plan of one transform: two stages at a time, straight kernels on
// any number of rows, and rows to columns and back, four at a time.
#include "planner/solvers.h"
#include "reshape_columns.h"

TEST(ManyLoop, TurnsRowsIntoColumns) {
    for (const int64_t n : {22, 64, 100, 128, 216, 1000, 2048})  // straight, of two stages, three and four
        for (const int64_t count : {1, 3, 4, 5, 8, 11})
            check_both_directions(solve_problem_dft_many, batch_of({n, 1, count + 2}, {count, n + 3, 1}),
                                  "execute_many");
}

// Where columns lie far apart, sixteen at a time; counts that aren't multiples of it take four.
TEST(ManyLoop, TurnsRowsIntoFarColumns) {
    for (const auto& [n, apart] : {std::pair<int64_t, int64_t>{512, 131}, {1000, 67}, {4096, 64}, {128, 515}})
        for (const int64_t count : {16, 20, 48}) {
            const problem p = batch_of({n, 1, apart}, {count, n + 3, 1});
            check_both_directions(solve_problem_dft_many, p, "execute_many");
            float in[1], out[1];
            const plan_pointer plan = p.record(in, out);
            ASSERT_EQ(solve_problem_dft_many(plan.get()), accepted);
            EXPECT_EQ(plan->buffer_size, uint64_t(count % 16 ? 8 : 24) * 8 * n) << p.text();
        }
}

TEST(ManyLoop, TurnsColumnsIntoRows) {
    for (const int64_t n : {7, 22, 64, 100, 128, 216, 1000, 2048})
        for (const int64_t count : {1, 3, 4, 5, 8, 11})
            check_both_directions(solve_problem_dft_many, batch_of({n, count + 2, 1}, {count, 1, n + 3}),
                                  "execute_many");
}

TEST(ManyLoop, RunsTwoStagesForEachTransform) {
    for (const int64_t n : {22, 64, 100, 1024})
        for (const int64_t count : {1, 2, 7}) {
            check(solve_problem_dft_many, batch_of({n, 1, 1}, {count, n, n + 1}), "execute_many");
            check(solve_problem_dft_many, batch_of({n, 1, 1}, {count, n + 2, n + 2}, true), "execute_many");
            check(solve_problem_dft_many, batch_of({n, 2, 3}, {count, 2 * n, 3 * n}), "execute_many");
        }
}

// Both directions, several distances of the rows on both sides.
TEST(ManyLoop, RunsStraightKernelsOnAnyCountOfRows) {
    for (const int64_t n : {64, 128})
        for (int64_t count = 1; count <= 9; ++count) {
            for (const fft_dim rows : {fft_dim{count, n, n}, {count, n, n + 7}, {count, n + 36, n}})
                check_both_directions(solve_problem_dft_many, batch_of({n, 1, 1}, rows), "execute_many");
            for (const int64_t distance : {n, n + 3})
                check_both_directions(solve_problem_dft_many, batch_of({n, 1, 1}, {count, distance, distance}, true),
                                      "execute_many");
        }
}

// Windows that overlap are read more than once.
TEST(ManyLoop, RunsStraightKernelsOnOverlappingRows) {
    for (const int64_t n : {64, 128}) {
        constexpr int64_t count = 10, step = 16;
        const complex_array signal = complex_noise(n + (count - 1) * step, 5);
        arrays a = {signal, complex_noise(n * count + 2 * guard, 6)};
        float* const in = reinterpret_cast<float*>(a.in.data());
        const plan_pointer plan = batch_of({n, 1, 1}, {count, step, n}).plan(in, a.out_data());
        ASSERT_NE(plan, nullptr);
        plan->execute(plan.get(), in, a.out_data());
        for (int64_t t = 0; t < count; ++t) {
            const complex_array window(signal.begin() + t * step, signal.begin() + t * step + n);
            const auto first = a.out.begin() + guard + n * t;
            EXPECT_LT(relative_error(complex_array(first, first + n), reference::dft(widened(window), -1)), 3e-7) << t;
        }
        EXPECT_TRUE(same_bits(a.in, signal));
    }
}
