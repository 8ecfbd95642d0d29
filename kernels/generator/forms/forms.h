// SPDX-License-Identifier: Apache-2.0
// THE TABLE of kernel families. Pointer tables, declarations, lists, tests and benchmarks are derived from it.
#pragma once
#include <algorithm>
#include <cstdint>
#include <span>

#include "kernels/generator/forms/vectors.h"

namespace generator {

// Which arguments a kernel takes and over what it loops.
enum class shape {
    direct,    // one transform
    many,      // one transform in every lane of a vector
    assemble,  // likewise, each lane at its own address
    rows,      // over transforms of adjacent elements, which are loaded and stored whole

    first,  // stages: over the columns l < L; m is 1 and there are no twiddles
    other,  // over the rows i < m and the columns l < L
    last,   // over the rows i < m; L is 1

    real_row,     // real data: one row
    real_groups,  // rows in groups of four, one row in every lane
    whole_rows,   // likewise, of contiguous rows and spectra that are stored whole
    real_rows,    // any number of rows; adjacent rows in lanes
    cosine_rows,  // likewise, type I cosine transforms
    alone,        // one contiguous row

    hermitian_first,  // stages of Hermitian spectra: over the rows; one branch
    hermitian_other,  // over the rows and the branches
    hermitian_last,   // over the branches; one row, which is real
};

// Where the elements lie and what the lanes of a vector are.
enum class layout {
    contig,   // unit strides; in stages the lanes are adjacent columns (first, other) or rows (last)
    strided,  // strides from the arguments or the record; one complex number per vector or, in NEON stages with a unit
              // stride on their inner side, two columns or rows
    batch,    // the lanes are adjacent transforms: two in NEON, four in SVE

    offsets,  // real data: tables of offsets are passed
};

// How a contiguous row `alone` stores its spectrum.
enum class row_spectrum { pairs, half_complex, hartley };

struct form {
    const char* name;
    const vectors* in;
    shape loop;
    layout data;
    std::span<const int> sizes;
    int sign = 0;                         // -1 or 1 where there is one direction only
    std::span<const int> in_double = {};  // the sizes that compute in double precision and round at the output
    bool half_complex_only = false;  // of groups: other layouts of rows next to each other are left to general loops
    row_spectrum spectrum = row_spectrum::pairs;
};

inline bool is_hermitian(const form& f) { return f.loop >= shape::hermitian_first; }
inline bool is_real(const form& f) { return f.loop >= shape::real_row && !is_hermitian(f); }
inline bool has_direction(const form& f, int sign) { return f.sign == 0 || f.sign == sign; }
inline bool has_size(const form& f, int size) { return std::ranges::find(f.sizes, size) != f.sizes.end(); }
inline bool is_in_double(const form& f, int size) { return std::ranges::find(f.in_double, size) != f.in_double.end(); }

std::span<const form> forms();

// Short lists of (size, kernel) that solvers search: of each size the kernel of the first of these families that has
// it.
struct short_list {
    const char* name;
    std::span<const int> sizes;
    const char* families[2];
};
std::span<const short_list> short_lists();

}  // namespace generator
