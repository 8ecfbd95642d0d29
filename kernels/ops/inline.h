// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#define OPS_INLINE [[gnu::always_inline]] static inline
#define OPS_MEMBER [[gnu::always_inline]]

// A pointer that the compiler can't take apart: else it keeps one pointer for every element of a loop, more than there
// are registers, in place of one base and shared offsets.
template <class T>
OPS_INLINE T* base(T* p) {
    asm("" : "+r"(p));
    return p;
}

// A pointer to constants that the compiler takes for another one in every turn of a loop, so that it loads them in
// each.
template <class T>
OPS_INLINE T* in_this_turn(T* p, [[maybe_unused]] int64_t turn) {
    asm("" : "+r"(p) : "r"(turn));
    return p;
}
