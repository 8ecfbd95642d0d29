// SPDX-License-Identifier: Apache-2.0
// What a kernel of real data computes for a row, or for a row in every lane.
#pragma once
#include "kernels/generator/bodies/body.h"
#include "kernels/generator/forms/forms.h"

namespace generator {

// Slots: element j of the real side is j; of the spectrum side, the real part of coefficient k is 2 k and its imaginary
// part 2 k + 1. All loads stand before the first store. With `everywhere`, each constant has a register of its own.
body make_real_body(const form& f, int size, bool everywhere);

}  // namespace generator
