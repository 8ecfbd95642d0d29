// SPDX-License-Identifier: Apache-2.0
#include "bench/accuracy/direct_sum.h"

#include <cmath>
#include <numbers>

namespace bench {
namespace {

// The angle of the fraction `part` / `whole` of a turn, in (-pi, pi].
double turn(long part, long whole) {
    part %= whole;
    if (2 * part > whole) part -= whole;
    return 2 * std::numbers::pi * static_cast<double>(part) / static_cast<double>(whole);
}

void complex_sum(long n, int sign, const double* in, double* out) {
    for (long k = 0; k < n; ++k) {
        double real = 0, imag = 0;
        for (long j = 0; j < n; ++j) {
            const double c = std::cos(turn(j * k, n)), s = sign * std::sin(turn(j * k, n));
            real += in[2 * j] * c - in[2 * j + 1] * s;
            imag += in[2 * j] * s + in[2 * j + 1] * c;
        }
        out[2 * k] = real;
        out[2 * k + 1] = imag;
    }
}

void real_to_complex_sum(long n, const double* in, double* out) {
    for (long k = 0; k <= n / 2; ++k) {
        out[2 * k] = out[2 * k + 1] = 0;
        for (long j = 0; j < n; ++j) {
            out[2 * k] += in[j] * std::cos(turn(j * k, n));
            out[2 * k + 1] -= in[j] * std::sin(turn(j * k, n));
        }
    }
}

// `real(k)` and `imag(k)` give the Hermitian input for k up to n / 2.
template <typename Real, typename Imag>
void complex_to_real_sum(long n, Real real, Imag imag, double* out) {
    for (long j = 0; j < n; ++j) {
        out[j] = real(0);
        for (long k = 1; k <= n / 2; ++k) {
            const bool middle = 2 * k == n;
            out[j] += (middle ? 1 : 2) * real(k) * std::cos(turn(j * k, n));
            if (!middle) out[j] -= 2 * imag(k) * std::sin(turn(j * k, n));
        }
    }
}

void half_complex_sum(long n, const double* in, double* out) {
    for (long k = 0; k < n; ++k) {
        const bool real = 2 * k <= n;
        const long coefficient = real ? k : n - k;
        out[k] = 0;
        for (long j = 0; j < n; ++j) {
            const double angle = turn(j * coefficient, n);
            out[k] += in[j] * (real ? std::cos(angle) : -std::sin(angle));
        }
    }
}

void hartley_sum(long n, const double* in, double* out) {
    for (long k = 0; k < n; ++k) {
        out[k] = 0;
        for (long j = 0; j < n; ++j) out[k] += in[j] * (std::cos(turn(j * k, n)) + std::sin(turn(j * k, n)));
    }
}

// The cosine and sine kinds: twice the sum of x[j] f(pi (2j + p)(2k + q) / 4N), where elements on a point of symmetry
// count once.
struct trigonometric_kind {
    int p, q, extra;  // N is n + extra
    bool sine;
    bool first_once, last_once;  // whether such a point is the first, the last element
};
constexpr trigonometric_kind trigonometric_kinds[] = {
    {0, 0, -1, false, true, true},   // redft00
    {0, 1, 0, false, true, false},   // redft01
    {1, 0, 0, false, false, false},  // redft10
    {1, 1, 0, false, false, false},  // redft11
    {2, 2, 1, true, false, false},   // rodft00
    {2, 1, 0, true, false, true},    // rodft01
    {1, 2, 0, true, false, false},   // rodft10
    {1, 1, 0, true, false, false},   // rodft11
};

void trigonometric_sum(long n, const trigonometric_kind& kind, const double* in, double* out) {
    for (long k = 0; k < n; ++k) {
        out[k] = 0;
        for (long j = 0; j < n; ++j) {
            const double angle = turn((2 * j + kind.p) * (2 * k + kind.q), 8 * (n + kind.extra));
            const bool once = (j == 0 && kind.first_once) || (j == n - 1 && kind.last_once);
            out[k] += (once ? 1 : 2) * in[j] * (kind.sine ? std::sin(angle) : std::cos(angle));
        }
    }
}

}  // namespace

void direct_sum(const problem& p, const double* in, double* out) {
    const long n = p.n[0];
    if (p.kind == family::c2c) return complex_sum(n, p.sign, in, out);
    if (p.kind == family::r2c) return real_to_complex_sum(n, in, out);
    if (p.kind == family::c2r)
        return complex_to_real_sum(n, [=](long k) { return in[2 * k]; }, [=](long k) { return in[2 * k + 1]; }, out);
    switch (p.r2r_kinds[0]) {
        case 0:
            return half_complex_sum(n, in, out);
        case 1:
            return complex_to_real_sum(n, [=](long k) { return in[k]; }, [=](long k) { return in[n - k]; }, out);
        case 2:
            return hartley_sum(n, in, out);
        default:
            return trigonometric_sum(n, trigonometric_kinds[p.r2r_kinds[0] - 3], in, out);
    }
}

}  // namespace bench
