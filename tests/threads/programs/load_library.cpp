// SPDX-License-Identifier: Apache-2.0
// "load_library PATH [BATCH]": loads the library from the path as a program of a user does that links nothing. With a
// batch it executes plans of many lengths on 4 threads and on one, and says whether the results are equal bit by bit.
#include <dlfcn.h>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "qfftf.h"

namespace {

using complex_array = std::vector<std::complex<float>>;

void* address(void* library, const char* name) {
    void* found = dlsym(library, name);
    if (!found) fprintf(stderr, "%s is missing\n", name), exit(3);
    return found;
}

// A function of the public header, found in the library by its name.
#define FUNCTION(library, name) reinterpret_cast<decltype(&name)>(address(library, #name))

struct fft_library {
    void* handle;
    void transform(int nthreads, int n, int batch, complex_array& in, complex_array& out) const {
        FUNCTION(handle, qsl_fftf_plan_with_nthreads)(nthreads);
        const qsl_fftf_plan plan = FUNCTION(handle, qsl_fftf_plan_many_dft)(
            1, &n, batch, reinterpret_cast<qsl_fftf_complex*>(in.data()), nullptr, 1, n,
            reinterpret_cast<qsl_fftf_complex*>(out.data()), nullptr, 1, n, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
        if (!plan) fprintf(stderr, "no plan for length %d, batch %d\n", n, batch), exit(4);
        FUNCTION(handle, qsl_fftf_execute)(plan);
        FUNCTION(handle, qsl_fftf_destroy_plan)(plan);
    }
};

}  // namespace

int main(int argc, char** argv) {
    const fft_library library = {dlopen(argv[1], RTLD_NOW)};
    if (!library.handle) {
        fprintf(stderr, "%s\n", dlerror());
        return 2;
    }
    const int batch = argc > 2 ? atoi(argv[2]) : 0;
    if (batch == 0) return 0;
    int differing = 0;
    for (int n : {5, 16, 60, 64, 128, 1000}) {
        complex_array in(n * batch), one(n * batch), four(n * batch);
        for (size_t i = 0; i < in.size(); ++i) in[i] = {i % 17 - 8.0f, i % 11 - 5.0f};
        library.transform(1, n, batch, in, one);
        library.transform(4, n, batch, in, four);
        differing += memcmp(one.data(), four.data(), one.size() * sizeof one[0]) != 0;
    }
    printf("%d lengths differ\n", differing);
    FUNCTION(library.handle, qsl_fftf_cleanup_threads)();
}
