// SPDX-License-Identifier: Apache-2.0
#include "real/half_length_passes.h"

#include "real/complex4.h"

namespace {

// Four pairs at a time, while the four at the front and the four at the back stay apart. Returns the next k.
//   front = a + conj b, back = a - conj b with a = Y[k..k+3], b = Y[m-k..m-k-3]
uint64_t r2c_post_vectors(const float* y, float* x, const float* table, uint64_t m, uint64_t k, uint64_t last) {
    const complex4 conjugate = pairs_of(1, -1), half = pairs_of(0.5f, 0.5f), half_conjugate = pairs_of(0.5f, -0.5f);
    for (; k + 3 <= last && 2 * k + 6 < m; k += 4) {
        const complex4 a = load4(y + 2 * k), b = reverse4(load4(y + 2 * (m - k - 3)));
        const complex4 s = fma_parts(a, b, conjugate), d = fms_parts(a, b, conjugate);
        const complex4 p = mul(load4(table + 2 * (k - 1)), d);
        store4(x + 2 * k, mul_parts(sub_i(s, p), half));
        store4(x + 2 * (m - k - 3), reverse4(mul_parts(add_i(s, p), half_conjugate)));
    }
    return k;
}

uint64_t c2r_pre_vectors(const float* z, float* c, const float* table, uint64_t m, uint64_t k, uint64_t last) {
    const complex4 conjugate = pairs_of(1, -1);
    for (; k + 3 <= last && 2 * k + 6 < m; k += 4) {
        const complex4 a = load4(z + 2 * k), b = reverse4(load4(z + 2 * (m - k - 3)));
        const complex4 s = fma_parts(a, b, conjugate), d = fms_parts(a, b, conjugate);
        const complex4 p = mul_conjugate(load4(table + 2 * (k - 1)), d);
        store4(c + 2 * k, add_i(s, p));
        store4(c + 2 * (m - k - 3), reverse4(mul_parts(sub_i(s, p), conjugate)));
    }
    return k;
}

}  // namespace

void r2c_post_ends(const float* y, float* x, uint64_t m, int64_t os) {
    const float re = y[0], im = y[1];
    float* const end = x + 2 * static_cast<int64_t>(m) * os;
    x[0] = re + im;
    x[1] = 0;
    end[0] = re - im;
    end[1] = 0;
}

void r2c_post_range(const float* y, float* x, const float* table, uint64_t m, int64_t os, uint64_t first,
                    uint64_t last) {
    uint64_t k = os == 1 ? r2c_post_vectors(y, x, table, m, first, last) : first;
    for (; k <= last; ++k) {
        const float *a = y + 2 * k, *b = y + 2 * (m - k), *w = table + 2 * (k - 1);
        const float s = a[0] + b[0], d = a[1] - b[1], sum = a[1] + b[1], difference = b[0] - a[0];
        const float p = __builtin_fmaf(w[0], sum, -(w[1] * difference));
        const float q = __builtin_fmaf(w[1], sum, w[0] * difference);
        float* const front = x + 2 * static_cast<int64_t>(k) * os;
        float* const back = x + 2 * static_cast<int64_t>(m - k) * os;
        front[0] = 0.5f * (s + p);
        front[1] = 0.5f * (d + q);
        back[0] = 0.5f * (s - p);
        back[1] = 0.5f * (q - d);
    }
}

void r2c_post_pass(const float* y, float* x, const float* table, uint64_t m, int64_t os) {
    r2c_post_ends(y, x, m, os);
    r2c_post_range(y, x, table, m, os, 1, m >> 1);
}

void c2r_pre_ends(const float* z, float* c, uint64_t m, int64_t is) {
    const float first = z[0], end = z[2 * static_cast<int64_t>(m) * is];
    c[0] = first + end;
    c[1] = first - end;
}

void c2r_pre_range(const float* z, float* c, const float* table, uint64_t m, int64_t is, uint64_t first,
                   uint64_t last) {
    uint64_t k = is == 1 ? c2r_pre_vectors(z, c, table, m, first, last) : first;
    for (; k <= last; ++k) {
        const float* const a = z + 2 * static_cast<int64_t>(k) * is;
        const float* const b = z + 2 * static_cast<int64_t>(m - k) * is;
        const float* const w = table + 2 * (k - 1);
        const float s = a[0] + b[0], d = a[1] - b[1], sum = a[1] + b[1], difference = a[0] - b[0];
        const float t = __builtin_fmaf(sum, w[0], -(difference * w[1]));
        const float u = __builtin_fmaf(difference, w[0], sum * w[1]);
        c[2 * k] = s - t;
        c[2 * k + 1] = d + u;
        c[2 * (m - k)] = s + t;
        c[2 * (m - k) + 1] = u - d;
    }
}

void c2r_pre_pass(const float* z, float* c, const float* table, uint64_t m, int64_t is) {
    c2r_pre_ends(z, c, m, is);
    c2r_pre_range(z, c, table, m, is, 1, m >> 1);
}
