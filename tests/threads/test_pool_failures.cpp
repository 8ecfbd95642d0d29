// SPDX-License-Identifier: Apache-2.0
// A worker that can't be made never costs a partition: the caller runs it.
#include "include/qfftf.h"
#include "loop_record.h"
#include "support/faults.h"

namespace {

class PoolFailures : public testing::TestWithParam<int> {
protected:
    void SetUp() override {
        setenv("QSL_FFT_AFFINITY", "NO", 1);
        qsl_fftf_plan_with_nthreads(GetParam());
    }
    void TearDown() override { qsl_fftf_cleanup_threads(); }

    // A loop of four parts with `made` workers, then one without failures.
    void check(std::atomic<int>& left) {
        for (int made = 0; made < 3; ++made) {
            SCOPED_TRACE(testing::Message() << made << " workers could be made");
            loop_record loop;
            left = made;
            loop.run_and_check(100, 4, 1);
            left = -1;
            int by_caller = 0;
            for (int i = 0; i < 4; ++i) by_caller += pthread_equal(loop.partitions[i].thread, pthread_self()) != 0;
            EXPECT_EQ(by_caller, 4 - made);
            loop.run_and_check(100, 4, 1);
            qsl_fftf_cleanup_threads();
        }
    }
};

TEST_P(PoolFailures, LeavePartitionsToTheCallerWithoutThreads) { check(creates_left); }
TEST_P(PoolFailures, LeavePartitionsToTheCallerWithoutRecords) { check(callocs_left); }

INSTANTIATE_TEST_SUITE_P(Modes, PoolFailures, testing::Values(8, 200),
                         [](const auto& mode) { return mode.param < 200 ? "Spinning" : "Waiting"; });

}  // namespace
