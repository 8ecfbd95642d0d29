// SPDX-License-Identifier: Apache-2.0
// What the trigonometric transforms of types II to IV share: their tables in `aux`, one behind the other.
#pragma once
#include "planner/solver.h"
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

inline bool attach_rotation_tables(fft_plan* plan, int64_t m, int64_t n, int64_t c) {
    if (!attach_aux(plan, 8 * (m + n + c))) return false;
    float* const half = static_cast<float*>(plan->aux);
    real_half_table(half, m);
    real_quarter_table(half + 2 * m, n);
    real_eighth_table(half + 2 * (m + n), c);
    return true;
}

// Scratch of the transforms of types II to IV.
inline bool attach_trigonometric_buffer(fft_plan* plan) { return attach_buffer(plan, 32 * (plan->dims[0].n + 3)); }
