// SPDX-License-Identifier: Apache-2.0
// Arrays of elements for the tests of data movers. A source holds a different value in every float and is exactly as
// large as the layout, so that a sanitizer sees every read beyond it. A destination holds a pattern, with a guard zone
// on both sides; the whole of it is compared with what a plain loop makes of a second one.
#pragma once
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

// Largest index of a matrix layout plus one: what an array must hold.
inline int64_t span(int64_t rows, int64_t columns, int64_t ld) {
    return rows && columns ? (rows - 1) * ld + columns : 0;
}

inline std::vector<float> numbered(int64_t elements, int width) {
    std::vector<float> a;
    a.reserve(1);  // an array, even where the layout is empty
    a.resize(elements * width);
    for (size_t i = 0; i < a.size(); ++i) a[i] = static_cast<float>(i + 1);
    return a;
}

class guarded {
public:
    guarded(int64_t elements, int width) : width_(width), floats_((elements + 2 * guard) * width) {
        for (size_t i = 0; i < floats_.size(); ++i) floats_[i] = -1.0f - static_cast<float>(i % 1000);
    }
    float* data() { return floats_.data() + guard * width_; }
    void put(int64_t at, const float* element) { memcpy(data() + at * width_, element, width_ * sizeof(float)); }

    // First difference as a text, empty when both are equal in every bit.
    std::string difference(const guarded& expected) const {
        if (memcmp(floats_.data(), expected.floats_.data(), floats_.size() * sizeof(float)) == 0) return "";
        for (size_t i = 0; i < floats_.size(); ++i)
            if (floats_[i] != expected.floats_[i])
                return "float " + std::to_string(static_cast<int64_t>(i) - guard * width_) + " is " +
                       std::to_string(floats_[i]) + " instead of " + std::to_string(expected.floats_[i]);
        return "bits differ";
    }

private:
    static constexpr int64_t guard = 48;  // elements; more than any vector or tile edge
    int width_;
    std::vector<float> floats_;
};
