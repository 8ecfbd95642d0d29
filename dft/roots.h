// SPDX-License-Identifier: Apache-2.0
// Roots of unity: one, an arithmetic progression of them, or all of a circle. All three give the same bits.
#pragma once
#include <cstdint>

// The direction in which a table turns: a plan whose sign isn't -1 counts as backward.
constexpr int64_t turn_of_sign(int64_t sign) { return sign == -1 ? -1 : 1; }

// Stores exp(2 pi i k / n) as (real, imaginary). Angles are folded into the first octant, so that multiples of an
// eighth of a turn are exact in their symmetry.
void twiddle_unit(int64_t k, int64_t n, float* result);

// The roots of `first`, `first` + step, ... against n, `count` of them, each `distance` entries behind the one before.
void twiddle_progression(int64_t first, int64_t step, int64_t n, uint64_t count, float* to, uint64_t distance = 1);

// exp(2 pi i sign k L / n) for k below n / L, where L divides n. An eighth of the circle is computed (a quarter or half
// where n / L has too few factors of 2), the rest follows by symmetry. Circles that are too long to be kept beside the
// tables that are made from them, or that there is no memory for, compute each root when it is asked for.
class root_circle {
public:
    root_circle(uint64_t n, uint64_t L, int64_t sign);
    ~root_circle();
    root_circle(const root_circle&) = delete;
    root_circle& operator=(const root_circle&) = delete;

    void take(int64_t k, float* to) const {
        if (!roots_) return twiddle_unit(step_ * k, n_, to);
        to[0] = roots_[2 * k];
        to[1] = roots_[2 * k + 1];
    }
    // The roots of i first, i (first + 1), ... below i `end`, all on the circle, each `distance` entries behind the one
    // before.
    void take_row(int64_t i, int64_t first, int64_t end, float* to, int64_t distance) const;
    // The same of i to i + 3, side by side.
    void take_four_rows(int64_t i, int64_t first, int64_t end, float* to) const;

private:
    static constexpr int64_t few = 512, most = int64_t{1} << 20;

    int64_t n_, step_;
    float* roots_;
    float few_roots_[2 * (few + few / 2 + 8)];
};
