// SPDX-License-Identifier: Apache-2.0
// One complex transform in every lane, with twiddles or without.
#pragma once
#include "kernels/generator/bodies/recording.h"

namespace generator {

struct complex_kind {
    int size, sign;
    bool twiddled = false;    // elements 1 and up are multiplied by twiddles
    bool transposed = false;  // the two lanes are rows: vectors are loaded along the rows and transposed
    surroundings where{};
};
body make_complex_body(const complex_kind& kind);

// Of vectors along two rows: two complex numbers at `column` of `row`.
struct transposed_slot {
    int row, column;
    int pack() const { return row * 64 + column; }
    static transposed_slot unpack(int slot) { return {slot / 64, slot % 64}; }
};

}  // namespace generator
