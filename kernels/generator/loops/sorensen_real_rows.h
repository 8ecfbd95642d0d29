// SPDX-License-Identifier: Apache-2.0
// Rows 0 and L / 2 of the stages of Hermitian spectra as text: real numbers, several branches to a vector.
#pragma once
#include <vector>

#include "kernels/generator/forms/forms.h"
#include "kernels/generator/loops/real_loops.h"
#include "kernels/generator/emit/text.h"

namespace generator {

void print_row_zero(text& out, const form& f, int size);
void print_row_middle(text& out, const form& f, int size);
// The constants of these rows. The other rows share the pools of the complex kernels.
std::vector<named_pool> sorensen_pools(const form& f, int size);

}  // namespace generator
