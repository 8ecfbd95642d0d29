// SPDX-License-Identifier: Apache-2.0
#pragma once
#define OPS_INLINE [[gnu::always_inline]] static inline

// A pointer that the compiler can't take apart: else it keeps one pointer for every element of a loop, more than there
// are registers, in place of one base and shared offsets.
template <class T>
OPS_INLINE T* base(T* p) {
    asm("" : "+r"(p));
    return p;
}
