// SPDX-License-Identifier: Apache-2.0
// One complex number in two scalar registers: the same on every machine.
#pragma once
#include "kernels/ops/portable.h"

namespace scalar {

struct vec {
    float re, im;
};

struct pool_pairs {
    float k[4];
};

OPS_INLINE vec load(const float* p) { return {p[0], p[1]}; }
OPS_INLINE void store(float* p, vec a) { p[0] = a.re, p[1] = a.im; }
OPS_INLINE vec constant(const float* p) { return {p[0], p[1]}; }
OPS_INLINE pool_pairs two_constants(const float* p) { return {p[0], p[1], p[2], p[3]}; }
OPS_INLINE vec same(float k) { return {k, k}; }

OPS_INLINE vec add(vec a, vec b) { return {a.re + b.re, a.im + b.im}; }
OPS_INLINE vec sub(vec a, vec b) { return {a.re - b.re, a.im - b.im}; }
OPS_INLINE vec add_i(vec a, vec b) { return {a.re - b.im, a.im + b.re}; }
OPS_INLINE vec sub_i(vec a, vec b) { return {a.re + b.im, a.im - b.re}; }
OPS_INLINE vec fused(vec a, float re, float im, float k) {
    return {__builtin_fmaf(k, re, a.re), __builtin_fmaf(k, im, a.im)};
}
template <int lane>
OPS_INLINE float part(vec k) {
    return lane ? k.im : k.re;
}
template <int lane>
OPS_INLINE float part(pool_pairs k) {
    return k.k[lane];
}
template <int lane, class Constant>
OPS_INLINE vec scale(vec a, Constant k) {
    return {part<lane>(k) * a.re, part<lane>(k) * a.im};
}
template <int lane, class Constant>
OPS_INLINE vec fma(vec a, vec b, Constant k) {
    return fused(a, b.re, b.im, part<lane>(k));
}
template <int lane, class Constant>
OPS_INLINE vec fms(vec a, vec b, Constant k) {
    return fused(a, -b.re, -b.im, part<lane>(k));
}
OPS_INLINE vec fma_i(vec a, vec b, vec k) { return fused(a, -b.im, b.re, k.im); }
OPS_INLINE vec fms_i(vec a, vec b, vec k) { return fused(a, b.im, -b.re, k.im); }

}  // namespace scalar
