// SPDX-License-Identifier: Apache-2.0
// Four rows of real data in the lanes of vectors that are loaded and stored whole, which depends on how the rows lie.
// Rows that lie any other way have make_real_row_body.
#pragma once
#include "kernels/generator/bodies/recording.h"
#include "kernels/generator/forms/layouts.h"

namespace generator {

// What a load or a store moves.
enum class group_part {
    elements,        // element `first` of four adjacent rows
    coefficients,    // coefficient `first` of two adjacent rows: of rows 0 and 1, or with `row` 2 of 2 and 3
    adjacent_reals,  // the real part of coefficient `first` of four adjacent rows
    block,           // of the sequence: four floats of `row`, from float `first` on
    spectrum_block,  // of the spectrum
    spectrum_three,  // three floats
    spectrum_one,    // float `first` of all four rows
    one,             // likewise, of the sequence
    two,             // of the sequence: two floats of each of the rows `row` and `row` + 1
    spectrum_two,    // of the spectrum
    zeros,           // nothing: the numbers are zero
};

struct group_slot {
    group_part part;
    int first, row;
    int pack() const { return (int(part) * 256 + first) * 4 + row; }
    static group_slot unpack(int slot) { return {group_part(slot / 1024), slot / 4 % 256, slot % 4}; }
};

// The layout is not `anywhere`. As `pairs` and `half_complex` the size is a multiple of four.
body make_group_body(const form& f, int size, real_layout layout);

}  // namespace generator
