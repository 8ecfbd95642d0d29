// SPDX-License-Identifier: Apache-2.0
// One kernel on its way from formula to text, for readers.
#pragma once
#include <string>

namespace generator {

// By its name, such as direct_contig_sve_fwd_n05; sizes that the family lacks may be tried. Empty for a name that no
// family has.
std::string shown_kernel(const std::string& name);

}  // namespace generator
