// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/split_value.h"

namespace generator {

split_value rotated(split_value a, int quarters) {
    for (int i = (quarters % 4 + 4) % 4; i > 0; --i) a = times_i(a);
    return a;
}

// As for whole complex numbers: eighths of a turn cost one rotated addition.
split_value times_root(split_value a, turn angle) {
    const int64_t den = angle.den, num = ((angle.num % den) + den) % den;
    if (4 * num % den == 0) return rotated(a, int(4 * num / den));
    if (8 * num % den == 0) {
        const int64_t eighth = 8 * num / den;
        return cosine({1, 8}) * rotated(a + times_i(a), int(eighth / 2));
    }
    const exact c = cosine({num, den}), s = sine({num, den});
    return {c * a.re - s * a.im, c * a.im + s * a.re};
}

}  // namespace generator
