// SPDX-License-Identifier: Apache-2.0
// The eleven real-to-real transforms by their definitions, in double precision, unnormalised.
#pragma once
#include <cstdint>
#include <vector>

namespace reference {

// `kind` is an r2r_transform. redft00 needs two points or more.
std::vector<double> r2r(const std::vector<double>& x, uint32_t kind);

// What a transform followed by its inverse multiplies by, and the kind of the inverse.
double r2r_inverse_factor(uint32_t kind, int64_t n);
uint32_t r2r_inverse(uint32_t kind);

}  // namespace reference
