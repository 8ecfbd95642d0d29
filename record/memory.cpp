// SPDX-License-Identifier: Apache-2.0
// The aligned allocator. The block's own address stands in the 8 bytes before the pointer that is handed out.
#include "record/memory.h"

#include "include/qfftf.h"  // exports the two calls

#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace {
constexpr uint64_t alignment = 64;
constexpr uint64_t overhead = alignment + sizeof(void*);
}  // namespace

extern "C" void* qsl_fftf_malloc(uint64_t size) {
    if (size + overhead < size) return nullptr;
    char* block = static_cast<char*>(calloc(1, size + overhead));
    if (!block) return nullptr;
    const uintptr_t address = (reinterpret_cast<uintptr_t>(block) + alignment) & ~(alignment - 1);
    char* result = block + (address - reinterpret_cast<uintptr_t>(block));
    memcpy(result - sizeof block, &block, sizeof block);
    return result;
}

// A pointer whose preceding word isn't the address of a block close below it isn't one of ours and is left alone.
extern "C" void qsl_fftf_free(void* pointer) {
    if (!pointer) return;
    uintptr_t block;
    memcpy(&block, static_cast<char*>(pointer) - sizeof block, sizeof block);
    const uintptr_t address = reinterpret_cast<uintptr_t>(pointer);
    if (address <= block || address - block > overhead) return;
    free(reinterpret_cast<void*>(block));
}

bool fits_into_memory(uint64_t bytes) {
    constexpr uint64_t any_machine_has = uint64_t{1} << 28;
    if (bytes <= any_machine_has) return true;
    const long pages = sysconf(_SC_PHYS_PAGES), page = sysconf(_SC_PAGESIZE);
    return pages <= 0 || page <= 0 || bytes / static_cast<uint64_t>(page) < static_cast<uint64_t>(pages);
}
