// SPDX-License-Identifier: Apache-2.0
// One short contiguous row of real data: the execute function of each length is a call of its kernel, whose addresses
// are in its code. What the solver tells of its kernel stays as it is in `aux`, for rows that lie otherwise.
#pragma once
#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

#include "kernels/real_kernels.h"
#include "planner/solver.h"
#include "real/half_length.h"

constexpr size_t short_lengths = 7;  // of these; half-complex and Hartley rows have no longer ones
constexpr size_t alone_lengths[] = {2, 3, 4, 5, 7, 8, 16, 32, 64, 128, 256};

template <const direct_contig_kernel* kernels, size_t n>
void execute_alone(fft_plan*, float* in, float* out) {
    kernels[n - 1](out, in, nullptr, nullptr);
}
// Coefficients 0 and n / 2 are real.
template <const direct_contig_kernel* kernels, size_t n>
void execute_alone_to_pairs(fft_plan*, float* in, float* out) {
    kernels[n - 1](out, in, nullptr, nullptr);
    out[1] = 0;
    if (n % 2 == 0) out[n + 1] = 0;
}

// The function of each length that has a kernel, or null.
template <const direct_contig_kernel* kernels, bool to_pairs, size_t... i>
inline execute_function alone_function(const fft_plan& p, std::index_sequence<i...>) {
    execute_function found = nullptr;
    const auto offer = [&]<size_t n>(std::integral_constant<size_t, n>) {
        if (p.dims[0].n != int64_t(n) || !kernels[n - 1]) return;
        found = to_pairs ? execute_alone_to_pairs<kernels, n> : execute_alone<kernels, n>;
    };
    (offer(std::integral_constant<size_t, alone_lengths[i]>()), ...);
    return found;
}

// Has an accepted plan of one contiguous row run the function of its length, where there is one.
template <const direct_contig_kernel* kernels, bool to_pairs = false, size_t lengths = std::size(alone_lengths)>
inline int run_alone(fft_plan* plan, int64_t count = 1) {
    if (count != 1 || !has_unit_strides(*plan)) return accepted;
    const execute_function alone = alone_function<kernels, to_pairs>(*plan, std::make_index_sequence<lengths>());
    if (!alone) return accepted;
    plan->execute = alone;
    plan->runs = runs_row_kernel;
    return accepted;
}
template <const direct_contig_kernel* kernels>
inline int run_short_alone(fft_plan* plan, int64_t count) {
    return run_alone<kernels, false, short_lengths>(plan, count);
}
