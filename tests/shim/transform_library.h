// SPDX-License-Identifier: Apache-2.0
// One implementation of the interface, opened by file name, so that two of them can run side by side: the test program
// is linked with neither, and each keeps its names to itself.
#pragma once
#include "shim/include/fftw3.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

struct transform_library {
    void* handle;
    template <class Function>
    Function* find(const char* name) const {
        void* address = dlsym(handle, name);
        if (!address) {
            fprintf(stderr, "%s\n", dlerror());
            exit(1);
        }
        return reinterpret_cast<Function*>(address);
    }

    explicit transform_library(const char* file) : handle(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
        if (handle) return;
        fprintf(stderr, "%s\n", dlerror());
        exit(1);
    }

#define CALL(name) decltype(&fftwf_##name) name = find<decltype(fftwf_##name)>("fftwf_" #name)
    CALL(plan_many_dft);
    CALL(plan_many_dft_r2c);
    CALL(plan_many_dft_c2r);
    CALL(plan_many_r2r);
    CALL(plan_guru_dft);
    CALL(plan_guru_dft_r2c);
    CALL(plan_guru_dft_c2r);
    CALL(plan_guru_r2r);
    CALL(plan_guru64_dft);
    CALL(plan_guru64_dft_r2c);
    CALL(plan_guru64_dft_c2r);
    CALL(plan_guru64_r2r);
    CALL(plan_guru64_split_dft);
    CALL(plan_guru64_split_dft_r2c);
    CALL(plan_guru64_split_dft_c2r);
    CALL(execute);
    CALL(execute_dft);
    CALL(execute_dft_r2c);
    CALL(execute_dft_c2r);
    CALL(execute_r2r);
    CALL(execute_split_dft);
    CALL(execute_split_dft_r2c);
    CALL(execute_split_dft_c2r);
    CALL(destroy_plan);
#undef CALL
};
