// SPDX-License-Identifier: Apache-2.0
// A steady clock: the instructions that this process has run so far, as the emulator's plugin
// bench/model/block_counter.c counts them.
#pragma once
#include <cstdint>

// 0 where nobody counts.
uint64_t instructions_so_far();
