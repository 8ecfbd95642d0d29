// SPDX-License-Identifier: Apache-2.0
// A whole kernel as text: the loops of its form around the bodies of its size.
#pragma once
#include <string>

#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/forms/forms.h"
#include "kernels/generator/emit/text.h"

namespace generator {

std::string kernel_name(const form& f, int size, int sign);
// The parameter list of the exported function, without its name.
std::string kernel_parameters(const form& f);
// A source file with the kernels of one size in the directions that the family has.
std::string kernel_source(const form& f, int size);
// The bodies of one kernel, for tests: its loop's, and those of what stands in front of the loop and behind it.
bodies kernel_bodies(const form& f, int size, int sign);

}  // namespace generator
