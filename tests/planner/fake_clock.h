// SPDX-License-Identifier: Apache-2.0
// A clock that only the test moves. For programs linked with --wrap=gettimeofday, in which the library's calls of
// gettimeofday come here.
#pragma once
#include <cstdint>

namespace fake {
inline int64_t clock_usec = 1'000'000'000'000;
inline void advance_clock(double seconds) { clock_usec += static_cast<int64_t>(seconds * 1e6); }
}  // namespace fake
