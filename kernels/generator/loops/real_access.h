// SPDX-License-Identifier: Apache-2.0
// How the kernels of real data load and store: where the numbers of a row stand, by the tables of offsets or as they
// lie.
#pragma once
#include "kernels/generator/forms/forms.h"
#include "kernels/generator/emit/print.h"

namespace generator {

// Of a single row: at the offsets of the tables, or contiguous with its spectrum as pairs or half-complex.
enum class row_layout { offsets, pairs, half_complex };

// Single rows, or vectors of adjacent rows: the numbers of a row at the offsets of the tables.
access row_access(const form& f);
// Rows in lanes at any distance apart.
access apart_access(const form& f);
// Parts of one row in the lanes of a vector; see quarter_body.h.
access quarter_access(row_layout layout, int size);
// Four rows in lanes, in a layout that lies well; see rows_body.h.
access rows_access(const form& f);

}  // namespace generator
