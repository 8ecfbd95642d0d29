// SPDX-License-Identifier: Apache-2.0
#pragma once
#define OPS_INLINE [[gnu::always_inline]] static inline
