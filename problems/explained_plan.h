// SPDX-License-Identifier: Apache-2.0
// A problem in words as a plan, or as the reason why there is none.
#pragma once
#include "include/qfftf.h"

#include <memory>
#include <string>
#include <vector>

struct destroy_plan {
    void operator()(qsl_fftf_plan plan) const { qsl_fftf_destroy_plan(plan); }
};

struct explained_plan {
    std::unique_ptr<fft_plan, destroy_plan> plan;
    std::string reason;          // empty with a plan
    std::vector<float> in, out;  // of a measured problem, which runs on them
};

// `words` are a problem of the problem language or a call (problems/call_words.h). Sets the calling program's thread
// count to what the words ask for. Throws std::invalid_argument, which names the word it stumbled over.
explained_plan explain(const std::string& words);
