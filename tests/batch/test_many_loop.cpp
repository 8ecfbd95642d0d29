// SPDX-License-Identifier: Apache-2.0
// The loops inside row 44 that don't call the plan of one transform: two stages at a time, and rows whose outputs stand
// side by side, four at a time.
#include "planner/solvers.h"
#include "reshape_columns.h"

TEST(ManyLoop, RowsToColumns) {
    for (const int64_t n : {22, 100, 128, 216, 1000, 2048})  // of two stages, three and four
        for (const int64_t count : {1, 3, 4, 5, 8, 11})
            check_both_directions(solve_problem_dft_many, batch_of({n, 1, count + 2}, {count, n + 3, 1}),
                                  "execute_many");
}

TEST(ManyLoop, TwoStagesEach) {
    for (const int64_t n : {22, 64, 100, 1024})
        for (const int64_t count : {1, 2, 7}) {
            check(solve_problem_dft_many, batch_of({n, 1, 1}, {count, n, n + 1}), "execute_many");
            check(solve_problem_dft_many, batch_of({n, 1, 1}, {count, n + 2, n + 2}, true), "execute_many");
            check(solve_problem_dft_many, batch_of({n, 2, 3}, {count, 2 * n, 3 * n}), "execute_many");
        }
}
