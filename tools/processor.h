// SPDX-License-Identifier: Apache-2.0
// Can the library run on this machine? It needs the Armv8.3 complex instructions, and SVE with registers of 256 bits.
// For C and C++ programs compiled for any Armv8 processor, so that they end with a sentence where the library would end
// with SIGILL.
#ifndef QFFTF_TOOLS_PROCESSOR_H
#define QFFTF_TOOLS_PROCESSOR_H
#include <stdio.h>
#include <sys/auxv.h>
#include <sys/prctl.h>

#if !defined(__aarch64__) || !defined(__linux__)
#error "this file is for 64-bit Arm Linux"
#endif

#ifndef HWCAP_FCMA
#define HWCAP_FCMA (1UL << 14)
#endif
#ifndef HWCAP_SVE
#define HWCAP_SVE (1UL << 22)
#endif
#ifndef PR_SVE_GET_VL
#define PR_SVE_GET_VL 51
#endif
#ifndef PR_SVE_VL_LEN_MASK
#define PR_SVE_VL_LEN_MASK 0xffff
#endif

enum { needed_sve_bytes = 32 };

// Bytes of an SVE register, 0 without SVE.
static inline int sve_register_bytes(void) {
    if (!(getauxval(AT_HWCAP) & HWCAP_SVE)) return 0;
    return prctl(PR_SVE_GET_VL) & PR_SVE_VL_LEN_MASK;
}

// 1 when the library can run here; else 0, and says on the standard output why not.
static inline int processor_is_supported(void) {
    const int bytes = sve_register_bytes();
    if (!(getauxval(AT_HWCAP) & HWCAP_FCMA)) {
        puts("This processor lacks the Armv8.3 complex-number instructions (FCMA), which the library needs.");
        return 0;
    }
    if (bytes == 0) {
        puts("This processor, or its kernel, lacks the Scalable Vector Extension (SVE), which the library needs.");
        return 0;
    }
    if (bytes != needed_sve_bytes) {
        printf("SVE registers have %d bits here, and the library needs exactly %d.\n", 8 * bytes, 8 * needed_sve_bytes);
        if (bytes > needed_sve_bytes)
            puts("As root, 'echo 32 > /proc/sys/abi/sve_default_vector_length' shortens them for new processes.");
        return 0;
    }
    return 1;
}

#endif
