// SPDX-License-Identifier: Apache-2.0
// Which method makes the transform of a size.
#pragma once
#include <stdexcept>
#include <string>

#include "kernels/generator/graph/pool.h"

namespace generator {

// Complex transforms of size n = a b.
enum class method { prime, coprime, common, folded_three, conjugate_pair };
struct way {
    method how;
    int a, b;
};
way way_of(int n);

// Transforms of real data and of Hermitian spectra, by three of the methods.
way real_way_of(int n);

// What the functions above throw for a size without a method.
struct no_method : std::runtime_error {
    no_method(const std::string& what, int n)
        : std::runtime_error(what + " of size " + std::to_string(n) + " has no method") {}
};

// The constants of the complex transform of a size.
pool constants_of(int size, int sign);

}  // namespace generator
