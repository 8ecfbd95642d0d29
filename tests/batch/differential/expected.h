// SPDX-License-Identifier: Apache-2.0
// What one transform of a problem should give, in double precision.
#pragma once
#include <complex>
#include <vector>

#include "tests/batch/differential/problem.h"

using values =
    std::vector<std::complex<double>>;  // row-major, stored lengths of its side; real data has no imaginary part

values expected_transform(const transform_problem& p, const values& in);

// The Hermitian half that a c2r transform takes, made from real data of the transform's lengths.
values hermitian_half(const transform_problem& p, const values& real);
