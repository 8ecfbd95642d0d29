// SPDX-License-Identifier: Apache-2.0
// The one interface to the three parallel back-ends. Nothing above this layer knows which back-end runs.
#pragma once
#include <cstdint>

enum thread_backend_kind : uint32_t { backend_pool = 0, backend_openmp = 1, backend_tarn = 2 };

uint32_t thread_backend_type();
// The thread count for a plan made now.
uint64_t thread_get_nthreads();
