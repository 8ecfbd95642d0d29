// SPDX-License-Identifier: Apache-2.0
// The rows of the forms table that a test goes through.
#pragma once
#include <vector>

#include "kernels/generator/forms/forms.h"

template <class Choice>
std::vector<int> families_where(const Choice& choice) {
    std::vector<int> found;
    for (int f = 0; f < int(generator::forms().size()); ++f)
        if (choice(generator::forms()[f])) found.push_back(f);
    return found;
}

inline std::vector<int> complex_families() {
    return families_where([](const generator::form& f) { return !is_real(f) && !is_hermitian(f); });
}
inline std::vector<int> sorensen_families() {
    return families_where([](const generator::form& f) { return is_hermitian(f); });
}
inline std::vector<int> real_families() {
    return families_where([](const generator::form& f) { return is_real(f); });
}
