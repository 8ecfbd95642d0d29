// SPDX-License-Identifier: Apache-2.0
#include "tests/support/steered_clock.h"

#include <sys/time.h>

#include <random>

extern "C" int __real_gettimeofday(timeval* now, void* zone);

namespace {

bool steered = false;
std::minstd_rand random_interval;
int64_t now_usec, reading, winning_reading;

}  // namespace

void steered_clock::start(uint64_t seed, int64_t winner) {
    steered = true;
    random_interval.seed(static_cast<unsigned>(seed * 2654435761u));
    now_usec = 1'000'000'000'000;
    reading = 0;
    winning_reading = winner;
}

void steered_clock::stop() { steered = false; }
int64_t steered_clock::readings() { return reading; }

extern "C" int __wrap_gettimeofday(timeval* now, void* zone) {
    if (!steered) return __real_gettimeofday(now, zone);
    const auto interval = static_cast<int64_t>(1000 + random_interval() % 1000);  // drawn for the winner too
    now_usec += reading++ == winning_reading ? 1 : interval;
    now->tv_sec = now_usec / 1'000'000;
    now->tv_usec = now_usec % 1'000'000;
    return 0;
}
