// SPDX-License-Identifier: Apache-2.0
#include "threads/thread_state.h"

#include "threads/threads.h"

static thread_local thread_state state;

thread_state& this_thread_state() { return state; }

uint64_t thread_get_nthreads() { return 1; }
