// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "shim/problem.h"

// All elements of a problem's input into compact row-major storage, batch first; complex numbers interleaved.
// `imag` is null unless the problem is split.
void gather(const problem& p, const float* in, const float* imag, float* compact);

// All elements of compact storage to a problem's output.
void scatter(const problem& p, const float* compact, float* out, float* imag);
