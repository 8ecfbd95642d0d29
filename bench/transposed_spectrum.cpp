// SPDX-License-Identifier: Apache-2.0
// transposed_spectrum LIBRARY N r2c|c2r
// The transform that GROMACS asks for: N x N x N real numbers in padded rows, and their spectrum elsewhere with its
// first two dimensions exchanged. Executes it four times between the markers of bench/model/model, by a library with
// the calls of FFTW 3:
//     bench/model/model --per 4 -- build/cross/bench/transposed_spectrum build/cross/shim/libqfftf_fftw3f.so 32 r2c
#include "bench/markers.h"
#include "shim/include/fftw3.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

int main(int argc, char** argv) {
    void* const library = argc == 4 ? dlopen(argv[1], RTLD_NOW) : nullptr;
    if (!library) {
        fprintf(stderr, "%s\n", argc == 4 ? dlerror() : "usage: transposed_spectrum LIBRARY N r2c|c2r");
        return 2;
    }
    const auto plan_r2c =
        reinterpret_cast<decltype(&fftwf_plan_guru_dft_r2c)>(dlsym(library, "fftwf_plan_guru_dft_r2c"));
    const auto plan_c2r =
        reinterpret_cast<decltype(&fftwf_plan_guru_dft_c2r)>(dlsym(library, "fftwf_plan_guru_dft_c2r"));
    const auto execute = reinterpret_cast<decltype(&fftwf_execute)>(dlsym(library, "fftwf_execute"));
    const int n = atoi(argv[2]), half = n / 2 + 1, row = 2 * half;
    const bool forward = strcmp(argv[3], "r2c") == 0;
    std::vector<float> numbers(size_t(n) * n * row, 1), spectrum(size_t(2) * n * n * half, 1);
    auto* const coefficients = reinterpret_cast<fftwf_complex*>(spectrum.data());
    // The spectrum stands as [second dimension][half of the third][first].
    const int real_strides[] = {n * row, row, 1}, spectrum_strides[] = {1, half * n, n};
    fftwf_iodim dims[3];
    for (int d = 0; d < 3; ++d)
        dims[d] = forward ? fftwf_iodim{n, real_strides[d], spectrum_strides[d]}
                          : fftwf_iodim{n, spectrum_strides[d], real_strides[d]};
    const unsigned flags = FFTW_ESTIMATE | FFTW_DESTROY_INPUT;
    const fftwf_plan plan = forward ? plan_r2c(3, dims, 0, nullptr, numbers.data(), coefficients, flags)
                                    : plan_c2r(3, dims, 0, nullptr, coefficients, numbers.data(), flags);
    if (!plan) return 1;
    execute(plan);  // and the loader has found what it calls
    bench::begin_counting();
    for (int i = 0; i < 4; ++i) execute(plan);
    bench::end_counting();
}
