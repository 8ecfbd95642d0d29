// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "problems/problem.h"

namespace bench {

using namespace problems;

// One transform of one dimension with unit strides by its defining sum, in double precision: n^2 operations with
// exactly reduced angles. It checks the library that serves as reference.
void direct_sum(const problem& p, const double* in, double* out);

}  // namespace bench
