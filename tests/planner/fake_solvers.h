// SPDX-License-Identifier: Apache-2.0
// A solver_table whose rows are set by the test. A program that links this file has no real solvers.
#pragma once
#include "planner/solver.h"
#include "planner/solver_table.h"

#include <functional>
#include <string>
#include <vector>

namespace fake {

// What row r does with a problem. An empty function refuses.
extern std::function<int(fft_plan*)> rows[solver_count];

// Rows in the order in which they were called since the last clear().
extern std::vector<int> calls;

void clear();

// Accepts with an execute function that does nothing.
int accept(fft_plan* plan);

}  // namespace fake
