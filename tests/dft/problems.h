// SPDX-License-Identifier: Apache-2.0
// Complex problems of one dimension for the tests of this folder: how they are made, planned, run and compared.
#pragma once
#include "record/fft_plan.h"
#include "tests/support/emulated.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <string>

struct complex_problem {
    int64_t n;
    int64_t sign = sign_forward;
    int64_t is = 1, os = 1;
    bool in_place = false;
    uint32_t flags = 0;
    int64_t lanes = 0;  // count of a batch whose elements stand side by side, 0 for a single transform
    int64_t nthreads = 1;
};

// A record in the state that the planner receives, without arrays.
fft_plan record_of(const complex_problem& p);

// What a failing test prints: the problem in the words that qfftf-plan reads, and what took it.
std::string description(const complex_problem& p, const fft_plan* plan);

// A planned record. With a solve function that one alone plans the top record; else solver_table does.
class planned {
public:
    using solve_function = int (*)(fft_plan* plan);
    explicit planned(const fft_plan& problem, solve_function solve = nullptr);
    ~planned() { fft_plan_free(plan_); }
    planned(const planned&) = delete;
    planned& operator=(const planned&) = delete;
    explicit operator bool() const { return plan_ != nullptr; }
    fft_plan* get() const { return plan_; }
    fft_plan* operator->() const { return plan_; }
    std::string solver() const { return plan_ && plan_->solver_name ? plan_->solver_name : "none"; }
    std::string execution() const { return plan_ ? plan_->execute_name : "none"; }

private:
    fft_plan* plan_;
};

// One input of a length and its transforms in both directions.
class sample {
public:
    explicit sample(int64_t n, uint64_t seed = 1);
    const std::vector<std::complex<float>>& signal() const { return signal_; }
    const std::vector<reference::complex>& transform(int64_t sign) const;

private:
    std::vector<std::complex<float>> signal_;
    std::vector<reference::complex> forward_, backward_;
};

// The relative error that a transform of this length may have.
double error_limit(int64_t n);

// Plans the problem, on guarded arrays of its layout, runs it once and compares all outputs. Elements that the layout
// doesn't address must stay untouched, and so must the input when it isn't in place.
testing::AssertionResult computes(const complex_problem& p, const sample& expected,
                                  planned::solve_function solve = nullptr);
inline testing::AssertionResult computes(const complex_problem& p, planned::solve_function solve = nullptr) {
    return computes(p, sample(p.n), solve);
}
