// SPDX-License-Identifier: Apache-2.0
// One complex transform in every lane, with twiddles or without.
#pragma once
#include "kernels/generator/bodies/recording.h"

namespace generator {

struct complex_kind {
    int size, sign;
    bool twiddled = false;       // elements 1 and up are multiplied by twiddles
    bool transposed = false;     // the two lanes are rows: vectors are loaded along the rows and transposed
    bool rows_twiddles = false;  // likewise, and multiplied before that, each row by twiddles of its own
    surroundings where{};
};
body make_complex_body(const complex_kind& kind);

// Of vectors along rows: as many complex numbers as a vector holds, from `column` of `row` on, or one of each row:
// `both` of two, in a row behind the last of more.
struct transposed_slot {
    static constexpr int both = 2;
    int row, column;
    int pack() const { return row * 64 + column; }
    static transposed_slot unpack(int slot) { return {slot / 64, slot % 64}; }
};

}  // namespace generator
