// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

// The aligned allocator and the aligned free: zeroed memory on a 64-byte boundary, null when memory is short.
extern "C" void* qsl_fftf_malloc(uint64_t size);
extern "C" void qsl_fftf_free(void* pointer);

// False when the machine's memory can't hold so many bytes. What only such storage would serve isn't begun: a length
// that can't be planned is refused at once.
bool fits_into_memory(uint64_t bytes);
