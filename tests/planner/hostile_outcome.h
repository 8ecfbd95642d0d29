// SPDX-License-Identifier: Apache-2.0
// What comes of a plan that some call gave, whatever its arguments were.
#pragma once
#include "tests/planner/hostile_calls.h"

#include <string>

struct outcome {
    bool executed = false, compared = false;
    std::string failure = {};
};

// Executes the plan on arrays of exactly the addressed length, which the sanitizers watch, and compares the results
// with the sums in double precision unless elements of the layout share floats. Plans of larger arrays aren't executed.
outcome execute_if_small(qsl_fftf_plan plan);

// Arrays for planning alone, some of them null, apart or in place, by a number.
hostile_arrays draw_arrays(uint64_t number);
