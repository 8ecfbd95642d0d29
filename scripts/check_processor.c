// SPDX-License-Identifier: Apache-2.0
// Tells whether the library can run on this machine: Armv8.3 complex instructions, and SVE with registers of 256 bits.
// Compiled for any Armv8 processor, so that it ends with a sentence where the library would end with SIGILL.
#include <stdio.h>
#include <sys/auxv.h>
#include <sys/prctl.h>

#if !defined(__aarch64__) || !defined(__linux__)
#error "this program is for 64-bit Arm Linux"
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

enum { needed_bytes = 32 };

int main(void) {
    const unsigned long hwcap = getauxval(AT_HWCAP);
    if (!(hwcap & HWCAP_FCMA)) {
        puts("This processor lacks the Armv8.3 complex-number instructions (FCMA), which the library needs.");
        return 1;
    }
    if (!(hwcap & HWCAP_SVE)) {
        puts("This processor, or its kernel, lacks the Scalable Vector Extension (SVE), which the library needs.");
        return 1;
    }
    const int bytes = prctl(PR_SVE_GET_VL) & PR_SVE_VL_LEN_MASK;
    if (bytes != needed_bytes) {
        printf("SVE registers have %d bits here, and the library needs exactly %d.\n", 8 * bytes, 8 * needed_bytes);
        if (bytes > needed_bytes) {
            puts("As root, 'echo 32 > /proc/sys/abi/sve_default_vector_length' shortens them for new processes.");
        }
        return 1;
    }
    return 0;
}
