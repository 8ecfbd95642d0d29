// SPDX-License-Identifier: Apache-2.0
// Questions about a problem that several solvers ask.
#pragma once
#include "record/fft_plan.h"

// Longer arrays than this don't fit any address space; below it no size in bytes wraps.
constexpr int64_t longest_transform = int64_t{1} << 48;

inline bool is_complex_of_rank_1(const fft_plan& p) {
    return p.kind == kind_c2c && p.split != split_arrays && p.rank == 1 && p.dims[0].n <= longest_transform;
}

inline bool is_one_complex_transform(const fft_plan& p) { return is_complex_of_rank_1(p) && p.howmany_rank == 0; }

inline bool has_unit_strides(const fft_plan& p) { return p.dims[0].is == 1 && p.dims[0].os == 1; }

inline bool is_measured(const fft_plan& p) { return p.flags == plan_flag_measured; }

// False where a side that has an imaginary part lacks its array.
inline bool has_imaginary_arrays(const fft_plan& p) {
    return p.split != split_arrays || ((p.in_imag || p.kind == kind_r2c) && (p.out_imag || p.kind == kind_c2r));
}
