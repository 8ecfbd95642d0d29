// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/turn.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace generator {

namespace {

struct unit {
    long double c, s;
};

unit unit_circle(turn angle) {
    int64_t quarter = angle.den;  // angles are counted in 1 / (4 den) of a turn
    int64_t t = 4 * (angle.num % angle.den);
    if (t < 0) t += 4 * quarter;
    const int64_t q = t / quarter;
    t -= q * quarter;
    const bool mirrored = 2 * t > quarter;
    if (mirrored) t = quarter - t;
    const long double a = 2 * std::numbers::pi_v<long double> * t / (4 * quarter);
    unit u{std::cos(a), std::sin(a)};
    if (2 * t == quarter) u.s = u.c;
    if (mirrored) std::swap(u.c, u.s);
    for (int64_t i = 0; i < q; ++i) u = {-u.s, u.c};
    return u;
}

}  // namespace

long double cosine(turn angle) { return unit_circle(angle).c; }
long double sine(turn angle) { return unit_circle(angle).s; }

}  // namespace generator
