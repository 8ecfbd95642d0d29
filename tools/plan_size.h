// SPDX-License-Identifier: Apache-2.0
// What a plan costs, summed over its tree.
#pragma once
#include "record/fft_plan.h"

// Bytes that the plan holds until it is destroyed: records, buffers and tables of its own.
uint64_t plan_bytes(const fft_plan& plan);

// Bytes of working storage that an execution brings which can't use the plan's own.
uint64_t execution_bytes(const fft_plan& plan);

// Operations of the transform by the usual count: 5 N log2 n, n points in each of the transforms, N in all of them;
// half of that for real data, 0 for movements of data.
double plan_operations(const fft_plan& plan);
