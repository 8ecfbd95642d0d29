// SPDX-License-Identifier: Apache-2.0
// Memory comes from the C library and may be released by its free().
#include "shim/include/fftw3.h"

#include <cstdlib>

namespace {

constexpr size_t cache_line = 64;

void* allocate(size_t count, size_t bytes_each) {
    size_t bytes;
    void* block = nullptr;
    if (__builtin_mul_overflow(count, bytes_each, &bytes)) return nullptr;
    return posix_memalign(&block, cache_line, bytes) == 0 ? block : nullptr;
}

}  // namespace

void* fftwf_malloc(size_t n) { return allocate(n, 1); }
float* fftwf_alloc_real(size_t n) { return static_cast<float*>(allocate(n, sizeof(float))); }
fftwf_complex* fftwf_alloc_complex(size_t n) { return static_cast<fftwf_complex*>(allocate(n, sizeof(fftwf_complex))); }
void fftwf_free(void* p) { free(p); }

// The library takes arrays of any alignment: none is different from another.
int fftwf_alignment_of(float*) { return 0; }
