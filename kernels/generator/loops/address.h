// SPDX-License-Identifier: Apache-2.0
// Addresses of elements at a run-time stride: one pointer for every eight elements and seven shared offsets, so that
// no address costs a multiplication and few registers are needed.
#pragma once
#include <string>

#include "kernels/generator/emit/text.h"

namespace generator {

class strided_address {
public:
    // Element j stands at base + j * step, all in floats.
    strided_address(std::string base, std::string step, int count)
        : base_(std::move(base)), step_(std::move(step)), count_(count) {}

    void declare_steps(text& out) const {
        for (int j = 2; j < count_ && j <= 8; ++j) out.line("const int64_t ", step_, j, " = ", j, " * ", step_, ";");
    }
    void declare_bases(text& out) const {
        for (int j = 8; j < count_; j += 8)
            out.line("auto* const ", base(j), " = base(", base(j - 8), " + ", step_, 8, ");");
    }
    std::string at(int j) const {
        if (j % 8 == 0) return base(j);
        return base(j) + " + " + step_ + (j % 8 == 1 ? "" : std::to_string(j % 8));
    }

private:
    std::string base(int j) const { return j < 8 ? base_ : base_ + std::to_string(j / 8 * 8); }

    std::string base_, step_;
    int count_;
};

}  // namespace generator
