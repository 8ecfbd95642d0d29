// SPDX-License-Identifier: Apache-2.0
// One real transform of size n = 4 L inside vectors of four: lane j holds the elements x[4 t + j], so that all elements
// are loaded as they lie, and the transforms of size L of all lanes are one. The roots of unity differ from lane to
// lane. Then four rows of coefficients at a time are transposed, so that lanes are adjacent coefficients, for a
// butterfly of size 4.
#pragma once
#include "kernels/generator/body.h"

namespace generator {

enum class quarter_layout {
    contig,   // elements, and coefficients as pairs, one after the other
    offsets,  // each number at its own place
};

// What a load or a store moves. A number of the spectrum is named as in make_real_body: 2 k, and 2 k + 1 for the
// imaginary part. Vectors of the contiguous layout start at the float `first`.
enum class quarter_part {
    elements,       // four elements from `first` on
    floats,         // four floats of the spectrum
    low_half,       // the two floats in the lower lanes
    lanes_rising,   // the same part of coefficients k, k + 1, ..., in `count` lanes
    lanes_falling,  // of k, k - 1, ...
    same,           // one number in all lanes
    both,           // both parts of a coefficient, in the lanes in turn, or from the two lower lanes
    lowest,         // one number, from the lowest lane
};

struct quarter_slot {
    quarter_part part;
    int first, count;
    int pack() const { return (int(part) * 256 + first) * 8 + count; }
    static quarter_slot unpack(int slot) { return {quarter_part(slot / 2048), slot / 8 % 256, slot % 8}; }
};

body make_quarter_body(int size, int sign, quarter_layout data);

}  // namespace generator
