// SPDX-License-Identifier: Apache-2.0
#include "tests/planner/fake_solvers.h"

namespace fake {

std::function<int(fft_plan*)> rows[solver_count];
std::vector<int> calls;

void clear() {
    for (auto& row : rows) row = nullptr;
    calls.clear();
}

int accept(fft_plan* plan) {
    return install(plan, [](fft_plan*, float*, float*) {}, "execute_nothing");
}

}  // namespace fake

namespace {

template <int row>
int solve(fft_plan* plan) {
    fake::calls.push_back(row);
    return fake::rows[row] ? fake::rows[row](plan) : refused;
}

}  // namespace

#define ROW(tens, ones) {solve<10 * tens + ones>, "row_" #tens #ones}
#define EIGHT_ROWS(t) ROW(t, 0), ROW(t, 1), ROW(t, 2), ROW(t, 3), ROW(t, 4), ROW(t, 5), ROW(t, 6), ROW(t, 7)
#define TEN_ROWS(t) EIGHT_ROWS(t), ROW(t, 8), ROW(t, 9)
const solver_entry solver_table[solver_count] = {TEN_ROWS(0), TEN_ROWS(1), TEN_ROWS(2),  TEN_ROWS(3),
                                                 TEN_ROWS(4), TEN_ROWS(5), EIGHT_ROWS(6)};
