// SPDX-License-Identifier: Apache-2.0
#include "tests/support/reference_sorensen.h"

#include <numbers>

namespace reference {

namespace {

std::vector<complex> roots_of(uint64_t n) {
    std::vector<complex> roots(n);
    for (uint64_t k = 0; k < n; ++k) roots[k] = std::polar(1.0, 2 * std::numbers::pi * double(k) / double(n));
    return roots;
}

// The whole spectrum of a branch from its stored half.
std::vector<complex> spectrum_of(const float* in, uint64_t n, uint64_t m, uint64_t b) {
    std::vector<complex> x(n);
    for (uint64_t k = 0; k <= n / 2; ++k) {
        const uint64_t e = k * m + b;
        x[k] = {in[2 * e], k == 0 || 2 * k == n ? 0 : in[2 * e + 1]};
        if (k) x[n - k] = std::conj(x[k]);
    }
    return x;
}

}  // namespace

std::vector<complex> hermitian_stage(const float* in, uint64_t m, uint64_t r, uint64_t L) {
    const uint64_t n = r * L;
    const std::vector<complex> roots = roots_of(n);
    std::vector<complex> out((L / 2 + 1) * r * m);
    for (uint64_t b = 0; b < m; ++b) {
        const std::vector<complex> x = spectrum_of(in, n, m, b);
        for (uint64_t k = 0; k <= L / 2; ++k)
            for (uint64_t j = 0; j < r; ++j) {
                double re = 0, im = 0;
                for (uint64_t q = 0; q < r; ++q) {
                    const complex a = x[k + q * L], w = roots[j * (k + q * L) % n];
                    re += a.real() * w.real() - a.imag() * w.imag();
                    im += a.real() * w.imag() + a.imag() * w.real();
                }
                out[k * m * r + j * m + b] = {re, k == 0 || 2 * k == L ? 0 : im};
            }
    }
    return out;
}

}  // namespace reference
