// SPDX-License-Identifier: Apache-2.0
// `aux` of the solvers whose kernel works on real data: the kernel, and the offsets in floats at which it finds its
// elements, so that it never multiplies an index by a stride.
#pragma once
#include "kernels/real_kernels.h"
#include "planner/solver.h"

#include <cstddef>

// Complex spectrum. For c2r the first table is that of the output, the other two are those of the input.
struct r2c_direct_aux {
    int64_t* in_offsets;      // pair i of reals at 2 i strides
    int64_t* out_offsets_re;  // coefficient k at 2 k strides, from the first real part
    int64_t* out_offsets_im;  // the same, from the first imaginary part
    uint64_t n;
    real_kernel kernel;
};
static_assert(sizeof(r2c_direct_aux) == 40);

// Half-complex spectrum.
struct hc_direct_aux {
    uint64_t n;
    uint64_t n_stride;  // n strides of the spectrum: where the imaginary parts are counted back from
    real_kernel kernel;

    int64_t* offsets(int which) { return reinterpret_cast<int64_t*>(this + 1) + which * n; }
};
static_assert(sizeof(hc_direct_aux) == 24);

struct redft00_direct_aux {
    uint64_t n;
    redft00_kernel kernel;

    int64_t* offsets(int which) { return reinterpret_cast<int64_t*>(this + 1) + which * n; }
};
static_assert(sizeof(redft00_direct_aux) == 16);

inline void fill_offsets(int64_t* offsets, int64_t n, int64_t step) {
    for (int64_t i = 0; i < n; ++i) offsets[i] = i * step;
}

// The stride of the reals and that of the spectrum, each in elements of its own side.
inline bool attach_r2c_direct_aux(fft_plan* plan, real_kernel kernel, int64_t real_stride, int64_t complex_stride) {
    const int64_t n = plan->dims[0].n;
    if (!attach_aux(plan, sizeof(r2c_direct_aux) + 24 * n)) return false;
    auto* const aux = static_cast<r2c_direct_aux*>(plan->aux);
    int64_t* const tables = reinterpret_cast<int64_t*>(aux + 1);
    *aux = {tables, tables + n, tables + 2 * n, static_cast<uint64_t>(n), kernel};
    fill_offsets(aux->in_offsets, n, 2 * real_stride);
    fill_offsets(aux->out_offsets_re, n, 2 * complex_stride);
    fill_offsets(aux->out_offsets_im, n, 2 * complex_stride);
    return true;
}

inline bool attach_hc_direct_aux(fft_plan* plan, real_kernel kernel, int64_t real_stride, int64_t spectrum_stride) {
    const int64_t n = plan->dims[0].n;
    if (!attach_aux(plan, 24 * (n + 1))) return false;
    auto* const aux = static_cast<hc_direct_aux*>(plan->aux);
    *aux = {static_cast<uint64_t>(n), static_cast<uint64_t>(n * spectrum_stride), kernel};
    fill_offsets(aux->offsets(0), n, 2 * real_stride);
    fill_offsets(aux->offsets(1), n, spectrum_stride);
    fill_offsets(aux->offsets(2), n, -spectrum_stride);
    return true;
}

inline bool attach_redft00_direct_aux(fft_plan* plan, redft00_kernel kernel) {
    const fft_dim dim = plan->dims[0];
    if (!attach_aux(plan, 16 * (dim.n + 1))) return false;
    auto* const aux = static_cast<redft00_direct_aux*>(plan->aux);
    *aux = {static_cast<uint64_t>(dim.n), kernel};
    fill_offsets(aux->offsets(0), dim.n, dim.is);
    fill_offsets(aux->offsets(1), dim.n, dim.os);
    return true;
}

// The kernel of a size in one of the short lists, or null.
template <class row>
auto kernel_of_size(const row* list, int64_t n) -> decltype(row::kernel) {
    while (list->size != 0 && static_cast<int64_t>(list->size) != n) ++list;
    return list->kernel;
}
