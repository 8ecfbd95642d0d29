// SPDX-License-Identifier: Apache-2.0
// Which copy of the inner library works.
#pragma once
#include "planner/inner_library.h"

// The levels that are linked, from the highest to the lowest, then null. A file that the build writes.
extern const inner_library* const inner_libraries[];

// The level at work, chosen at the first call: the highest that this machine has, or a lower one that the environment
// variable QSL_FFT_LEVEL names. It is the same ever after, and safe to ask for from any thread and any constructor.
const inner_library& level_at_work();

// Bytes of an SVE register in this process, 0 without SVE.
int sve_register_bytes();
