// SPDX-License-Identifier: Apache-2.0
// Processes under limits of the system: the calls fail where the kernel makes them fail, not where a test does.
#include "tests/threads/support/start_program.h"

#include <gtest/gtest.h>

namespace {

// Leaks are searched for by another thread, which may not be made.
program_result limited(const std::string& words) {
    return start_program("QSL_FFT_AFFINITY=NO ASAN_OPTIONS=detect_leaks=0", LIMITED_PROGRAM " " + words);
}

}  // namespace

// What the program takes to begin with and some more. Under an emulator, which needs memory of its own, it isn't the
// process that is limited but the address space that the emulator has for the program.
TEST(Limits, OfAddressSpaceLeavePlansNullOrRightAndExecutionsCompleteOrUntouched) {
#if defined(QFFTF_SANITIZE)
    GTEST_SKIP() << "the sanitizer can't work where address space is short";
#endif
    std::string limit = "QEMU_RESERVED_VA=160M";
    if (!*EMULATOR) {
        const program_result size = limited("size");
        ASSERT_EQ(size.exit_code, 0) << size.err;
        const std::string kilobytes = std::to_string(std::stol(size.out) + (64 << 10));
        // start_program puts its words between "env" and the program, so the shell that sets the limit stands there.
        limit = "sh -c 'ulimit -v " + kilobytes + "; exec \"$@\"' sh";
    }
    const program_result got = start_program(limit, LIMITED_PROGRAM " space");
    EXPECT_EQ(got.exit_code, 0) << got.out << got.err;
    EXPECT_EQ(got.err, "");
}

TEST(Limits, OfThreadsCostSpeedAlone) {
    const program_result got = limited("threads");
    if (got.exit_code == 77) GTEST_SKIP() << "this root can't become another user";
    EXPECT_EQ(got.exit_code, 0) << got.out << got.err;
    EXPECT_EQ(got.err, "");
}
