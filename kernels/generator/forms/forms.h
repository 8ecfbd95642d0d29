// SPDX-License-Identifier: Apache-2.0
// THE TABLE of kernel families. Pointer tables, declarations, tests and benchmarks are derived from it.
#pragma once
#include <cstdint>
#include <span>

namespace generator {

enum class instruction_set { neon, sve, scalar };

// Which arguments a kernel takes and over what it loops.
enum class shape {
    direct,    // one transform
    many,      // one transform in every lane of a vector
    assemble,  // likewise, each lane at its own address
    rows,      // over groups of transforms, one in every lane, each of adjacent elements
    first,     // stages: over the columns l < L; m is 1 and there are no twiddles
    other,     // over the rows i < m and the columns l < L
    last,      // over the rows i < m; L is 1

    real_row,     // real data: one row
    real_quad,    // rows in groups of four, one row in every lane
    real_rows,    // any number of rows; adjacent rows in lanes
    cosine_rows,  // likewise, type I cosine transforms

    sorensen_first,  // stages of Hermitian spectra: over the rows; one branch
    sorensen_other,  // over the rows and the branches
    sorensen_last,   // over the branches; one row, which is real
};

// Where the elements lie and what the lanes of a vector are.
enum class layout {
    contig,   // unit strides; in stages the lanes are adjacent columns (first, other) or rows (last)
    strided,  // strides from the arguments or the record, one complex number per vector
    batch,    // the lanes are adjacent transforms: two in NEON, four in SVE

    offsets,  // real data: tables of offsets are passed
};

struct form {
    const char* name;
    instruction_set isa;
    shape loop;
    layout data;
    std::span<const int> sizes;
    int sign = 0;  // -1 or 1 where there is one direction only
};

inline bool is_sve(const form& f) { return f.isa == instruction_set::sve; }
inline bool is_real(const form& f) { return f.data == layout::offsets; }
inline bool is_sorensen(const form& f) { return f.loop >= shape::sorensen_first; }
inline bool has_direction(const form& f, int sign) { return f.sign == 0 || f.sign == sign; }

std::span<const form> forms();

}  // namespace generator
