// SPDX-License-Identifier: Apache-2.0
#include "tests/support/reference_r2r.h"

#include "record/fft_plan.h"
#include "tests/support/reference_dft.h"

namespace reference {

namespace {

// cos and sin of whole numbers of 8n-ths (or, for type I, 2(n -+ 1)-ths) of a turn.
class turns {
public:
    explicit turns(int64_t period) : cosine_(period) {
        for (int64_t t = 0; t < period; ++t) cosine_[t] = root_of_unity(t, period, 1).real();
        period_ = period;
    }
    double cos(int64_t t) const { return cosine_[((t % period_) + period_) % period_]; }
    double sin(int64_t t) const { return cos(t - period_ / 4); }

private:
    std::vector<double> cosine_;
    int64_t period_;
};

int64_t period_of(uint32_t kind, int64_t n) {
    if (kind == r2r_redft00) return 4 * 2 * (n - 1);
    if (kind == r2r_rodft00) return 4 * 2 * (n + 1);
    return 8 * n;
}

// The factor of x[j] in result k. One unit of angle is the period's part of a turn.
double factor(uint32_t kind, int64_t j, int64_t k, int64_t n, const turns& a) {
    switch (kind) {
        case r2r_r2hc:
            return k <= n / 2 ? a.cos(8 * j * k) : -a.sin(8 * j * (n - k));
        case r2r_hc2r:
            if (j == 0 || 2 * j == n) return a.cos(8 * j * k);
            return j < n - j ? 2 * a.cos(8 * j * k) : -2 * a.sin(8 * (n - j) * k);
        case r2r_dht:
            return a.cos(8 * j * k) + a.sin(8 * j * k);
        case r2r_redft00:
            return (j == 0 || j == n - 1 ? 1 : 2) * a.cos(4 * j * k);
        case r2r_redft01:
            return (j == 0 ? 1 : 2) * a.cos(2 * j * (2 * k + 1));
        case r2r_redft10:
            return 2 * a.cos(2 * (2 * j + 1) * k);
        case r2r_redft11:
            return 2 * a.cos((2 * j + 1) * (2 * k + 1));
        case r2r_rodft00:
            return 2 * a.sin(4 * (j + 1) * (k + 1));
        case r2r_rodft01:
            return (j == n - 1 ? 1 : 2) * a.sin(2 * (j + 1) * (2 * k + 1));
        case r2r_rodft10:
            return 2 * a.sin(2 * (2 * j + 1) * (k + 1));
        default:
            return 2 * a.sin((2 * j + 1) * (2 * k + 1));
    }
}

}  // namespace

std::vector<double> r2r(const std::vector<double>& x, uint32_t kind) {
    const int64_t n = static_cast<int64_t>(x.size());
    const turns angles(period_of(kind, n));
    std::vector<double> y(n);
    for (int64_t k = 0; k < n; ++k)
        for (int64_t j = 0; j < n; ++j) y[k] += x[j] * factor(kind, j, k, n, angles);
    return y;
}

double r2r_inverse_factor(uint32_t kind, int64_t n) {
    if (kind <= r2r_dht) return static_cast<double>(n);
    if (kind == r2r_redft00) return 2.0 * (n - 1);
    if (kind == r2r_rodft00) return 2.0 * (n + 1);
    return 2.0 * n;
}

uint32_t r2r_inverse(uint32_t kind) {
    switch (kind) {
        case r2r_r2hc:
            return r2r_hc2r;
        case r2r_hc2r:
            return r2r_r2hc;
        case r2r_redft01:
            return r2r_redft10;
        case r2r_redft10:
            return r2r_redft01;
        case r2r_rodft01:
            return r2r_rodft10;
        case r2r_rodft10:
            return r2r_rodft01;
        default:
            return kind;
    }
}

}  // namespace reference
