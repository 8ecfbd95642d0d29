// SPDX-License-Identifier: Apache-2.0
// The transform of a convolution's table, at planning.
#pragma once
#include "record/fft_plan.h"

// Transforms `table` forward in place: what `convolver`, a planned complex transform of that length, would make of it.
// The error of a table is in every result, so that tables of up to 4096 points are transformed in double precision and
// rounded once; the transforms of primes become a quarter more exact. Longer ones run through `convolver`: planning
// would take several times as long. False when memory is short.
bool transform_table(fft_plan* convolver, float* table);
