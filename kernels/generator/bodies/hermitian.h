// SPDX-License-Identifier: Apache-2.0
// What a stage of radix r computes of Hermitian spectra of length N = r L, of which the coefficients 0 to N / 2 are
// stored: r spectra of length L, U_j[k] = exp(2 pi i j k / N) sum over q < r of X[k + q L] exp(2 pi i j q / r).
#pragma once
#include "kernels/generator/bodies/recording.h"

namespace generator {

// Coefficients k + q L of the first half are stored: q below this number, for 0 < k < L / 2.
constexpr int stored_inputs(int r) { return (r + 1) / 2; }

// A row 0 < k < L / 2: a complex butterfly. Input q is coefficient k + q L, or, where that lies beyond the middle, the
// one at (r - q) L - k, which is conjugated. Output j is multiplied by twiddle j. With `transposed`, as many rows as
// there are lanes lie in them and the outputs are vectors along the rows: slot transposed_slot{row, column}; what is
// left of the columns goes one by one, as the columns of a row behind the last.
struct hermitian_kind {
    int size;
    bool transposed = false;
    const vectors* in = nullptr;
};
body make_hermitian_body(const hermitian_kind& kind);

// Rows 0 and L / 2 are real: one number for each j. Input q is coefficient q L or L / 2 + q L.
enum class edge_row { zero, middle };
struct edge_row_kind {
    int size;
    edge_row row;
    // One branch: slot 2 q loads a real part, 2 q + 1 an imaginary part. Several: they load the two vectors of the
    // complex numbers, and constants are taken by lane.
    bool one = false;
    const vectors* in = nullptr;
};
body make_edge_row_body(const edge_row_kind& kind);
int edge_row_inputs(int size, edge_row row);

}  // namespace generator
