// SPDX-License-Identifier: Apache-2.0
// What kernels must compute, in double precision: a grid of transforms of one size, of which a stage of m rows and L
// columns takes the first m times L.
#pragma once
#include <complex>
#include <vector>

enum class twiddled_rows { none, all_but_first, all };

class transform_grid {
public:
    static constexpr int side = 9;  // rows and columns

    transform_grid(int radix, int sign, twiddled_rows twiddled);

    int radix() const { return radix_; }
    int sign() const { return sign_; }
    // Inputs in [-0.5, 0.5), twiddles of modulus 1, outputs from the O(n^2) sum.
    std::complex<float> in(int i, int j, int l) const { return in_[index(i, j, l)]; }
    std::complex<float> twiddle(int i, int j) const { return twiddles_[i * radix_ + j]; }
    std::complex<double> out(int i, int k, int l) const { return out_[index(i, k, l)]; }

private:
    size_t index(int i, int j, int l) const { return (size_t(i) * side + l) * radix_ + j; }

    int radix_, sign_;
    std::vector<std::complex<float>> in_, twiddles_;
    std::vector<std::complex<double>> out_;
};
