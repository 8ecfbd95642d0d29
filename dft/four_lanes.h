// SPDX-License-Identifier: Apache-2.0
// Four transforms side by side in the lanes of vectors, by the tables of a plan of one transform or of four; or by a
// kernel that needs no tables and no working memory.
#pragma once
#include "record/fft_plan.h"

// One transform whose input or output has a stride, or four side by side.
bool can_run_in_four_lanes(const fft_plan& plan);
bool runs_by_straight_kernel(const fft_plan& plan);

// A list of stages, or a straight kernel, for four lanes, as `four_lanes_list_bytes` of storage. The plan's tables are
// lent to it.
uint64_t four_lanes_list_bytes(const fft_plan& plan);
void fill_four_lanes_list(const fft_plan& plan, void* list, int64_t is, int64_t os);

// Runs the list: lane c of input element j stands at j * is + c, that of output element j at j * os + c. The working
// memory, null where a straight kernel runs, holds two arrays of four transforms. The first may be the input, if its
// stride is 4, or likewise the output.
void execute_four_lanes(void* list, const float* in, float* out, float* working);
