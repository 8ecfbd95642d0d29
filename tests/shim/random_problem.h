// SPDX-License-Identifier: Apache-2.0
// A legal transform problem as a program could pose it, drawn at random.
#pragma once
#include "shim/include/fftw3.h"

#include <random>
#include <string>
#include <vector>

enum class transform { c2c, r2c, c2r, r2r };
enum class plan_call { many, guru, guru64, split };

struct random_dim {
    ptrdiff_t n, is, os;
};

struct random_problem {
    transform kind;
    plan_call call;
    int sign;
    std::vector<random_dim> dims;
    std::vector<random_dim> batch;
    std::vector<fftwf_r2r_kind> kinds;
    std::vector<int> in_embed, out_embed;  // many alone; empty for none
    bool in_place;
    bool joined;      // split arrays that are the two halves of interleaved ones
    bool new_arrays;  // executed on other arrays than planned
    unsigned flags;

    bool complex_in() const { return kind == transform::c2c || kind == transform::c2r; }
    bool complex_out() const { return kind == transform::c2c || kind == transform::r2c; }
    bool split() const { return call == plan_call::split; }
    ptrdiff_t stored(size_t d, bool is_complex) const {
        const bool half = (kind == transform::r2c || kind == transform::c2r) && is_complex && d + 1 == dims.size();
        return half ? dims[d].n / 2 + 1 : dims[d].n;
    }
    // Of every element of a side, the real part's place in floats from the caller's pointer, in row-major order.
    std::vector<ptrdiff_t> places(bool in_side) const;
    bool overwrites_input() const { return in_place || (kind == transform::c2r && !(flags & FFTW_PRESERVE_INPUT)); }
    std::string text() const;
};

random_problem draw_problem(std::mt19937_64& random);
