// SPDX-License-Identifier: Apache-2.0
// An array of floats between two guard zones. All of it starts as one NaN pattern, so that a test can tell which
// elements were written, and a result that depends on an element that wasn't set is NaN.
#pragma once
#include <bit>
#include <complex>
#include <cstdint>
#include <vector>

class guarded_floats {
public:
    explicit guarded_floats(size_t count) : count_(count), floats_(count + 2 * zone, pattern()) {}

    void reset() { floats_.assign(floats_.size(), pattern()); }

    float* data() { return floats_.data() + zone; }
    float& operator[](size_t i) { return floats_[zone + i]; }
    size_t size() const { return count_; }

    bool is_untouched(size_t i) const { return has_pattern(zone + i); }
    bool zones_are_intact() const {
        for (size_t i = 0; i < zone; ++i)
            if (!has_pattern(i) || !has_pattern(zone + count_ + i)) return false;
        return true;
    }

    // Complex element i, and whether both of its parts are untouched.
    std::complex<float> complex_at(size_t i) { return {(*this)[2 * i], (*this)[2 * i + 1]}; }
    void set_complex(size_t i, std::complex<float> z) {
        (*this)[2 * i] = z.real();
        (*this)[2 * i + 1] = z.imag();
    }
    bool complex_is_untouched(size_t i) const { return is_untouched(2 * i) && is_untouched(2 * i + 1); }

private:
    static constexpr size_t zone = 64;
    static constexpr uint32_t pattern_bits = 0x7fc5aa55;
    static float pattern() { return std::bit_cast<float>(pattern_bits); }
    bool has_pattern(size_t i) const { return std::bit_cast<uint32_t>(floats_[i]) == pattern_bits; }

    size_t count_;
    std::vector<float> floats_;
};
