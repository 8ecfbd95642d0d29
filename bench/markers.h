// SPDX-License-Identifier: Apache-2.0
// The markers between which plugins of the emulator count: instructions that processors ignore.
#pragma once

namespace bench {

// No-operations that nothing else contains: bench/model counts between them on Arm, bench/caches on x86-64.
inline void begin_counting() {
#if defined(__aarch64__)
    asm volatile("hint #42" ::: "memory");
#elif defined(__x86_64__)
    asm volatile("nopl 0x71666642(%%rax)" ::: "memory");
#endif
}

inline void end_counting() {
#if defined(__aarch64__)
    asm volatile("hint #43" ::: "memory");
#elif defined(__x86_64__)
    asm volatile("nopl 0x71666643(%%rax)" ::: "memory");
#endif
}

}  // namespace bench
