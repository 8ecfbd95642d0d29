// SPDX-License-Identifier: Apache-2.0
// The arguments of the fourteen guru calls in one form, and their documented checks.
#pragma once
#include "include/qfftf.h"
#include "record/fft_plan.h"

// The caller's triples, 32 or 64 bits wide.
class dim_list {
public:
    dim_list(const fft_iodim* dims) : narrow_(dims) {}
    dim_list(const fft_iodim64* dims) : wide_(dims) {}
    explicit operator bool() const { return narrow_ || wide_; }
    fft_dim operator[](int k) const {
        if (narrow_) return {narrow_[k].n, narrow_[k].is, narrow_[k].os};
        return {wide_[k].n, wide_[k].is, wide_[k].os};
    }

private:
    const fft_iodim* narrow_ = nullptr;
    const fft_iodim64* wide_ = nullptr;
};

enum class width { narrow, wide };

struct guru_arguments {
    width call;  // the two widths differ in what they check
    uint32_t kind;
    int64_t sign;
    int64_t split;
    unsigned flags;
    int rank;
    dim_list dims;
    int howmany_rank;
    dim_list howmany_dims;
    float* in;
    float* in_imag;
    float* out;
    float* out_imag;
    const uint32_t* r2r_kinds;  // r2r only
};

// The first documented demand that the arguments fail, or null when the call may go on.
const char* guru_refusal(const guru_arguments& arguments);

// A record that holds the problem, unplanned. Null when the arguments are refused or memory is short.
fft_plan* guru_record(const guru_arguments& arguments);

// True when the layout passes the shape test of the 32-bit complex calls: dimensions don't interleave, and batch
// dimensions stand slowest first.
bool guru_shape_test(int rank, const dim_list& dims, int howmany_rank, const dim_list& howmany_dims);

// True when a transform of one point is to be planned as pure data movement.
bool becomes_rank_0(const guru_arguments& arguments);
