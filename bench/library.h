// SPDX-License-Identifier: Apache-2.0
// A transform library as a shared object, reached by the names of its calls. The planning calls of this library and of
// its peer take the same arguments in the same order, so one table of functions with two prefixes serves both, and any
// two builds can run side by side.
#pragma once
#include "problems/problem.h"

#include <cstdint>
#include <memory>
#include <string>

namespace bench {

using namespace problems;

template <typename Real>
class library {
public:
    virtual ~library() = default;
    const std::string& name() const { return name_; }

    // Null when the library refuses the problem.
    virtual void* plan(const problem& p, Real* in, Real* out) = 0;
    virtual void execute(void* plan) = 0;
    virtual void destroy(void* plan) = 0;
    // Drops what it remembers of earlier plans, if it remembers anything.
    virtual void forget() = 0;

protected:
    std::string name_;
};

// Opens a shared object; the word "memcpy" stands for a plain copy, the yardstick of transpose and copy problems.
// Throws std::runtime_error when the file or a call is missing.
template <typename Real>
std::unique_ptr<library<Real>> open_library(const std::string& file);

}  // namespace bench
