// SPDX-License-Identifier: Apache-2.0
// The markers between which bench/model counts: instructions that processors ignore.
#pragma once

namespace bench {

inline void begin_counting() {
#ifdef __aarch64__
    asm volatile("hint #42" ::: "memory");
#endif
}

inline void end_counting() {
#ifdef __aarch64__
    asm volatile("hint #43" ::: "memory");
#endif
}

}  // namespace bench
