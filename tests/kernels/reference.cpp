// SPDX-License-Identifier: Apache-2.0
#include "reference.h"

#include <cstdint>
#include <numbers>

namespace {

std::vector<std::complex<double>> roots(int n, int sign) {
    std::vector<std::complex<double>> w(n);
    for (int k = 0; k < n; ++k) w[k] = std::polar(1.0, sign * 2 * std::numbers::pi * k / n);
    return w;
}

// Numbers in [-0.5, 0.5); cheap, since the emulator makes every operation dear.
class uniform {
public:
    float operator()() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return float(int32_t(state_ >> 32)) * 0x1p-32f;
    }

private:
    uint64_t state_ = 1;
};

void transform(const std::vector<std::complex<double>>& x, const std::vector<std::complex<double>>& w,
               std::complex<double>* out) {
    const int n = int(x.size());
    for (int k = 0; k < n; ++k) {
        double re = 0, im = 0;
        for (int j = 0, jk = 0; j < n; ++j, jk = (jk + k) % n) {
            re += x[j].real() * w[jk].real() - x[j].imag() * w[jk].imag();
            im += x[j].real() * w[jk].imag() + x[j].imag() * w[jk].real();
        }
        out[k] = {re, im};
    }
}

}  // namespace

transform_grid::transform_grid(int radix, int sign, twiddled_rows twiddled)
    : radix_(radix), sign_(sign), in_(side * side * radix), twiddles_(side * radix), out_(in_.size()) {
    uniform next;
    for (auto& x : in_) x = {next(), next()};
    for (auto& w : twiddles_) w = std::polar(1.0f, 6.2831853f * next());
    const auto w = roots(radix, sign);
    std::vector<std::complex<double>> x(radix);
    for (int i = 0; i < side; ++i) {
        const bool with = twiddled == twiddled_rows::all || (twiddled == twiddled_rows::all_but_first && i > 0);
        for (int l = 0; l < side; ++l) {
            for (int j = 0; j < radix; ++j) {
                x[j] = in(i, j, l);
                if (with && j > 0) x[j] *= std::complex<double>(twiddle(i, j));
            }
            transform(x, w, &out_[index(i, 0, l)]);
        }
    }
}
