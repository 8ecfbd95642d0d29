// SPDX-License-Identifier: Apache-2.0
// Real and Hermitian transforms at odd multiples of half the frequency step.
#include "kernels/generator/formulas/real_butterflies.h"

#include "kernels/generator/formulas/butterflies.h"

namespace generator {

// Odd sizes: exp(-pi i j (2 q + 1) / n) = (-1)^j exp(-2 pi i j p / n) with p = q - (n - 1) / 2. Even sizes, h = n / 2:
// the even q = 2 p are the transform of size h of (x[j] - i x[j + h]) exp(-pi i j / n), the odd ones their conjugates.
split_values odd_real_butterfly(const values& x) {
    const int n = int(x.size()), h = n / 2;
    split_values out((n + 1) / 2);
    if (n % 2) {
        values alternating;
        for (int j = 0; j < n; ++j) alternating.push_back(j % 2 ? -x[j] : x[j]);
        const split_values y = real_butterfly(alternating);
        out[h].re = y[0].re;
        for (int q = 0; q < h; ++q) out[q] = conjugate(y[h - q]);
        return out;
    }
    split_values z;
    for (int j = 0; j < h; ++j) z.push_back(times_root(split_value{x[j], -x[j + h]}, {-j, 2 * n}));
    const split_values y = h == 1 ? z : butterfly(z, -1);
    for (int p = 0; p < h; ++p) out[2 * p < h ? 2 * p : n - 1 - 2 * p] = 2 * p < h ? y[p] : conjugate(y[p]);
    return out;
}

values odd_hermitian_butterfly(const split_values& spectrum, int n) {
    const int h = n / 2;
    values out(n);
    if (n % 2) {
        split_values turned(h + 1);
        turned[0].re = spectrum[h].re;
        for (int p = 1; p <= h; ++p) turned[p] = conjugate(spectrum[h - p]);
        const values y = hermitian_butterfly(turned, n);
        for (int j = 0; j < n; ++j) out[j] = j % 2 ? -y[j] : y[j];
        return out;
    }
    split_values z;
    for (int p = 0; p < h; ++p) z.push_back(2 * p < h ? spectrum[2 * p] : conjugate(spectrum[n - 1 - 2 * p]));
    const split_values y = h == 1 ? z : butterfly(z, +1);
    for (int j = 0; j < h; ++j) {
        const split_value turned = 2 * times_root(y[j], {j, 2 * n});
        out[j] = turned.re;
        out[j + h] = -turned.im;
    }
    return out;
}

}  // namespace generator
