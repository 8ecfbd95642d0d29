// SPDX-License-Identifier: Apache-2.0
// What r2c and c2r of even length share: a half-length complex subplan, its table, and the team of the threaded pass.
#pragma once
#include "planner/solver.h"
#include "real/real_tables.h"

// Makes the one complex subplan of length n with unit strides that the single real transform runs.
fft_plan* make_complex_subplan(fft_plan* plan, int64_t n);

// Fills `aux` with real_half_table(m) and a mirror table behind it. False when memory is short.
bool attach_half_table(fft_plan* plan, uint64_t m,
                       void (*mirrors)(float* table, const float* half, uint64_t m) = real_mirror_table);

struct half_length_form {
    execute_function execute;
    const char* name;
};

struct half_length_forms {
    half_length_form contiguous, discrete, threaded, odd;
    void (*mirrors)(float* table, const float* half, uint64_t m);  // of an even length, behind the half table
};

// Plans one r2c or c2r: an even length by a complex subplan of half of it on the caller's arrays, or in the buffer
// where strides (or the caller) want one; an odd length by a complex subplan of its own length in the buffer.
int solve_half_length(fft_plan* plan, const half_length_forms& forms, bool wants_buffer);

// A pass over pairs (k, m - k), for k from `first` to `last`, inclusive.
using half_length_range = void (*)(const float* from, float* to, const float* table, uint64_t m, int64_t stride,
                                   uint64_t first, uint64_t last);

// Runs the range pass for all k from 1 to m / 2 on the team.
void run_threaded_pass(const fft_plan& plan, half_length_range range, const float* from, float* to);
