// SPDX-License-Identifier: Apache-2.0
// Exact angles: fractions of a whole turn, so that no angle is ever rounded before its cosine is taken.
#pragma once
#include <cstdint>

namespace generator {

struct turn {
    int64_t num, den;
};

// Both fold the angle into the first octant, so that mirrored angles give the same bits.
long double cosine(turn angle);
long double sine(turn angle);

}  // namespace generator
