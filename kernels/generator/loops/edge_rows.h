// SPDX-License-Identifier: Apache-2.0
// Rows 0 and L / 2 of the stages of Hermitian spectra as text: real numbers, several branches to a vector.
#pragma once
#include "kernels/generator/emit/text.h"
#include "kernels/generator/forms/forms.h"

namespace generator {

void print_row_zero(text& out, const form& f, int size);
void print_row_middle(text& out, const form& f, int size);

}  // namespace generator
