// SPDX-License-Identifier: Apache-2.0
// The names of what the generator writes.
#pragma once
#include <string>

#include "kernels/generator/forms/forms.h"

namespace generator {

inline const char* direction(int sign) { return sign < 0 ? "fwd" : "bwd"; }
inline std::string numbered(int size) { return (size < 10 ? "n0" : "n") + std::to_string(size); }

inline std::string kernel_name(const form& f, int size, int sign) {
    return std::string(f.name) + "_" + direction(sign) + "_" + numbered(size);
}
// The pointer table of a family.
inline std::string table_name(const form& f, int sign) { return std::string(f.name) + "_" + direction(sign); }

// The constants of the complex kernels of a size, and those of one kernel alone, or of a part of it.
inline std::string pool_name(int size, int sign) {
    return std::string("pool_") + direction(sign) + "_" + numbered(size);
}
inline std::string pool_name(const form& f, int size, const char* part = "") {
    return std::string("pool_") + f.name + "_" + numbered(size) + part;
}

}  // namespace generator
