// SPDX-License-Identifier: Apache-2.0
// One transform of reals to a packed spectrum of as many floats, the half-complex or the Hartley form, which differ in
// their passes. An even length takes a complex transform of half the length, an odd one a complex transform of the
// reals.
#pragma once
#include "real/half_complex_passes.h"
#include "real/half_length.h"
#include "real/real_subplan.h"

// Either pass writes a whole packed spectrum at stride `os`.
struct packed_form {
    void (*post_pass)(const float* y, float* packed, const float* table, int64_t m, int64_t os);  // even lengths
    void (*pack)(const float* y, float* packed, int64_t n, int64_t os);                           // odd lengths
};

template <const packed_form& form>
void execute_even_contiguous(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_subplan(plan, in, scratch.data());
    form.post_pass(scratch.data(), out, static_cast<const float*>(plan->aux), plan->dims[0].n / 2, 1);
}

template <const packed_form& form>
void execute_even_discrete(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    gather_reals(scratch.data(), in, dim.n, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    form.post_pass(scratch.data(), out, static_cast<const float*>(plan->aux), dim.n / 2, dim.os);
}

template <const packed_form& form>
void execute_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    gather_as_complex(scratch.data(), in, dim.n, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    form.pack(scratch.data(), out, dim.n, dim.os);
}

struct packed_names {
    const char *contiguous, *discrete, *odd;
};

// Storage and subplan of a packed spectrum of either direction.
inline bool attach_packed(fft_plan* plan, int64_t sign) {
    const int64_t n = plan->dims[0].n;
    if (n & 1) return attach_buffer(plan, 8 * n) && plan_buffer_subplan(plan, kind_c2c, n, sign);
    return attach_buffer(plan, 32 * (n + 2)) && plan_buffer_subplan(plan, kind_c2c, n / 2, sign) &&
           attach_half_table(plan, n / 2);
}

template <const packed_form& form>
int install_packed(fft_plan* plan, const packed_names& names) {
    if (plan->dims[0].n & 1) return install(plan, execute_odd<form>, names.odd);
    if (has_unit_strides(*plan)) return install(plan, execute_even_contiguous<form>, names.contiguous);
    return install(plan, execute_even_discrete<form>, names.discrete);
}
