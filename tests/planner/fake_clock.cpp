// SPDX-License-Identifier: Apache-2.0
#include "tests/planner/fake_clock.h"

#include <sys/time.h>

extern "C" int __wrap_gettimeofday(timeval* now, void*) {
    now->tv_sec = fake::clock_usec / 1'000'000;
    now->tv_usec = fake::clock_usec % 1'000'000;
    return 0;
}
