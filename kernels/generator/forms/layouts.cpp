// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/forms/layouts.h"

namespace generator {

std::string condition_of(real_layout layout, const form& f, int size) {
    const std::string sequence = "a1 == a0 + 1 && s0[1] == 2 && ";
    switch (layout) {
        case real_layout::pairs:
            return sequence + "b1 == b0 + 1 && s1[1] == 2 && s2[1] == 2";
        case real_layout::half_complex:
            return sequence + "b1 == b0 + " + std::to_string(size) + " && s1[1] == 1 && s2[1] == -1";
        case real_layout::side_by_side:
            return std::string(f.sign < 0 ? "d0 == 1 && d1" : "d1 == 1 && d0") +
                   " == 2 && b1 == b0 + 1 && s2[1] == s1[1]";
        default:
            return "true";
    }
}

}  // namespace generator
