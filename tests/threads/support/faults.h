// SPDX-License-Identifier: Apache-2.0
// Counts the threads that are made and makes chosen calls fail.
#pragma once
#include <atomic>

extern std::atomic<int> threads_made;

// The number of calls that still succeed before all fail; -1 lets every call succeed.
extern std::atomic<int> creates_left;
extern std::atomic<int> callocs_left;  // counts only calls of the size of a pool_worker
