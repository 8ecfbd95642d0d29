// SPDX-License-Identifier: Apache-2.0
// The vocabulary in plain C++ over vectors of any number of complex lanes: lets every kernel run on any host.
#pragma once
#include <cstdint>

#include "kernels/ops/inline.h"

namespace portable {

template <int lanes>
struct vector {
    float v[2 * lanes];
};

template <int lanes>
OPS_INLINE vector<lanes> load(const float* p, int64_t floats = 2 * lanes) {
    vector<lanes> r{};
    for (int i = 0; i < floats; ++i) r.v[i] = p[i];
    return r;
}
template <int lanes>
OPS_INLINE void store(float* p, vector<lanes> a, int64_t floats = 2 * lanes) {
    for (int i = 0; i < floats; ++i) p[i] = a.v[i];
}
template <int lanes>
OPS_INLINE vector<lanes> constant(const float* p) {
    vector<lanes> r;
    for (int i = 0; i < 2 * lanes; ++i) r.v[i] = p[i % 2];
    return r;
}
template <int lanes>
OPS_INLINE vector<lanes> mul(vector<lanes> a, vector<lanes> w) {
    vector<lanes> r;
    for (int i = 0; i < 2 * lanes; i += 2) {
        r.v[i] = __builtin_fmaf(-a.v[i + 1], w.v[i + 1], a.v[i] * w.v[i]);
        r.v[i + 1] = __builtin_fmaf(a.v[i + 1], w.v[i], a.v[i] * w.v[i + 1]);
    }
    return r;
}
template <int lanes>
OPS_INLINE vector<lanes> times_i(vector<lanes> a) {
    vector<lanes> r;
    for (int i = 0; i < 2 * lanes; i += 2) r.v[i] = -a.v[i + 1], r.v[i + 1] = a.v[i];
    return r;
}
template <int lanes>
OPS_INLINE vector<lanes> add(vector<lanes> a, vector<lanes> b) {
    for (int i = 0; i < 2 * lanes; ++i) a.v[i] += b.v[i];
    return a;
}
template <int lanes>
OPS_INLINE vector<lanes> sub(vector<lanes> a, vector<lanes> b) {
    for (int i = 0; i < 2 * lanes; ++i) a.v[i] -= b.v[i];
    return a;
}
template <int lanes>
OPS_INLINE vector<lanes> add_i(vector<lanes> a, vector<lanes> b) {
    return add(a, times_i(b));
}
template <int lanes>
OPS_INLINE vector<lanes> sub_i(vector<lanes> a, vector<lanes> b) {
    return sub(a, times_i(b));
}
template <int lane, int lanes>
OPS_INLINE vector<lanes> scale(vector<lanes> a, vector<lanes> k) {
    for (int i = 0; i < 2 * lanes; ++i) a.v[i] *= k.v[lane];
    return a;
}
template <int lane, int lanes>
OPS_INLINE vector<lanes> fma(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    for (int i = 0; i < 2 * lanes; ++i) a.v[i] = __builtin_fmaf(b.v[i], k.v[lane], a.v[i]);
    return a;
}
template <int lane, int lanes>
OPS_INLINE vector<lanes> fms(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    for (int i = 0; i < 2 * lanes; ++i) a.v[i] = __builtin_fmaf(-b.v[i], k.v[lane], a.v[i]);
    return a;
}
template <int lanes>
OPS_INLINE vector<lanes> fma_i(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return fma<1>(a, times_i(b), k);
}
template <int lanes>
OPS_INLINE vector<lanes> fms_i(vector<lanes> a, vector<lanes> b, vector<lanes> k) {
    return fms<1>(a, times_i(b), k);
}

// Lane by lane: result lane i is the complex number that `from` names, counting the lanes of a, then those of b.
template <int lanes, class Index>
OPS_INLINE vector<lanes> pick(vector<lanes> a, vector<lanes> b, Index from) {
    vector<lanes> r;
    for (int i = 0; i < lanes; ++i)
        for (int part = 0; part < 2; ++part) {
            const int c = from(i);
            r.v[2 * i + part] = (c < lanes ? a : b).v[2 * (c % lanes) + part];
        }
    return r;
}
template <int lanes>
OPS_INLINE vector<lanes> zip_lo(vector<lanes> a, vector<lanes> b) {
    return pick(a, b, [](int i) { return i / 2 + i % 2 * lanes; });
}
template <int lanes>
OPS_INLINE vector<lanes> zip_hi(vector<lanes> a, vector<lanes> b) {
    return pick(a, b, [](int i) { return lanes / 2 + i / 2 + i % 2 * lanes; });
}
template <int lanes>
OPS_INLINE vector<lanes> unzip_even(vector<lanes> a, vector<lanes> b) {
    return pick(a, b, [](int i) { return 2 * i; });
}
template <int lanes>
OPS_INLINE vector<lanes> unzip_odd(vector<lanes> a, vector<lanes> b) {
    return pick(a, b, [](int i) { return 2 * i + 1; });
}

}  // namespace portable
