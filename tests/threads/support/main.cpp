// SPDX-License-Identifier: Apache-2.0
// Runs the tests under a watchdog: a test that takes too long is reported by name and ends the program as failed.
#include <gtest/gtest.h>

#include <unistd.h>
#include <csignal>
#include <cstdio>

namespace {

constexpr unsigned seconds_per_test = 100;
char verdict[256];
int verdict_length;

void report_hang(int) {
    const ssize_t written = write(STDERR_FILENO, verdict, verdict_length);
    _exit(written > 0 ? 86 : 87);
}

class watchdog : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override {
        verdict_length = snprintf(verdict, sizeof verdict, "\nHANG: %s.%s did not end in %u seconds\n",
                                  test.test_suite_name(), test.name(), seconds_per_test);
        signal(SIGALRM, report_hang);
        alarm(seconds_per_test);
    }
    void OnTestEnd(const testing::TestInfo&) override { alarm(0); }
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new watchdog);
    return RUN_ALL_TESTS();
}
