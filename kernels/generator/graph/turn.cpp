// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/turn.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <numeric>

namespace generator {

namespace {

// Angles are folded into the first octant before they are rounded, so that mirrored angles give the same bits.
long double rounded_cosine(turn acute) {
    const int64_t t =
        8 * acute.num > acute.den ? acute.den - 4 * acute.num : 4 * acute.num;  // in 1 / (4 den) of a turn
    const long double a = 2 * std::numbers::pi_v<long double> * t / (4 * acute.den);
    return 8 * acute.num > acute.den ? std::sin(a) : std::cos(a);
}

// An angle as full quarters and the rest of less than a quarter.
struct in_quadrant {
    int64_t quarters;
    turn rest, complement;  // to a quarter
};
in_quadrant split(turn a) {
    const int64_t num = 4 * ((a.num % a.den + a.den) % a.den), q = num / a.den;
    return {q, {num - q * a.den, 4 * a.den}, {a.den - (num - q * a.den), 4 * a.den}};
}

}  // namespace

exact::exact(int64_t num, int64_t den) : negative_(num < 0), num_(std::abs(num)), den_(den) {}

void exact::times_fraction(int64_t num, int64_t den) {
    num_ *= num, den_ *= den;
    const int64_t common = std::gcd(num_, den_);
    num_ /= common, den_ /= common;
    if (num_ == 0) count_ = 0;
}

// Squares of sqrt(1 / 2) and sqrt(3 / 4) are fractions.
void exact::times_cosine(turn angle) {
    const auto end = cosines_.begin() + count_, known = std::find(cosines_.begin(), end, angle);
    if (known != end && (angle == turn{1, 8} || angle == turn{1, 12})) {
        std::copy(known + 1, end, known);
        --count_;
        return times_fraction(angle.den == 8 ? 1 : 3, angle.den == 8 ? 2 : 4);
    }
    if (count_ == int(cosines_.size())) std::fputs("generator: a product of too many cosines\n", stderr), std::abort();
    const auto larger = [](turn a, turn b) { return a.num * b.den < b.num * a.den; };
    const auto place = std::upper_bound(cosines_.begin(), end, angle, larger);
    std::copy_backward(place, end, end + 1);
    *place = angle;
    ++count_;
}

long double exact::value() const {
    long double v = 1;
    for (int i = 0; i < count_; ++i) v *= rounded_cosine(cosines_[i]);
    v = v * num_ / den_;
    return negative_ ? -v : v;
}

exact exact::operator-() const {
    exact x = *this;
    x.negative_ = !negative_;
    return x;
}

bool exact::operator==(const exact& b) const {
    return num_ == b.num_ &&
           (num_ == 0 || (negative_ == b.negative_ && den_ == b.den_ && count_ == b.count_ &&
                          std::equal(cosines_.begin(), cosines_.begin() + count_, b.cosines_.begin())));
}

exact operator*(const exact& a, const exact& b) {
    exact x = a;
    x.negative_ = a.negative_ != b.negative_;
    x.times_fraction(b.num_, b.den_);
    for (int i = 0; i < b.count_ && x.num_ != 0; ++i) x.times_cosine(b.cosines_[i]);
    return x;
}

exact exact::cosine_of_acute(turn a) {
    if (a.num == 0) return 1;
    const int64_t common = std::gcd(a.num, a.den);
    a = {a.num / common, a.den / common};
    if (a == turn{1, 4}) return 0;
    if (a == turn{1, 6}) return half;
    exact x = 1;
    x.times_cosine(a);
    return x;
}

exact cosine(turn angle) {
    const auto [quarters, rest, complement] = split(angle);
    const exact x = exact::cosine_of_acute(quarters % 2 ? complement : rest);
    return quarters == 1 || quarters == 2 ? -x : x;
}

exact sine(turn angle) {
    const auto [quarters, rest, complement] = split(angle);
    const exact x = exact::cosine_of_acute(quarters % 2 ? rest : complement);
    return quarters >= 2 ? -x : x;
}

}  // namespace generator
