// SPDX-License-Identifier: Apache-2.0
// What a load or a store of a body of real data moves, lane by lane.
#pragma once
#include <array>

#include "kernels/generator/bodies/recording.h"
#include "kernels/generator/forms/forms.h"

// How the lanes and the slots of a body are to be understood.
enum class lane_use {
    rows,                   // a row in every lane, number by number
    quarters,               // one row in all lanes
    side_by_side,           // four adjacent rows, coefficients of two of them in a vector
    pairs_in_a_row,         // vectors along four rows, transposed
    half_complex_in_a_row,  // likewise, of the other storage
    whole_rows,             // as pairs in a row, with the imaginary parts of real coefficients
    unknown,
};
lane_use lane_use_of(const generator::form& f, int size, const generator::body& b);

// Number `number` of a row: element j of a sequence is j; of a spectrum, coefficient k has its real part in 2 k and its
// imaginary part in 2 k + 1. -1 for a lane that moves nothing.
struct moved_number {
    int row = 0;
    int number = -1;
};
using moved_numbers = std::array<moved_number, 4>;

moved_numbers loaded(lane_use use, int size, int slot);
moved_numbers stored(lane_use use, int size, int slot);
