// SPDX-License-Identifier: Apache-2.0
// The stages of Hermitian spectra as text (Sorensen et al. 1987). Row k of branch b stands at element k m + b.
#pragma once
#include <string>

#include "kernels/generator/forms/forms.h"
#include "kernels/generator/emit/text.h"

namespace generator {

std::string sorensen_kernel_parameters();
text sorensen_kernel_text(const form& f, int size);

}  // namespace generator
