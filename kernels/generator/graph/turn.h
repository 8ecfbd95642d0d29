// SPDX-License-Identifier: Apache-2.0
// Exact angles and the exact numbers that formulas multiply by: nothing is rounded before it is printed, and equal
// numbers are found equal without a tolerance.
#pragma once
#include <array>
#include <cstdint>

namespace generator {

// A fraction of a whole turn.
struct turn {
    int64_t num, den;
    bool operator==(const turn&) const = default;
};

// A fraction times cosines of angles between 0 and a quarter turn.
class exact {
public:
    exact(int64_t num, int64_t den = 1);

    long double value() const;
    bool is_zero() const { return num_ == 0; }
    exact operator-() const;
    exact magnitude() const { return negative_ ? -*this : *this; }
    bool is_negative() const { return negative_; }
    bool operator==(const exact& other) const;
    friend exact operator*(const exact& a, const exact& b);

    friend exact cosine(turn angle);
    friend exact sine(turn angle);

private:
    static exact cosine_of_acute(turn angle);
    void times_cosine(turn angle);
    void times_fraction(int64_t num, int64_t den);

    bool negative_;  // of a zero too, as in floating point
    int64_t num_, den_;
    int count_ = 0;
    std::array<turn, 6> cosines_{};  // in rising order
};

exact cosine(turn angle);
exact sine(turn angle);

inline const exact half{1, 2};

}  // namespace generator
