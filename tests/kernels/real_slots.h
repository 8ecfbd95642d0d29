// SPDX-License-Identifier: Apache-2.0
// What a load or a store of a body of real data moves, lane by lane.
#pragma once
#include <array>

#include "kernels/generator/body.h"
#include "kernels/generator/forms.h"

// Number `number` of a row: element j of a sequence is j; of a spectrum, coefficient k has its real part in 2 k and its
// imaginary part in 2 k + 1. -1 for a lane that moves nothing.
struct moved_number {
    int row = 0;
    int number = -1;
};
using moved_numbers = std::array<moved_number, 4>;

moved_numbers loaded(const generator::form& f, int size, int slot);
moved_numbers stored(const generator::form& f, int size, int slot);
