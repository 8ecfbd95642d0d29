// SPDX-License-Identifier: Apache-2.0
// The markers between which bench/model counts: instructions that processors ignore.
#pragma once

namespace bench {

template <typename Act>
[[gnu::noinline]] void act_between_markers(Act act, long count) {
#ifdef __aarch64__
    asm volatile("hint #42" ::: "memory");
#endif
    for (long i = 0; i < count; ++i) act();
#ifdef __aarch64__
    asm volatile("hint #43" ::: "memory");
#endif
}

}  // namespace bench
