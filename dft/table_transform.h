// SPDX-License-Identifier: Apache-2.0
// The transform of a convolution's table, at planning.
#pragma once
#include "record/fft_plan.h"

// Transforms `table` forward in place: what `convolver`, a planned complex transform of that length, would make of it,
// but more exactly. A table's error is in every result: with tables that are transformed in double precision and
// rounded once, the transforms of large primes are a quarter more exact. Tables of more than 2^18 points run through
// `convolver`, as they would take too much memory and time. False when memory is short.
bool transform_table(fft_plan* convolver, float* table);
