// SPDX-License-Identifier: Apache-2.0
// How rows of real data and their spectra may lie, as kernels test it at entry. Where vectors find their numbers next
// to each other they are loaded and stored whole; where rows lie `anywhere`, number by number.
#pragma once
#include <string>

#include "kernels/generator/forms/forms.h"

namespace generator {

enum class real_layout {
    anywhere,      // each number at its offset in the tables
    pairs,         // each row and each spectrum contiguous, coefficients as pairs
    half_complex,  // likewise, half-complex
    side_by_side,  // adjacent rows on both sides, coefficients as pairs
    whole_rows,    // as `pairs`, and the imaginary parts of real coefficients are zeros that belong to the spectrum
};

// The condition, in the parameters of real kernels, that rows of this size lie so.
std::string condition_of(real_layout layout, const form& f, int size);

}  // namespace generator
