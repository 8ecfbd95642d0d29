// SPDX-License-Identifier: Apache-2.0
// A clock of random spans: under measured planning every candidate wins now and then, at every level of the tree, and
// the same ones for the same seed. For one source file of a program that is linked with --wrap=gettimeofday, which
// sends the library's readings here.
#pragma once
#include <sys/time.h>

#include <cstdint>

namespace random_clock {

inline uint64_t state = 0;
inline int64_t usec = 1'000'000;
inline void seed(uint64_t number) { state = number; }

}  // namespace random_clock

extern "C" int __wrap_gettimeofday(timeval* now, void*) {
    using namespace random_clock;
    state = state * 6364136223846793005u + 1442695040888963407u;
    usec += static_cast<int64_t>(state >> 44) + 1;
    now->tv_sec = usec / 1'000'000;
    now->tv_usec = usec % 1'000'000;
    return 0;
}
