// SPDX-License-Identifier: Apache-2.0
// What the loops over many transforms may know of the plan of one that runs by stages, so that they needn't call it for
// each transform.
#pragma once
#include "record/fft_plan.h"

// One transform of two stages, or four of them in the lanes of vectors.
bool runs_two_stages(const fft_plan& plan);

// `count` such plans, from `in` to `out`, which advance by these steps in floats.
void execute_two_stages_each(fft_plan* plan, float* in, float* out, int64_t count, int64_t in_step, int64_t out_step);

// One transform whose input or output has a stride, or four side by side: it can run in the lanes of a vector, by the
// same tables; or by a kernel that needs no tables and no working memory.
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
