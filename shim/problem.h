// SPDX-License-Identifier: Apache-2.0
// A transform as its caller describes it, in the one form that all plan calls share.
#pragma once
#include "record/fft_plan.h"

#include <cstddef>

// Strides count complex numbers on an interleaved complex side, floats on a real or split one, as in the library.
struct dimension {
    ptrdiff_t n;
    ptrdiff_t is;
    ptrdiff_t os;
    uint32_t r2r_kind;
};

// Dimensions of one element don't count, and 2^48 elements of the others fit into no memory.
constexpr int most_dims = 48;

struct problem {
    plan_kind kind;  // kind_c2c, kind_r2c, kind_c2r or kind_r2r
    bool split;
    bool backward;  // interleaved c2c alone; a split transform is turned by exchanging real and imaginary parts
    bool empty;     // no transform to be done: a legal plan that does nothing
    int rank;
    int batch_rank;
    dimension dims[most_dims];
    dimension batch[most_dims];
    float* in;  // of split arrays the real part; the imaginary part is null where there is none
    float* in_imag;
    float* out;
    float* out_imag;
    // Set by normalise(): where the first element stands, in floats from the caller's arrays, and whether the caller's
    // imaginary part comes first in what is now one interleaved array.
    ptrdiff_t in_offset;
    ptrdiff_t out_offset;
    bool imag_first;
    bool joined_in;
    bool joined_out;

    bool complex_in() const { return kind == kind_c2c || kind == kind_c2r; }
    bool complex_out() const { return kind == kind_c2c || kind == kind_r2c; }
    // Floats from one index to the next for a stride of 1.
    int in_step() const { return complex_in() && !split ? 2 : 1; }
    int out_step() const { return complex_out() && !split ? 2 : 1; }
    // Of Hermitian data the last dimension stores a half.
    ptrdiff_t stored(int d, bool complex_side) const {
        const bool half = (kind == kind_r2c || kind == kind_c2r) && complex_side && d == rank - 1;
        return half ? dims[d].n / 2 + 1 : dims[d].n;
    }
    bool in_place() const { return in == out && in_imag == out_imag; }
};

// Adds a transform dimension, unless it has one element and does nothing. False when it can't exist.
bool add_dim(problem& p, const dimension& d, bool is_last);

// Adds a batch dimension, unless it has one element. False when its count is negative.
bool add_batch(problem& p, const dimension& d);

// Brings equal problems to equal form: no negative batch strides, split arrays that are halves of interleaved ones
// joined, batch dimensions sorted and merged.
void normalise(problem& p);
