// SPDX-License-Identifier: Apache-2.0
// What a kernel of real data computes for a row, or for a row in every lane.
#pragma once
#include "kernels/generator/bodies/recording.h"
#include "kernels/generator/forms/forms.h"

namespace generator {

// Slots: element j of the real side is j; of the spectrum side, the real part of coefficient k is 2 k and its imaginary
// part 2 k + 1; number k of a Hartley spectrum is k. All loads stand before the first store. With `everywhere`, each
// constant has a register of its own.
body make_real_row_body(const form& f, int size, bool everywhere);

// One row in the four lanes of its vectors: see formulas/lanes_of_four.h, which tells the slots.
body make_lanes_body(int size, int sign);

}  // namespace generator
