// SPDX-License-Identifier: Apache-2.0
// The files that tie the kernels together, derived from the forms table.
#pragma once
#include <string>

namespace generator {

std::string declarations_text();   // every kernel and every constant pool
std::string tables_header_text();  // <family>_fwd and <family>_bwd, 64 pointers each
std::string tables_text();
std::string lists_text();  // the short lists that solvers search
std::string pools_text();
std::string registry_text();  // all tables by name, for tests and benchmarks

}  // namespace generator
