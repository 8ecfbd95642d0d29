// SPDX-License-Identifier: Apache-2.0
// The shared object as a program meets that loads it by name: where it looks for libtarn.so, what it prints, and the
// same transforms on every back-end.
#include "installed_tree.h"
#include "support/start_program.h"

namespace {

const std::string cannot_find_tarn =
    "QSL_FFT THREAD TYPE ERROR: Cannot find tarn_so. Use pthread in later calculation.\n";
const std::string too_long = "FFT Lib path is too long, must less than 2048 characters\n";

program_result load(const std::string& environment, const std::string& library, int batch = 0) {
    return start_program(environment, std::string(LOAD_LIBRARY " ") + library + " " + std::to_string(batch));
}

TEST(LoadedLibrary, LooksForTarnBesideItself) {
    const installed_tree with_tarn(LIBRARY, STANDIN);
    program_result got = load("QSL_FFT_THREAD_TYPE=TARN", with_tarn.ours());
    EXPECT_EQ(got.exit_code, 0);
    EXPECT_EQ(got.out + got.err, "");
    got = load("QSL_FFT_THREAD_TYPE=TARN", with_tarn.ours_by_a_name_of(2003));
    EXPECT_EQ(got.exit_code, 0);
    EXPECT_EQ(got.out + got.err, "");
    got = load("QSL_FFT_THREAD_TYPE=TARN", with_tarn.ours_by_a_name_of(2004));
    EXPECT_EQ(got.exit_code, 0);
    EXPECT_EQ(got.out, too_long);
    EXPECT_EQ(got.err, cannot_find_tarn);
}

TEST(LoadedLibrary, SaysThatTarnIsMissing) {
    for (const char* incomplete : {"", STANDIN_WITHOUT_A_FUNCTION}) {
        const installed_tree tree(LIBRARY, incomplete);
        const program_result got = load("QSL_FFT_THREAD_TYPE=TARN", tree.ours());
        EXPECT_EQ(got.exit_code, 0);
        EXPECT_EQ(got.out, "");
        EXPECT_EQ(got.err, cannot_find_tarn);
    }
}

TEST(LoadedLibrary, ComputesTheSameOnEveryBackend) {
    const installed_tree tree(LIBRARY, STANDIN);
    for (const char* backend : {"QSL_FFT_THREAD_TYPE=POOL", "QSL_FFT_THREAD_TYPE=OMP", "QSL_FFT_THREAD_TYPE=TARN"}) {
        SCOPED_TRACE(backend);
        const program_result got = load(backend, tree.ours(), 40);
        EXPECT_EQ(got.exit_code, 0);
        EXPECT_EQ(got.err, "");
        EXPECT_NE(got.out.find("0 lengths differ\n"), std::string::npos) << got.out;
        EXPECT_EQ(got.out.find("loop flags 15") != std::string::npos, strstr(backend, "TARN") != nullptr) << got.out;
    }
}

const char* const own_backends[] = {"QSL_FFT_AFFINITY=NO", "QSL_FFT_AFFINITY=NO QSL_FFT_IDLE=SLEEP",
                                    "QSL_FFT_THREAD_TYPE=OMP"};

void expect_life(const char* word, const std::string& out) {
    for (const char* backend : own_backends) {
        SCOPED_TRACE(std::string(backend) + ", " + word);
        const program_result got = start_program(backend, std::string(LOAD_LIBRARY " ") + LIBRARY + " 12 " + word);
        EXPECT_EQ(got.exit_code, 0);
        EXPECT_EQ(got.err, "");
        EXPECT_EQ(got.out, out);
    }
}

TEST(LoadedLibrary, MayBeUnloadedWithIdleThreads) { expect_life("close", "0 lengths differ\n0 lengths differ\n"); }

// Of a plan that another thread was executing the child's storage stays lent: it brings its own.
TEST(LoadedLibrary, WorksInTheChildOfAFork) {
    expect_life("fork", "0 lengths differ\n0 children failed\n0 children failed\n");
}

TEST(LoadedLibrary, WorksAtExit) { expect_life("exit", "0 lengths differ\nat exit the same\n"); }

}  // namespace
