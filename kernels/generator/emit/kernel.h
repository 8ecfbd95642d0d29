// SPDX-License-Identifier: Apache-2.0
// A whole kernel as text: the loops of its form around the bodies of its size.
#pragma once
#include <string>

#include "kernels/generator/emit/text.h"
#include "kernels/generator/forms/forms.h"

namespace generator {

// A source file with the kernels of one size in the directions that the family has, and the pools that only they have.
text kernel_source(const form& f, int size);
// The bodies of one kernel in the order of its text: its loop's, and those of what stands in front of it and behind it.
bodies kernel_bodies(const form& f, int size, int sign);
// Why a family can't have a size; empty if it can.
std::string refusal(const form& f, int size);
// The parameter list of the exported function, without its name.
std::string kernel_parameters(const form& f);

// A kernel by its name, such as direct_contig_sve_fwd_n05, with what each pass did; sizes that the family lacks may be
// tried. Empty for a name that no family has.
std::string shown_kernel(const std::string& name);

}  // namespace generator
