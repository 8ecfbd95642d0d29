// SPDX-License-Identifier: Apache-2.0
// A whole kernel as text: the loops of its form around the bodies of its size.
#pragma once
#include <string>

#include "kernels/generator/forms.h"

namespace generator {

std::string kernel_name(const form& f, int size, int sign);
// The parameter list of the exported function, without its name.
std::string kernel_parameters(const form& f);
// A source file with the forward and the backward kernel of one size.
std::string kernel_source(const form& f, int size);

}  // namespace generator
