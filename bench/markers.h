// SPDX-License-Identifier: Apache-2.0
// The markers between which plugins of the emulator count: instructions that processors ignore.
#pragma once

namespace bench {

// No-operations that nothing else contains: bench/model counts between them on Arm, bench/caches on x86-64.
#if defined(__aarch64__)
#define BENCH_BEGIN "hint #42"
#define BENCH_END "hint #43"
#elif defined(__x86_64__)
#define BENCH_BEGIN "nopl 0x71666642(%%rax)"
#define BENCH_END "nopl 0x71666643(%%rax)"
#else
#define BENCH_BEGIN ""
#define BENCH_END ""
#endif

template <typename Act>
[[gnu::noinline]] void act_between_markers(Act act, long count) {
    asm volatile(BENCH_BEGIN ::: "memory");
    for (long i = 0; i < count; ++i) act();
    asm volatile(BENCH_END ::: "memory");
}

}  // namespace bench
