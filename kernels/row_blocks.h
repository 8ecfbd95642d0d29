// SPDX-License-Identifier: Apache-2.0
// Which last stages take their rows in blocks.
#pragma once
#include "kernels/kernel_types.h"

// Those whose registers hold what such loads bring, and radix 32, which takes one block after the other and puts aside
// what it makes of it.
constexpr bool takes_blocks(uint64_t radix) { return reads_blocks(radix) || radix == 32; }
