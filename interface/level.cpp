// SPDX-License-Identifier: Apache-2.0
#include "interface/level.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#if defined(__aarch64__) && defined(__linux__)
#include <sys/auxv.h>
#include <sys/prctl.h>
#endif

namespace {

#if defined(__aarch64__) && defined(__linux__)
// Of asm/hwcap.h and linux/prctl.h, by number: older headers lack some names.
constexpr unsigned long has_atomics = 1UL << 8, has_complex = 1UL << 14, has_sve = 1UL << 22;
constexpr int get_sve_length = 51, sve_length_mask = 0xffff;

bool processor_has(unsigned long features) { return (getauxval(AT_HWCAP) & features) == features; }
#else
constexpr unsigned long has_atomics = 0, has_complex = 0;

bool processor_has(unsigned long) { return false; }
#endif

bool processor_has(processor_needs needs) {
    if (needs == processor_needs::nothing) return true;
    if (!processor_has(has_complex | has_atomics)) return false;  // Armv8.3, as far as compilers use it unasked
    return needs == processor_needs::complex_instructions || sve_register_bytes() == 32;
}

const inner_library* choose() {
    const char* const wish = getenv("QSL_FFT_LEVEL");
    const inner_library* highest = nullptr;
    for (const inner_library* const* level = inner_libraries; *level; ++level) {
        if (!processor_has((*level)->needs)) continue;
        if (!highest) highest = *level;
        if (wish && strcmp(wish, (*level)->name) == 0) return *level;
    }
    return highest;
}

std::atomic<const inner_library*> at_work = nullptr;

}  // namespace

const inner_library& level_at_work() {
    const inner_library* level = at_work.load(std::memory_order_relaxed);
    if (level) return *level;
    level = choose();
    if (!level) abort();  // only a test is linked with levels none of which its processor has
    const inner_library* nobodys_choice = nullptr;
    return at_work.compare_exchange_strong(nobodys_choice, level, std::memory_order_relaxed) ? *level : *nobodys_choice;
}

int sve_register_bytes() {
#if defined(__aarch64__) && defined(__linux__)
    return processor_has(has_sve) ? prctl(get_sve_length) & sve_length_mask : 0;
#else
    return 0;
#endif
}
