// SPDX-License-Identifier: Apache-2.0
// What the tests of Rader's and of Bluestein's rows share: both replace the first stage of a chain by a convolution.
#pragma once
#include "kernels/kernel_types.h"
#include "tests/dft/problems.h"

// Records that are anything but one complex transform of length n.
std::vector<fft_plan> all_but_one_complex_transform(int64_t n);

// The layouts in which the rows are tried: both strides 1, and either or both not.
std::vector<complex_problem> convolution_layouts(int64_t n);

// The only subplan transforms forward, in place at the start of the buffer, without a search of its own.
void expect_convolver(const fft_plan& plan, int64_t length);

// Records and tables of a chain for a problem, the first stage without a kernel and without a table. The tables follow
// one another without gaps; returns where they end.
using twiddle_fill = void (*)(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
const char* expect_stages(const stage_record* stages, const std::vector<uint64_t>& radices, const complex_problem& p,
                          twiddle_fill fill_contiguous_last, const char* tables);
