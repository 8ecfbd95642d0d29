// SPDX-License-Identifier: Apache-2.0
// One real transform of size n = 4 L inside vectors of four: lane j holds the elements x[4 t + j], so that all elements
// are loaded as they lie, and the transforms of size L of all lanes are one. The roots of unity differ from lane to
// lane. Then two rows of coefficients at a time are transposed into vectors of two complex numbers, for a butterfly of
// size 4.
#pragma once
#include <functional>

#include "kernels/generator/graph/value.h"

namespace generator {

// What a load or a store moves. A number of the spectrum is 2 k, and 2 k + 1 for the imaginary part of coefficient k.
enum class lanes_part {
    elements,  // four elements from `first` on
    numbers,   // four numbers of the spectrum
    reversed,  // the same, the last number in the lowest lane
    two,       // two numbers: stored from the lower lanes, loaded into the lanes in turn
    two_reversed,
    one,  // one number: stored from the lowest lane, loaded into all
};

struct lanes_slot {
    lanes_part part;
    int first;
    int pack() const { return int(part) * 1024 + first; }
    static lanes_slot unpack(int slot) { return {lanes_part(slot / 1024), slot % 1024}; }
};

// Of the rows of coefficients 1 to L / 2 every two must be there, and the last pair ends in the middle.
constexpr bool has_lanes_of_four(int n) { return n % 16 == 0; }

struct row_in_lanes {
    std::function<value(lanes_slot)> load;
    std::function<void(lanes_slot, value)> store;
};

void real_butterfly_in_lanes(const row_in_lanes& row, int n);
void hermitian_butterfly_in_lanes(const row_in_lanes& row, int n);

}  // namespace generator
