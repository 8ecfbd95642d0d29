// SPDX-License-Identifier: Apache-2.0
// Four complex numbers in a 256-bit SVE vector. Loads and stores may run under a mask, arithmetic never does.
#pragma once
#include "kernels/ops/sve_common.h"

#if defined(__ARM_FEATURE_SVE)

namespace sve_quad {

using namespace sve_common;
using lane_offsets = svint64_t;
using in_memory = floats_in_memory<8>;

OPS_INLINE mask all_lanes() { return all(); }
OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return svwhilelt_b32_s64(l, n); }
OPS_INLINE vec load(const float* p) { return svld1_f32(all(), p); }
OPS_INLINE vec load(mask m, const float* p) { return svld1_f32(m, p); }
OPS_INLINE lane_offsets lanes_apart(int64_t floats) { return svindex_s64(0, 4 * floats); }
// Read from memory, since an index of any other step takes long to make.
template <int64_t floats>
OPS_INLINE lane_offsets lanes_apart() {
    static constexpr int64_t bytes[] = {0, 4 * floats, 8 * floats, 12 * floats};
    return svld1_s64(all(), bytes);
}
OPS_INLINE vec load(const float* p, lane_offsets lanes) {
    return svreinterpret_f32_s64(svld1_gather_s64offset_s64(all(), reinterpret_cast<const int64_t*>(p), lanes));
}
OPS_INLINE vec load_backward(mask m, const float* p) {
    return svreinterpret_f32_f64(svrev_f64(svreinterpret_f64_f32(svld1_f32(m, p - 6))));
}
OPS_INLINE vec load_backward(const float* p) { return load_backward(all(), p); }
OPS_INLINE void store(float* p, lane_offsets lanes, vec a) {
    svst1_scatter_s64offset_s64(svptrue_b64(), reinterpret_cast<int64_t*>(p), lanes, svreinterpret_s64_f32(a));
}
// All lanes but the imaginary part of element 0, the last one when they were loaded backward.
OPS_INLINE mask but_imaginary_of_first() { return svorn_b_z(all(), svptrue_pat_b32(SV_VL1), svptrue_pat_b32(SV_VL2)); }
OPS_INLINE mask but_imaginary_of_last() { return svptrue_pat_b32(SV_VL7); }
OPS_INLINE void store(float* p, vec a) { svst1_f32(all(), p, a); }
OPS_INLINE void store(mask m, float* p, vec a) { svst1_f32(m, p, a); }
OPS_INLINE vec constant(const float* p) { return replicate(p); }
OPS_INLINE row_twiddle load_row(const float* p) { return replicate(p); }

OPS_INLINE svfloat64_t whole(vec a) { return svreinterpret_f64_f32(a); }
OPS_INLINE vec zip_lo(vec a, vec b) { return svreinterpret_f32_f64(svzip1_f64(whole(a), whole(b))); }
OPS_INLINE vec zip_hi(vec a, vec b) { return svreinterpret_f32_f64(svzip2_f64(whole(a), whole(b))); }

// Four vectors from 16 complex numbers at p: number 4 i + j stands in lane i of part j.
using four_vectors = svfloat64x4_t;
OPS_INLINE four_vectors load_transposed(const float* p) {
    return svld4_f64(svptrue_b64(), reinterpret_cast<const double*>(p));
}
template <int j>
OPS_INLINE vec part(four_vectors v) {
    return svreinterpret_f32_f64(svget4_f64(v, j));
}

}  // namespace sve_quad

#elif defined(__aarch64__)
#include "kernels/ops/quad_in_two.h"
#else
#include "kernels/ops/portable.h"

namespace sve_quad {

using namespace portable;
using vec = vector<4>;
using row_twiddle = vec;
using pool_pairs = vector<2>;
OPS_INLINE pool_pairs two_constants(const float* p) { return portable::load<2>(p); }
struct mask {
    int64_t floats;  // the number of leading floats
    int but = -1;    // without this one
};
struct lane_offsets {
    int64_t floats;
};
OPS_INLINE mask all_lanes() { return {8}; }
OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return {n - l < 8 ? n - l : 8}; }
OPS_INLINE mask but_imaginary_of_first() { return {8, 1}; }
OPS_INLINE mask but_imaginary_of_last() { return {7}; }
OPS_INLINE vec load(const float* p) { return portable::load<4>(p); }
OPS_INLINE vec load(mask m, const float* p) {
    vec r = portable::load<4>(p, m.floats);
    if (m.but >= 0) r.v[m.but] = 0;
    return r;
}
OPS_INLINE vec load_backward(mask m, const float* p) {
    return {__builtin_shufflevector(load(m, p - 6).v, load(m, p - 6).v, 6, 7, 4, 5, 2, 3, 0, 1)};
}
OPS_INLINE vec load_backward(const float* p) { return load_backward({8}, p); }
OPS_INLINE void store(mask m, float* p, vec a) { portable::store(p, a, m.floats); }
OPS_INLINE lane_offsets lanes_apart(int64_t floats) { return {floats}; }
template <int64_t floats>
OPS_INLINE lane_offsets lanes_apart() {
    return {floats};
}
OPS_INLINE vec load(const float* p, lane_offsets lanes) {
    vec r;
    for (int i = 0; i < 8; ++i) r.v[i] = p[i / 2 * lanes.floats + i % 2];
    return r;
}
OPS_INLINE void store(float* p, lane_offsets lanes, vec a) {
    for (int i = 0; i < 8; ++i) p[i / 2 * lanes.floats + i % 2] = a.v[i];
}
OPS_INLINE vec constant(const float* p) { return portable::constant<4>(p); }
OPS_INLINE vec conjugation() { return portable::conjugation<4>(); }
OPS_INLINE vec same(float k) { return portable::same<4>(k); }
OPS_INLINE row_twiddle load_row(const float* p) { return constant(p); }
struct four_vectors {
    const float* p;
};
OPS_INLINE four_vectors load_transposed(const float* p) { return {p}; }
template <int j>
OPS_INLINE vec part(four_vectors v) {
    return load(v.p + 2 * j, lane_offsets{8});
}

}  // namespace sve_quad

#endif
