// SPDX-License-Identifier: Apache-2.0
// Planning calls with hostile arguments: numbers that are huge, zero, negative or about to wrap, null pointers, arrays
// in place and apart. Reproducible from a seed.
#pragma once
#include "include/qfftf.h"

#include <cstdint>
#include <string>
#include <vector>

struct hostile_arrays {
    float *in, *in_imag, *out, *out_imag;  // any of them may be null; out equals in for a call in place
};

// One call, with everything that it gets. Lists keep four entries, whatever the ranks say.
struct hostile_call {
    enum class form { basic, many, guru, upsampling } form;
    uint32_t kind;  // a plan_kind of the four transform types
    bool wide, split;
    int rank, howmany_rank, howmany, istride, idist, ostride, odist, sign;
    unsigned flags;
    bool no_n, no_inembed, no_onembed, no_kinds, no_dims, no_batch;
    int n[4], inembed[4], onembed[4];
    uint32_t kinds[4];
    fft_iodim64 dims[4], batch[4];
    float shift_x, shift_y;

    std::string text() const;
    qsl_fftf_plan plan(const hostile_arrays& arrays) const;
};

class hostile_source {
public:
    explicit hostile_source(uint64_t seed) : state_(seed * 2 + 1) {}
    hostile_call draw();

private:
    uint32_t bits();
    uint32_t below(uint32_t bound) { return bits() % bound; }
    bool one_in(uint32_t count) { return below(count) == 0; }
    int tame_number();
    int number();
    int64_t wide_number();

    uint64_t state_;
    uint32_t mood_ = 0;  // how hostile this call's numbers are
};
