// SPDX-License-Identifier: Apache-2.0
// What the trigonometric transforms of types II to IV share: their tables in `aux`, one behind the other, and their
// scratch, in which both sides of a strided transform become contiguous, so that their passes know no strides.
#pragma once
#include "planner/solver.h"
#include "real/real_subplan.h"
#include "real/real_tables.h"

// A half table of m with room for m entries (none for m of 0), then a quarter table of n, then an eighth table of c.
struct rotation_tables {
    const float* half;
    const float* quarter;
    const float* eighth;
};

inline rotation_tables tables_of(const fft_plan* plan, int64_t m, int64_t n) {
    const float* const half = static_cast<const float*>(plan->aux);
    return {half, half + 2 * m, half + 2 * (m + n)};
}

// `spare` more entries are attached than used.
inline bool attach_rotation_tables(fft_plan* plan, int64_t m, int64_t n, int64_t c, int64_t spare = 0) {
    if (!attach_aux(plan, 8 * (m + n + c + spare))) return false;
    float* const half = static_cast<float*>(plan->aux);
    real_half_table(half, m);
    real_quarter_table(half + 2 * m, n);
    real_eighth_table(half + 2 * (m + n), c);
    return true;
}

// Eight floats for each point and three more: work area, and copies of strided sides.
inline bool attach_trigonometric_buffer(fft_plan* plan) { return attach_buffer(plan, 32 * (plan->dims[0].n + 3)); }

// The input, or its contiguous copy.
inline const float* contiguous_input(const plan_scratch& scratch, const fft_dim& dim, const float* in) {
    if (dim.is == 1) return in;
    float* const copy = scratch.data() + 4 * (dim.n + 3);
    gather_reals(copy, in, dim.n, dim.is);
    return copy;
}

// The output, or a contiguous array that goes there in the end.
class contiguous_output {
public:
    contiguous_output(const plan_scratch& scratch, const fft_dim& dim, float* out)
        : dim_(dim), out_(out), data_(dim.os == 1 ? out : scratch.data() + 6 * (dim.n + 3)) {}
    ~contiguous_output() {
        if (data_ != out_) scatter_reals(out_, data_, dim_.n, dim_.os);
    }
    contiguous_output(const contiguous_output&) = delete;
    contiguous_output& operator=(const contiguous_output&) = delete;
    float* data() const { return data_; }

private:
    fft_dim dim_;
    float *out_, *data_;
};

// What an even and an odd length of one kind do.
struct rotation_forms {
    execute_function even, odd;
    const char *even_name, *odd_name;
};

// Types II and III: an even length runs a complex subplan of half of it, an odd one a real subplan of its own length.
inline int solve_by_rotation(fft_plan* plan, uint32_t odd_kind, int64_t sign, const rotation_forms& forms) {
    const int64_t n = plan->dims[0].n;
    const bool odd = n & 1;
    if (!attach_trigonometric_buffer(plan)) return refused;
    if (!plan_buffer_subplan(plan, odd ? odd_kind : kind_c2c, odd ? n : n / 2, sign)) return refused;
    if (!attach_rotation_tables(plan, odd ? 0 : n / 2, n, 0)) return refused;
    return odd ? install(plan, forms.odd, forms.odd_name) : install(plan, forms.even, forms.even_name);
}
