// SPDX-License-Identifier: Apache-2.0
// What the kernels of a shape are called with. kernels/kernel_types.h and kernels/real_kernels.h have the contracts.
#pragma once
#include "kernels/generator/forms/forms.h"

namespace generator {

struct signature {
    const char* type;        // of pointers to the kernels
    const char* parameters;  // of an exported function
    const char* ignored;     // further ones, which it is passed and ignores
    // Both directions may share a function that takes the pool as well: what it is passed. Null: one direction only.
    const char* shared_arguments;
};

const signature& signature_of(const form& f);

}  // namespace generator
