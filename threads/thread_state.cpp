// SPDX-License-Identifier: Apache-2.0
#include "threads/thread_state.h"

static thread_local thread_state state;

thread_state& this_thread_state() { return state; }
