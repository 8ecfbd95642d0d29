// SPDX-License-Identifier: Apache-2.0
// Where the kernels of real data load and store: by the tables of offsets, or as the rows lie.
#pragma once
#include "kernels/generator/emit/print.h"
#include "kernels/generator/forms/layouts.h"

namespace generator {

// A single row, or adjacent rows in vectors: each number at its offset.
access at_offsets(const form& f);
// Four rows in lanes, any distance apart.
// At the places of one contiguous row and its spectrum.
access in_a_row(const form& f, int size);
access at_offsets_apart(const form& f);
// Parts of one row in the lanes of a vector (formulas/lanes_of_four.h): at their offsets (`anywhere`) or contiguous.
access in_lanes(real_layout layout, int size);
// Four rows in lanes that are loaded and stored whole (bodies/groups_of_four.h).
access in_groups(const form& f);

}  // namespace generator
