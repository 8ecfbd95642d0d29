// SPDX-License-Identifier: Apache-2.0
// fork: the child has the calling thread alone, and none of the threads that it shares loops with.
#include "threads/backend.h"
#include "threads/pool.h"

namespace {

void in_child() {
    pool_start_anew();
    openmp_start_anew();
}

}  // namespace

// The C library forgets the handlers of an object that it unloads.
void watch_forks() { pthread_atfork(pool_hold, pool_let_go, in_child); }
