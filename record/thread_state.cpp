// SPDX-License-Identifier: Apache-2.0
#include "record/thread_state.h"

constinit thread_local thread_state current_thread_state;
