// SPDX-License-Identifier: Apache-2.0
// The surroundings of a test that executes plans of several threads: workers go where they like, sleep between loops
// and end with the test.
#pragma once
#include <gtest/gtest.h>

#include <cstdlib>

#include "include/qfftf.h"

class sleeping_workers : public testing::Test {
protected:
    void SetUp() override {
        setenv("QSL_FFT_AFFINITY", "NO", 1);
        qsl_fftf_plan_with_nthreads(200);  // above the count from which workers sleep
    }
    void TearDown() override { qsl_fftf_cleanup_threads(); }
};
