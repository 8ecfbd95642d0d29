// SPDX-License-Identifier: Apache-2.0
// Products of complex arrays, element by element. Strides count complex elements. `out` may be `a`.
#pragma once
#include <cstdint>

// out = a b
void pointwise_multiply(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride, int64_t b_stride,
                        int64_t out_stride);
// out = a b with real and imaginary parts exchanged
void pointwise_multiply_swap(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
                             int64_t b_stride, int64_t out_stride);
// out = a' b, a' being a with real and imaginary parts exchanged
void pointwise_swap_multiply(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
                             int64_t b_stride, int64_t out_stride);
// out = conj(a b)
void pointwise_multiply_conj(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
                             int64_t b_stride, int64_t out_stride);
