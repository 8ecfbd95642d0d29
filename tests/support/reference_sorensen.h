// SPDX-License-Identifier: Apache-2.0
// A stage of Hermitian spectra by its formula, in double precision.
#pragma once
#include "tests/support/reference_dft.h"

#include <cstdint>

namespace reference {

// Before the stage, m branches stand side by side: row k of branch b at complex element k m + b of `in`. Each is a
// Hermitian spectrum X of length N = r L, of which rows 0 to N / 2 are stored. For j < r
//     U_j[k] = exp(2 pi i j k / N) times the sum over q < r of X[k + q L] exp(2 pi i j q / r)
// is a Hermitian spectrum of length L: rows 0 to L / 2 of it are element k (m r) + j m + b of the result. Row 0 and row
// L / 2 are real; imaginary parts of rows 0 and N / 2 of X aren't looked at.
std::vector<complex> hermitian_stage(const float* in, uint64_t m, uint64_t r, uint64_t L);

}  // namespace reference
