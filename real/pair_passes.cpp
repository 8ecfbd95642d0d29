// SPDX-License-Identifier: Apache-2.0
#include "real/pair_passes.h"

#include "kernels/ops/complex4.h"

#include <cstring>

namespace {
constexpr int64_t shortest_vector_half = 7;

// Four complex numbers to places `stride` floats apart; returns the place behind the last.
float* store_apart(float* p, complex4 v, int64_t stride) {
    float four[8];
    store4(four, v);
    for (int i = 0; i < 4; ++i, p += stride) memcpy(p, four + 2 * i, 2 * sizeof(float));
    return p;
}

}  // namespace

void pair_interleave(const float* row_a, const float* row_b, float* pair, int64_t n, int64_t stride) {
    int64_t j = 0;
    for (; stride == 1 && j + 8 <= n; j += 8) {
        const complex4 a = load4(row_a + j), b = load4(row_b + j);
        store4(pair + 2 * j, zip_low(a, b));
        store4(pair + 2 * j + 8, zip_high(a, b));
    }
    for (; j < n; ++j) {
        pair[2 * j] = row_a[j * stride];
        pair[2 * j + 1] = row_b[j * stride];
    }
}

void pair_deinterleave(const float* pair, float* row_a, float* row_b, int64_t n, int64_t stride) {
    int64_t j = 0;
    for (; stride == 1 && j + 8 <= n; j += 8) {
        const complex4 low = load4(pair + 2 * j), high = load4(pair + 2 * j + 8);
        store4(row_a + j, unzip_even(low, high));
        store4(row_b + j, unzip_odd(low, high));
    }
    for (; j < n; ++j) {
        row_a[j * stride] = pair[2 * j];
        row_b[j * stride] = pair[2 * j + 1];
    }
}

void pair_split_r2c(float* a, float* b, const float* y, int64_t n, int64_t os) {
    const int64_t half = n >> 1;
    a[0] = y[0];
    a[1] = 0;
    b[0] = y[1];
    b[1] = 0;
    int64_t k = 1;
    if (half >= shortest_vector_half) {
        const complex4 one_half = pairs_of(0.5f, 0.5f);
        float *next_a = a + 2 * os, *next_b = b + 2 * os;
        for (; k + 3 <= half; k += 4) {
            const complex4 front = mul_parts(load4(y + 2 * k), one_half);
            const complex4 back = mul_parts(reverse8(load4(y + 2 * (n - k - 3))), one_half);  // i conj Y[n - k] / 2
            if (os == 1) {
                store4(a + 2 * k, sub_i(front, back));
                store4(b + 2 * k, sub_i(back, front));
            } else {
                next_a = store_apart(next_a, sub_i(front, back), 2 * os);
                next_b = store_apart(next_b, sub_i(back, front), 2 * os);
            }
        }
    }
    for (; k <= half; ++k) {
        const float *front = y + 2 * k, *back = y + 2 * (n - k);
        a[2 * k * os] = 0.5f * (front[0] + back[0]);
        a[2 * k * os + 1] = 0.5f * (front[1] - back[1]);
        b[2 * k * os] = 0.5f * (front[1] + back[1]);
        b[2 * k * os + 1] = 0.5f * (back[0] - front[0]);
    }
}

void pair_merge_c2r(float* c, const float* a, const float* b, int64_t n, int64_t is) {
    const int64_t half = (n + 1) >> 1;  // the first k without a mirror image
    c[0] = a[0];
    c[1] = b[0];
    if (n % 2 == 0) {
        c[n] = a[n * is];
        c[n + 1] = b[n * is];
    }
    int64_t k = 1;
    if (is == 1 && half >= shortest_vector_half) {
        const complex4 conjugate = pairs_of(1, -1);
        for (; k + 4 <= half; k += 4) {
            const complex4 x = load4(a + 2 * k), y = load4(b + 2 * k);
            store4(c + 2 * k, add_i(x, y));
            store4(c + 2 * (n - k - 3), reverse4(mul_parts(sub_i(x, y), conjugate)));
        }
    }
    for (; k < half; ++k) {
        const float *x = a + 2 * k * is, *y = b + 2 * k * is;
        float *front = c + 2 * k, *back = c + 2 * (n - k);
        front[0] = x[0] - y[1];
        front[1] = x[1] + y[0];
        back[0] = x[0] + y[1];
        back[1] = y[0] - x[1];
    }
}
