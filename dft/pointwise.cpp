// SPDX-License-Identifier: Apache-2.0
#include "dft/pointwise.h"

#include "kernels/ops/complex4.h"

namespace {

struct complex_number {
    float re, im;
};

complex_number mul(complex_number a, complex_number b) {
    return {__builtin_fmaf(-a.im, b.im, a.re * b.re), __builtin_fmaf(a.im, b.re, a.re * b.im)};
}
complex_number swap_parts(complex_number a) { return {a.im, a.re}; }
complex_number conjugate(complex_number a) { return {a.re, -a.im}; }
complex4 conjugate(complex4 a) { return mul_parts(a, pairs_of(1, -1)); }

// `product` is given for one number and for four at a time.
template <class Product>
void for_each(Product product, const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
              int64_t b_stride, int64_t out_stride) {
    uint64_t i = 0;
    if (a_stride == 1 && b_stride == 1 && out_stride == 1)
        for (; i + 4 <= count; i += 4) store4(out + 2 * i, product(load4(a + 2 * i), load4(b + 2 * i)));
    for (; i < count; ++i) {
        const float* x = a + 2 * static_cast<int64_t>(i) * a_stride;
        const float* y = b + 2 * static_cast<int64_t>(i) * b_stride;
        float* z = out + 2 * static_cast<int64_t>(i) * out_stride;
        const complex_number r = product(complex_number{x[0], x[1]}, complex_number{y[0], y[1]});
        z[0] = r.re;
        z[1] = r.im;
    }
}

}  // namespace

void pointwise_multiply(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride, int64_t b_stride,
                        int64_t out_stride) {
    for_each([](auto x, auto y) { return mul(x, y); }, a, b, out, count, a_stride, b_stride, out_stride);
}

void pointwise_multiply_swap(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
                             int64_t b_stride, int64_t out_stride) {
    for_each([](auto x, auto y) { return swap_parts(mul(x, y)); }, a, b, out, count, a_stride, b_stride, out_stride);
}

void pointwise_swap_multiply(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
                             int64_t b_stride, int64_t out_stride) {
    for_each([](auto x, auto y) { return mul(swap_parts(x), y); }, a, b, out, count, a_stride, b_stride, out_stride);
}

void pointwise_multiply_conj(const float* a, const float* b, float* out, uint64_t count, int64_t a_stride,
                             int64_t b_stride, int64_t out_stride) {
    for_each([](auto x, auto y) { return conjugate(mul(x, y)); }, a, b, out, count, a_stride, b_stride, out_stride);
}
