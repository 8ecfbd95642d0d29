// SPDX-License-Identifier: Apache-2.0
// One transform of any kind of one contiguous sequence: by the library in single precision, and the same by the
// reference in double precision, in n log n operations.
#pragma once
#include <string>
#include <vector>

// As the problem language of bench/ names them.
enum class transform {
    c2c,
    c2c_backward,
    r2c,
    c2r,
    r2hc,
    hc2r,
    dht,
    redft00,
    redft01,
    redft10,
    redft11,
    rodft00,
    rodft01,
    rodft10,
    rodft11
};
inline constexpr int transform_count = 15;
const char* name_of(transform t);

size_t floats_in(transform t, int n);
size_t floats_out(transform t, int n);

// The length whose prime factors decide which algorithm is run: n - 1 and n + 1 for the two kinds of type I.
int deciding_length(transform t, int n);
int largest_prime_factor(int n);

// Empty where the library makes no plan.
std::vector<float> by_library(transform t, int n, const std::vector<float>& in);
std::vector<double> by_reference(transform t, int n, const std::vector<float>& in);
