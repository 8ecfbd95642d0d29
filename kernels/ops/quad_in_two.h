// SPDX-License-Identifier: Apache-2.0
// Four complex numbers in two NEON registers, where there is no SVE of 256 bits: the vocabulary of sve_quad.h on the
// halves. Masked loads and stores go number by number; the look-ups prefer kernels without them.
#pragma once
#include "kernels/ops/neon_pair.h"

namespace sve_quad {

using half = neon_pair::vec;
struct vec {
    half lo, hi;
};
using row_twiddle = neon_pair::row_twiddle;
using pool_pairs = neon_pair::pool_pairs;
using in_memory = vec;  // compilers know best what to keep where, since nothing is overwritten by need
struct mask {
    int64_t floats;  // the number of leading floats
    int but = -1;    // without this one
    OPS_MEMBER bool has(int i) const { return i < floats && i != but; }
};
struct lane_offsets {
    int64_t floats;
};

OPS_INLINE vec both(half a) { return {a, a}; }
OPS_INLINE vec reload(vec place) { return place; }
OPS_INLINE vec load(const float* p) { return {neon_pair::load(p), neon_pair::load(p + 4)}; }
OPS_INLINE void store(float* p, vec a) {
    neon_pair::store(p, a.lo);
    neon_pair::store(p + 4, a.hi);
}

OPS_INLINE mask all_lanes() { return {8}; }
OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return {n - l < 8 ? n - l : 8}; }
OPS_INLINE mask but_imaginary_of_first() { return {8, 1}; }
OPS_INLINE mask but_imaginary_of_last() { return {7}; }
[[gnu::noinline]] inline vec load_part(mask m, const float* p) {
    float floats[8];
    for (int i = 0; i < 8; ++i) floats[i] = m.has(i) ? p[i] : 0.0f;
    return load(floats);
}
[[gnu::noinline]] inline void store_part(mask m, float* p, vec a) {
    float floats[8];
    store(floats, a);
    for (int i = 0; i < 8; ++i)
        if (m.has(i)) p[i] = floats[i];
}
OPS_INLINE vec load(mask m, const float* p) { return m.floats == 8 && m.but < 0 ? load(p) : load_part(m, p); }
OPS_INLINE void store(mask m, float* p, vec a) {
    if (m.floats == 8 && m.but < 0)
        store(p, a);
    else
        store_part(m, p, a);
}
OPS_INLINE half swapped(half a) { return vextq_f32(a, a, 2); }
OPS_INLINE vec backward(vec a) { return {swapped(a.hi), swapped(a.lo)}; }
OPS_INLINE vec load_backward(mask m, const float* p) { return backward(load(m, p - 6)); }
OPS_INLINE vec load_backward(const float* p) { return backward(load(p - 6)); }

OPS_INLINE lane_offsets lanes_apart(int64_t floats) { return {floats}; }
template <int64_t floats>
OPS_INLINE lane_offsets lanes_apart() {
    return {floats};
}
OPS_INLINE vec load(const float* p, lane_offsets lanes) {
    return {neon_pair::load(p, lanes.floats), neon_pair::load(p + 2 * lanes.floats, lanes.floats)};
}
OPS_INLINE void store(float* p, lane_offsets lanes, vec a) {
    neon_pair::store(p, lanes.floats, a.lo);
    neon_pair::store(p + 2 * lanes.floats, lanes.floats, a.hi);
}

OPS_INLINE vec constant(const float* p) { return both(neon_pair::constant(p)); }
OPS_INLINE pool_pairs two_constants(const float* p) { return neon_pair::two_constants(p); }
OPS_INLINE vec same(float k) { return both(neon_pair::same(k)); }
OPS_INLINE vec conjugation() { return both(neon_pair::conjugation()); }
OPS_INLINE row_twiddle load_row(const float* p) { return neon_pair::load_row(p); }

OPS_INLINE vec mul(vec a, row_twiddle w) { return {neon_pair::mul(a.lo, w), neon_pair::mul(a.hi, w)}; }
#define OPS_OF_TWO(name) \
    OPS_INLINE vec name(vec a, vec b) { return {neon_pair::name(a.lo, b.lo), neon_pair::name(a.hi, b.hi)}; }
OPS_OF_TWO(mul)
OPS_OF_TWO(add)
OPS_OF_TWO(sub)
OPS_OF_TWO(add_i)
OPS_OF_TWO(sub_i)
#undef OPS_OF_TWO
#define OPS_OF_THREE(name, made_by)                                                          \
    OPS_INLINE vec name(vec a, vec b, vec k) {                                               \
        return {neon_pair::made_by(a.lo, b.lo, k.lo), neon_pair::made_by(a.hi, b.hi, k.hi)}; \
    }
OPS_OF_THREE(fma_all, fma_all)
OPS_OF_THREE(fms_all, fms_all)
OPS_OF_THREE(fma_all_into_b, fma_all)
OPS_OF_THREE(fms_all_into_b, fms_all)
OPS_OF_THREE(fma_i, fma_i)
OPS_OF_THREE(fms_i, fms_i)
#undef OPS_OF_THREE
template <int lane>
OPS_INLINE vec scale(vec a, pool_pairs k) {
    return {neon_pair::scale<lane>(a.lo, k), neon_pair::scale<lane>(a.hi, k)};
}
template <int lane>
OPS_INLINE vec scale(vec a, vec k) {
    return {neon_pair::scale<lane>(a.lo, k.lo), neon_pair::scale<lane>(a.hi, k.hi)};
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, pool_pairs k) {
    return {neon_pair::fma<lane>(a.lo, b.lo, k), neon_pair::fma<lane>(a.hi, b.hi, k)};
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, vec k) {
    return {neon_pair::fma<lane>(a.lo, b.lo, k.lo), neon_pair::fma<lane>(a.hi, b.hi, k.hi)};
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, pool_pairs k) {
    return {neon_pair::fms<lane>(a.lo, b.lo, k), neon_pair::fms<lane>(a.hi, b.hi, k)};
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, vec k) {
    return {neon_pair::fms<lane>(a.lo, b.lo, k.lo), neon_pair::fms<lane>(a.hi, b.hi, k.hi)};
}
OPS_INLINE vec twice_minus(vec a, vec b, vec) { return sub(add(a, a), b); }
OPS_INLINE vec twice_minus_into_b(vec a, vec b, vec two) { return twice_minus(a, b, two); }

struct four_vectors {
    const float* p;
};
OPS_INLINE four_vectors load_transposed(const float* p) { return {p}; }
template <int j>
OPS_INLINE vec part(four_vectors v) {
    return load(v.p + 2 * j, lane_offsets{8});
}

OPS_INLINE vec zip_lo(vec a, vec b) { return {neon_pair::zip_lo(a.lo, b.lo), neon_pair::zip_hi(a.lo, b.lo)}; }
OPS_INLINE vec zip_hi(vec a, vec b) { return {neon_pair::zip_lo(a.hi, b.hi), neon_pair::zip_hi(a.hi, b.hi)}; }

}  // namespace sve_quad
