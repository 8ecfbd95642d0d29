// SPDX-License-Identifier: Apache-2.0
// The vocabulary in compiler vectors of any number of complex lanes: lets every kernel run on any host, and under the
// sanitizers. Products aren't fused here.
#pragma once
#include <cstdint>
#include <cstring>

#include "kernels/ops/inline.h"

namespace portable {

template <int lanes>
struct vector {
    typedef float floats __attribute__((vector_size(8 * lanes)));
    floats v;
};

template <int lanes>
OPS_INLINE vector<lanes> load(const float* p) {
    vector<lanes> r;
    std::memcpy(&r.v, p, sizeof r.v);
    return r;
}
template <int lanes>
OPS_INLINE void store(float* p, vector<lanes> a) {
    std::memcpy(p, &a.v, sizeof a.v);
}
template <int lanes>
[[gnu::noinline]] vector<lanes> load(const float* p, int64_t floats) {
    vector<lanes> r{};
    std::memcpy(&r.v, p, floats * sizeof *p);
    return r;
}
template <int lanes>
[[gnu::noinline]] void store(float* p, vector<lanes> a, int64_t floats) {
    std::memcpy(p, &a.v, floats * sizeof *p);
}
// Loading a kept vector again saves a copy on machines that overwrite operands, not here.
template <int lanes>
using in_memory = vector<lanes>;
template <int lanes>
OPS_INLINE vector<lanes> reload(vector<lanes> place) {
    return place;
}
template <int lanes>
OPS_INLINE vector<lanes> constant(const float* p) {
    vector<lanes> r;
    for (int i = 0; i < 2 * lanes; ++i) r.v[i] = p[i % 2];
    return r;
}

template <int lanes>
OPS_INLINE vector<lanes> same(float k) {
    return {vector<lanes>{}.v + k};
}

template <int lanes>
OPS_INLINE vector<lanes> conjugation() {
    vector<lanes> r;
    for (int i = 0; i < 2 * lanes; ++i) r.v[i] = i % 2 ? -1.0f : 1.0f;
    return r;
}

template <int lanes>
OPS_INLINE vector<lanes> add(vector<lanes> a, vector<lanes> b) {
    return {a.v + b.v};
}
template <int lanes>
OPS_INLINE vector<lanes> sub(vector<lanes> a, vector<lanes> b) {
    return {a.v - b.v};
}
template <int lanes>
OPS_INLINE vector<lanes> times_i(vector<lanes> a) {
    if constexpr (lanes == 1) return {__builtin_shufflevector(-a.v, a.v, 1, 2)};
    if constexpr (lanes == 2) return {__builtin_shufflevector(-a.v, a.v, 1, 4, 3, 6)};
    if constexpr (lanes == 4) return {__builtin_shufflevector(-a.v, a.v, 1, 8, 3, 10, 5, 12, 7, 14)};
}
template <int lanes>
OPS_INLINE vector<lanes> add_i(vector<lanes> a, vector<lanes> b) {
    return add(a, times_i(b));
}
template <int lanes>
OPS_INLINE vector<lanes> sub_i(vector<lanes> a, vector<lanes> b) {
    return sub(a, times_i(b));
}
template <int lane, int lanes, int constant_lanes>
OPS_INLINE vector<lanes> scale(vector<lanes> a, vector<constant_lanes> k) {
    return {a.v * k.v[lane]};
}
template <int lane, int lanes, int constant_lanes>
OPS_INLINE vector<lanes> fma(vector<lanes> a, vector<lanes> b, vector<constant_lanes> k) {
    return {a.v + b.v * k.v[lane]};
}
template <int lane, int lanes, int constant_lanes>
OPS_INLINE vector<lanes> fms(vector<lanes> a, vector<lanes> b, vector<constant_lanes> k) {
    return {a.v - b.v * k.v[lane]};
}
template <int lanes>
OPS_INLINE vector<lanes> imaginary_parts(vector<lanes> k) {
    if constexpr (lanes == 1) return {__builtin_shufflevector(k.v, k.v, 1, 1)};
    if constexpr (lanes == 2) return {__builtin_shufflevector(k.v, k.v, 1, 1, 3, 3)};
    if constexpr (lanes == 4) return {__builtin_shufflevector(k.v, k.v, 1, 1, 3, 3, 5, 5, 7, 7)};
}
template <int lanes>
OPS_INLINE vector<lanes> fma_i(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return {a.v + times_i(b).v * imaginary_parts(k).v};
}
template <int lanes>
OPS_INLINE vector<lanes> fms_i(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return {a.v - times_i(b).v * imaginary_parts(k).v};
}
// A constant for each float.
template <int lanes>
OPS_INLINE vector<lanes> scale_all(vector<lanes> a, vector<lanes> k) {
    return {a.v * k.v};
}
template <int lanes>
OPS_INLINE vector<lanes> fma_all(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return {a.v + b.v * k.v};
}
template <int lanes>
OPS_INLINE vector<lanes> fms_all(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return {a.v - b.v * k.v};
}
template <int lanes>
OPS_INLINE vector<lanes> fma_all_into_b(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return fma_all(a, b, k);
}
template <int lanes>
OPS_INLINE vector<lanes> fms_all_into_b(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return fms_all(a, b, k);
}
template <int lanes>
OPS_INLINE vector<lanes> twice_minus(vector<lanes> a, vector<lanes> b, vector<lanes>) {
    return {a.v + a.v - b.v};
}
template <int lanes>
OPS_INLINE vector<lanes> twice_minus_into_b(vector<lanes> a, vector<lanes> b, vector<lanes> two) {
    return twice_minus(a, b, two);
}
template <int lanes>
OPS_INLINE vector<lanes> mul(vector<lanes> a, vector<lanes> w) {
    const auto b = times_i(a).v;
    if constexpr (lanes == 1)
        return {a.v * __builtin_shufflevector(w.v, w.v, 0, 0) + b * __builtin_shufflevector(w.v, w.v, 1, 1)};
    if constexpr (lanes == 2)
        return {a.v * __builtin_shufflevector(w.v, w.v, 0, 0, 2, 2) +
                b * __builtin_shufflevector(w.v, w.v, 1, 1, 3, 3)};
    if constexpr (lanes == 4)
        return {a.v * __builtin_shufflevector(w.v, w.v, 0, 0, 2, 2, 4, 4, 6, 6) +
                b * __builtin_shufflevector(w.v, w.v, 1, 1, 3, 3, 5, 5, 7, 7)};
}

template <int lanes>
OPS_INLINE vector<lanes> zip_lo(vector<lanes> a, vector<lanes> b) {
    if constexpr (lanes == 2) return {__builtin_shufflevector(a.v, b.v, 0, 1, 4, 5)};
    if constexpr (lanes == 4) return {__builtin_shufflevector(a.v, b.v, 0, 1, 8, 9, 2, 3, 10, 11)};
}
template <int lanes>
OPS_INLINE vector<lanes> zip_hi(vector<lanes> a, vector<lanes> b) {
    if constexpr (lanes == 2) return {__builtin_shufflevector(a.v, b.v, 2, 3, 6, 7)};
    if constexpr (lanes == 4) return {__builtin_shufflevector(a.v, b.v, 4, 5, 12, 13, 6, 7, 14, 15)};
}

}  // namespace portable
