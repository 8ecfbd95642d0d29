// SPDX-License-Identifier: Apache-2.0
// What the library takes no plan for: the input gathered into compact storage, transformed there by contiguous passes,
// and scattered to where it belongs. Any strides and ranks, and in place any two layouts.
#pragma once
#include "shim/plan.h"

// Null when memory is short or a pass has no plan.
staged_plan* new_staged_plan(const problem& p, bool measured);
void delete_staged_plan(staged_plan* staged);

// Does nothing when memory is short: several executions at once allocate for all but the first.
void execute_staged(staged_plan* staged, const problem& p, const arrays& a);

// The k-th pass, or null: for printing.
fft_plan* staged_pass(const staged_plan* staged, int k);

// sum += a * b, unless it doesn't fit.
inline bool add_product(ptrdiff_t& sum, ptrdiff_t a, ptrdiff_t b) {
    ptrdiff_t product;
    return !__builtin_mul_overflow(a, b, &product) && !__builtin_add_overflow(sum, product, &sum);
}
