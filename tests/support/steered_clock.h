// SPDX-License-Identifier: Apache-2.0
// A clock by which the test decides who wins a measured planning, whatever the machine. For programs linked with
// --wrap=gettimeofday, in which the library's calls of gettimeofday come here; until it is started it is the real one.
//
// What is timed lies between two readings, so an interval is known by the number of the reading that ends it. The last
// intervals of a plan call are those of its candidates: the last reading ends the last candidate, the one two in front
// of it the last but one.
#pragma once
#include <cstdint>

namespace steered_clock {

constexpr int candidates = 5;  // that a measured planning times at most
constexpr int64_t none = -1;

// From now on intervals last 1 to 2 milliseconds, at random by the seed, but for the one that the reading of the number
// `winner` ends (0 is the first), which lasts a microsecond.
void start(uint64_t seed, int64_t winner = none);
void stop();
int64_t readings();  // since the start

}  // namespace steered_clock
