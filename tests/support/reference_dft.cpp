// SPDX-License-Identifier: Apache-2.0
#include "tests/support/reference_dft.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace reference {
namespace {

constexpr size_t largest_prime_by_sum = 61;

// t quarters of the n-th part of a turn, at most n
complex first_quadrant(size_t t, size_t n) {
    const double angle = 1.57079632679489661923 * double(std::min(t, n - t)) / double(n);
    return 2 * t <= n ? complex(std::cos(angle), std::sin(angle)) : complex(std::sin(angle), std::cos(angle));
}

// All roots of unity of one order.
class roots {
public:
    roots(size_t n, int sign) : values_(n) {
        for (size_t k = 0; k < n; ++k) values_[k] = root_of_unity(k, n, sign);
    }
    const complex& operator[](size_t k) const { return values_[k]; }

private:
    std::vector<complex> values_;
};

// std::complex multiplication looks after infinities, which costs more than the product.
complex times(const complex& a, const complex& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Four where that divides n, else the smallest prime factor.
size_t next_factor(size_t n) {
    if (n % 4 == 0) return 4;
    for (size_t p = 2; p * p <= n; ++p)
        if (n % p == 0) return p;
    return n;
}

std::vector<complex> bluestein(const std::vector<complex>& x, int sign);

// Transforms of length n, a divisor of the length of `w`.
class recursion {
public:
    recursion(size_t length, int sign) : length_(length), sign_(sign), w_(length, sign) {}

    void run(const complex* in, size_t stride, complex* out, size_t n) const {
        if (n == 1) {
            out[0] = in[0];
            return;
        }
        const size_t p = next_factor(n), m = n / p;
        for (size_t j = 0; j < p; ++j) run(in + j * stride, stride * p, out + j * m, m);
        for (size_t k = 0; k < m; ++k) combine(out + k, m, p, k * (length_ / n));
    }

private:
    // One butterfly of p values at distance m, after the twiddles w^(j k).
    void combine(complex* out, size_t m, size_t p, size_t k_step) const {
        if (p > largest_prime_by_sum) return combine_large(out, m, p, k_step);
        p < 8 ? combine_by_sum<8>(out, m, p, k_step) : combine_by_sum<largest_prime_by_sum>(out, m, p, k_step);
    }

    template <size_t room>  // little where that will do: all of it is zeroed
    void combine_by_sum(complex* out, size_t m, size_t p, size_t k_step) const {
        complex t[room];
        t[0] = out[0];
        for (size_t j = 1; j < p; ++j) t[j] = times(out[j * m], w_[j * k_step]);
        if (p == 4) return combine_four(out, m, t);
        for (size_t q = 0; q < p; ++q) {
            complex sum = t[0];
            for (size_t j = 1, jq = q; j < p; ++j, jq = (jq + q) % p) sum += times(t[j], w_[jq * (length_ / p)]);
            out[q * m] = sum;
        }
    }

    void combine_four(complex* out, size_t m, const complex* t) const {
        const complex sum02 = t[0] + t[2], difference02 = t[0] - t[2], sum13 = t[1] + t[3], d = t[1] - t[3];
        const complex turned = sign_ == -1 ? complex(d.imag(), -d.real()) : complex(-d.imag(), d.real());
        out[0] = sum02 + sum13;
        out[m] = difference02 + turned;
        out[2 * m] = sum02 - sum13;
        out[3 * m] = difference02 - turned;
    }

    void combine_large(complex* out, size_t m, size_t p, size_t k_step) const {
        std::vector<complex> t(p);
        for (size_t j = 0; j < p; ++j) t[j] = times(out[j * m], w_[j * k_step]);
        t = bluestein(t, sign_);
        for (size_t q = 0; q < p; ++q) out[q * m] = t[q];
    }

    size_t length_;
    int sign_;
    roots w_;
};

// j k = (j^2 + k^2 - (k - j)^2) / 2 makes the transform a convolution with the chirp exp(sign pi i k^2 / n), done by
// transforms of a power of two.
std::vector<complex> bluestein(const std::vector<complex>& x, int sign) {
    const size_t n = x.size();
    size_t m = 1;
    while (m < 2 * n - 1) m *= 2;
    const roots half_steps(2 * n, sign);
    const recursion forward(m, -1);
    std::vector<complex> a(m), b(m), a_spectrum(m), b_spectrum(m), result(n);
    const auto chirp = [&](size_t k) { return half_steps[uint64_t{k} * k % (2 * n)]; };
    for (size_t k = 0; k < n; ++k) {
        a[k] = times(x[k], chirp(k));
        b[k] = b[(m - k) % m] = std::conj(chirp(k));
    }
    forward.run(a.data(), 1, a_spectrum.data(), m);
    forward.run(b.data(), 1, b_spectrum.data(), m);
    for (size_t k = 0; k < m; ++k) a[k] = std::conj(times(a_spectrum[k], b_spectrum[k]));
    forward.run(a.data(), 1, a_spectrum.data(), m);
    for (size_t k = 0; k < n; ++k) result[k] = times(std::conj(a_spectrum[k]) / double(m), chirp(k));
    return result;
}

}  // namespace

complex root_of_unity(size_t k, size_t n, int sign) {
    if (2 * k > n) return std::conj(root_of_unity(n - k, n, sign));
    const double side = sign == -1 ? -1 : 1;
    if (4 * k > n) {  // past a right angle
        const complex w = first_quadrant(4 * k - n, n);
        return {-w.imag(), side * w.real()};
    }
    const complex w = first_quadrant(4 * k, n);
    return {w.real(), side * w.imag()};
}

std::vector<complex> dft_by_sum(const std::vector<complex>& x, int sign) {
    const size_t n = x.size();
    const roots w(n, sign);
    std::vector<complex> spectrum(n);
    for (size_t k = 0; k < n; ++k)
        for (size_t j = 0; j < n; ++j) spectrum[k] += times(x[j], w[uint64_t{j} * k % n]);
    return spectrum;
}

std::vector<complex> dft(const std::vector<complex>& x, int sign) {
    std::vector<complex> spectrum(x.size());
    if (!x.empty()) recursion(x.size(), sign).run(x.data(), 1, spectrum.data(), x.size());
    return spectrum;
}

std::vector<complex> other_direction(const std::vector<complex>& spectrum) {
    std::vector<complex> reversed = spectrum;
    if (reversed.size() > 2) std::reverse(reversed.begin() + 1, reversed.end());
    return reversed;
}

}  // namespace reference
