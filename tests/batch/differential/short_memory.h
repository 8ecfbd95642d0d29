// SPDX-License-Identifier: Apache-2.0
// A problem planned and executed with every allocation failing in turn.
#pragma once
#include "tests/batch/differential/check.h"

// Planning: a plan that computes right or none, and nothing is lost. Execution, on a thread that never planned and so
// brings scratch of its own: complete or untouched. Ends at the first failure.
check_result check_short_memory(const transform_problem& p);
