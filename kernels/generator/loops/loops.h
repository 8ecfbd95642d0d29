// SPDX-License-Identifier: Apache-2.0
// The loops of each shape: they say how a form loads, stores and steps, and nothing about the butterfly.
#pragma once
#include <functional>

#include "kernels/generator/emit/print.h"
#include "kernels/generator/forms/forms.h"

namespace generator {

// All that stands between the braces of a kernel.
using loop_printer = void (*)(text& out, const form& f, int size, int sign);
loop_printer loop_of(shape s);

void print_single(text& out, const form& f, int size, int sign);  // direct, many, assemble
void print_rows(text& out, const form& f, int size, int sign);
void print_first_stage(text& out, const form& f, int size, int sign);
void print_other_stage(text& out, const form& f, int size, int sign);
void print_last_stage(text& out, const form& f, int size, int sign);
void print_real(text& out, const form& f, int size, int sign);
void print_hermitian_first(text& out, const form& f, int size, int sign);
void print_hermitian_other(text& out, const form& f, int size, int sign);
void print_hermitian_last(text& out, const form& f, int size, int sign);

// A row of adjacent numbers, `length` floats, in whole vectors of two or four: what is left over goes one by one, or,
// where vectors have masks, stays in the last vector. `constants` prints what stands in front of a loop, `turn` a turn
// of it from float l on; it is told the mask that loads and stores begin with.
void print_along(text& out, const vectors& v, const std::string& length, const std::function<void()>& constants,
                 const std::function<void(const std::string& mask)>& turn);

// Where a vector of a row begins, the second row being `base`_second.
std::string row_address(const std::string& base, int slot, int size);

// Twiddles of a row stay in registers while there are enough; else a replicating load costs what a spill would.
constexpr bool are_twiddles_held(int size) { return size <= 10; }
// The constants of a row, with its twiddles where they are held.
void print_row_constants(text& out, const body& b, int size);

// Rows 0 and L / 2 of the stages of Hermitian spectra as text: real numbers, several branches to a vector.
void print_row_zero(text& out, const form& f, int size);
void print_row_middle(text& out, const form& f, int size);

}  // namespace generator
