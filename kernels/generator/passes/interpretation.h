// SPDX-License-Identifier: Apache-2.0
// The recorded graph of a kernel body, computed operation by operation in double precision, as the vocabulary of
// kernels/ops defines the operations: for tests.
#pragma once
#include <array>
#include <complex>
#include <functional>
#include <map>

#include "kernels/generator/bodies/recording.h"

namespace generator {

using number = std::complex<double>;

// Lanes tell apart what belongs to one lane and what moves between lanes: two complex numbers, or four real ones.
constexpr int most_lanes = 4;
using graph_vector = std::array<number, most_lanes>;

using graph_source = std::function<graph_vector(int slot)>;

// The outputs by their slots.
std::map<int, graph_vector> interpret(const body& b, int lanes, const graph_source& load, const graph_source& twiddle);

}  // namespace generator
