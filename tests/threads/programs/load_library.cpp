// SPDX-License-Identifier: Apache-2.0
// "load_library PATH [BATCH]": loads the library from the path as a program of a user does that links nothing. With a
// batch it executes plans of many lengths on 4 threads and on one, and says whether the results are equal bit by bit.
#include <dlfcn.h>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

using complex_array = std::vector<std::complex<float>>;

template <class F>
F* function(void* library, const char* name) {
    void* found = dlsym(library, name);
    if (!found) fprintf(stderr, "%s is missing\n", name), exit(3);
    return reinterpret_cast<F*>(found);
}

struct fft_library {
    void* handle;
    void transform(int nthreads, int n, int batch, complex_array& in, complex_array& out) const {
        function<void(int)>(handle, "qsl_fftf_plan_with_nthreads")(nthreads);
        void* plan = function<void*(int, const int*, int, void*, const int*, int, int, void*, const int*, int, int, int,
                                    unsigned)>(handle, "qsl_fftf_plan_many_dft")(1, &n, batch, in.data(), nullptr, 1, n,
                                                                                 out.data(), nullptr, 1, n, -1, 0);
        if (!plan) fprintf(stderr, "no plan for length %d, batch %d\n", n, batch), exit(4);
        function<void(void*)>(handle, "qsl_fftf_execute")(plan);
        function<void(void*)>(handle, "qsl_fftf_destroy_plan")(plan);
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
    function<void()>(library.handle, "qsl_fftf_cleanup_threads")();
}
