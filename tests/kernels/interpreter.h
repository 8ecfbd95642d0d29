// SPDX-License-Identifier: Apache-2.0
// The recorded graph of a kernel body, computed operation by operation in double precision, as the vocabulary of
// kernels/ops defines the operations.
#pragma once
#include <complex>
#include <functional>
#include <map>

#include "kernels/generator/body.h"

using number = std::complex<double>;

// Two lanes tell apart what belongs to one lane and what moves between lanes.
constexpr int graph_lanes = 2;
struct graph_vector {
    number lane[graph_lanes];
};

using graph_source = std::function<graph_vector(int slot)>;

// The outputs by their slots.
std::map<int, graph_vector> interpret(const generator::body& b, const graph_source& load, const graph_source& twiddle);
