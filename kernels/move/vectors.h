// SPDX-License-Identifier: Apache-2.0
// Eight floats, or four complex values, in one vector of 256 bits: an SVE register on Arm, a generic vector elsewhere.
#pragma once
#include <cstdint>
#include <cstring>

#if defined(__ARM_FEATURE_SVE)
#include <arm_sve.h>

typedef svfloat32_t float8 __attribute__((arm_sve_vector_bits(256)));

inline float8 load8(const float* p) { return svld1_f32(svptrue_b32(), p); }
inline void store8(float* p, float8 v) { svst1_f32(svptrue_b32(), p, v); }
inline float8 zip_low(float8 a, float8 b) { return svzip1_f32(a, b); }
inline float8 zip_high(float8 a, float8 b) { return svzip2_f32(a, b); }
inline float8 even_lanes(float8 a, float8 b) { return svuzp1_f32(a, b); }
inline float8 odd_lanes(float8 a, float8 b) { return svuzp2_f32(a, b); }

// Fewer than eight floats.
inline void copy_part(const float* source, float* destination, int64_t n) {
    const svbool_t part = svwhilelt_b32(int64_t{0}, n);
    svst1_f32(part, destination, svld1_f32(part, source));
}

// Complex products of four pairs: each part is two fused multiply-adds that start from +0.
inline float8 multiply_complex4(float8 x, float8 t) {
    const svbool_t all = svptrue_b32();
    return svcmla_f32_x(all, svcmla_f32_x(all, svdup_f32(0), x, t, 0), x, t, 90);
}
#else
struct float8 {
    float lane[8];
};

inline float8 load8(const float* p) {
    float8 v;
    memcpy(&v, p, sizeof v);
    return v;
}
inline void store8(float* p, float8 v) { memcpy(p, &v, sizeof v); }
inline float8 zip_low(float8 a, float8 b) {
    return {a.lane[0], b.lane[0], a.lane[1], b.lane[1], a.lane[2], b.lane[2], a.lane[3], b.lane[3]};
}
inline float8 zip_high(float8 a, float8 b) {
    return {a.lane[4], b.lane[4], a.lane[5], b.lane[5], a.lane[6], b.lane[6], a.lane[7], b.lane[7]};
}
inline float8 even_lanes(float8 a, float8 b) {
    return {a.lane[0], a.lane[2], a.lane[4], a.lane[6], b.lane[0], b.lane[2], b.lane[4], b.lane[6]};
}
inline float8 odd_lanes(float8 a, float8 b) {
    return {a.lane[1], a.lane[3], a.lane[5], a.lane[7], b.lane[1], b.lane[3], b.lane[5], b.lane[7]};
}

inline void copy_part(const float* source, float* destination, int64_t n) {
    for (int64_t i = 0; i < n; ++i) destination[i] = source[i];
}

inline float8 multiply_complex4(float8 x, float8 t) {
    float8 p;
    for (int c = 0; c < 8; c += 2) {
        const float *u = x.lane + c, *v = t.lane + c;
        p.lane[c] = __builtin_fmaf(-u[1], v[1], __builtin_fmaf(u[0], v[0], 0.0f));
        p.lane[c + 1] = __builtin_fmaf(u[1], v[0], __builtin_fmaf(u[0], v[1], 0.0f));
    }
    return p;
}
#endif
