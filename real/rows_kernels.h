// SPDX-License-Identifier: Apache-2.0
// Batches of short contiguous real rows: four of them in the lanes of vectors that are loaded and stored along the
// rows. What a solver tells of its kernels stays as it is in `aux`: each length has an execute function that knows its
// rows kernel.
#pragma once
#include <cstddef>
#include <utility>

#include "kernels/real_kernels.h"
#include "planner/solver.h"

constexpr size_t rows_kernel_lengths = 32;
constexpr int64_t rows_in_group = 4;

inline bool has_rows_kernel(const fft_plan& p) {
    const fft_dim d = p.dims[0];
    if (p.howmany[0].n < rows_in_group) return false;
    if (d.is != 1 || d.os != 1 || d.n < 1 || d.n > static_cast<int64_t>(rows_kernel_lengths)) return false;
    return (p.kind == kind_r2c ? r2c_rows_fwd : c2r_rows_bwd)[d.n - 1] != nullptr;
}

// Floats between rows.
inline int64_t in_row_distance(const fft_plan& p) { return p.howmany[0].is * (p.kind == kind_c2r ? 2 : 1); }
inline int64_t out_row_distance(const fft_plan& p) { return p.howmany[0].os * (p.kind == kind_r2c ? 2 : 1); }

template <uint32_t kind, size_t n>
inline void run_rows_kernel(const fft_plan& p, float* in, float* out, int64_t count) {
    const real_kernel kernel = (kind == kind_r2c ? r2c_rows_fwd : c2r_rows_bwd)[n - 1];
    float *const reals = kind == kind_r2c ? in : out, *const spectrum = kind == kind_r2c ? out : in;
    kernel(reals, nullptr, spectrum, nullptr, nullptr, nullptr, nullptr, count, in_row_distance(p),
           out_row_distance(p));
}

template <uint32_t kind, size_t n>
void execute_rows(fft_plan* plan, float* in, float* out) {
    run_rows_kernel<kind, n>(*plan, in, out, plan->howmany[0].n);
}

// A count that is no multiple of four: the last group begins inside the one before. In place its rows are overwritten
// by then, and those that are left run by subplan `single`.
template <uint32_t kind, size_t n, int single>
void execute_rows_tail(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    const int64_t in_step = in_row_distance(*plan), out_step = out_row_distance(*plan), count = plan->howmany[0].n;
    run_rows_kernel<kind, n>(*plan, in, out, count);
    if (in != out) {
        const int64_t last = count - rows_in_group;
        return run_rows_kernel<kind, n>(*plan, in + last * in_step, out + last * out_step, rows_in_group);
    }
    fft_plan* const row = plan->subplans[single];
    for (int64_t i = count / rows_in_group * rows_in_group; i < count; ++i)
        row->execute(row, in + i * in_step, out + i * out_step);
}

struct rows_functions {
    execute_function of[rows_kernel_lengths];
};
template <uint32_t kind, size_t... i>
constexpr rows_functions functions_for_groups(std::index_sequence<i...>) {
    return {{execute_rows<kind, i + 1>...}};
}
template <uint32_t kind, int single, size_t... i>
constexpr rows_functions functions_for_any_count(std::index_sequence<i...>) {
    return {{execute_rows_tail<kind, i + 1, single>...}};
}

// Of a plan that has a rows kernel, and a group or more of rows.
template <uint32_t kind, int single>
inline execute_function rows_function(const fft_plan& p) {
    static constexpr auto lengths = std::make_index_sequence<rows_kernel_lengths>();
    static constexpr rows_functions groups = functions_for_groups<kind>(lengths);
    static constexpr rows_functions any_count = functions_for_any_count<kind, single>(lengths);
    return (p.howmany[0].n % rows_in_group == 0 ? groups : any_count).of[p.dims[0].n - 1];
}
