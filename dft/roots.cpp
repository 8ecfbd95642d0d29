// SPDX-License-Identifier: Apache-2.0
#include "dft/roots.h"

#include "dft/first_octant.h"
#include "kernels/ops/complex4.h"

#include <cstdlib>
#include <cstring>

namespace {

typedef int64_t int4 __attribute__((vector_size(32)));
constexpr int4 lanes = {0, 1, 2, 3};

// The angle of t quarters of the n-th part of a turn, rounded to single precision on purpose: all tables of the library
// share these exact values.
inline double4 angle_of(double4 t, int64_t n) {
    const double4 angle = t * 6.283185307179586 / static_cast<double>(4 * n);
    return __builtin_convertvector(__builtin_convertvector(angle, float4), double4);
}

// The roots of k below n. Of t = 4 k quarters, n are a right angle.
inline four_roots folded_roots(int4 k, int64_t n) {
    int4 t = 4 * k;
    const int4 conjugate = 4 * n - t < t;
    t = conjugate ? 4 * n - t : t;
    const int4 rotate = t > n;
    t = rotate ? t - n : t;
    const int4 exchange = n - t < t;
    t = exchange ? n - t : t;
    const four_roots v = first_octant(angle_of(__builtin_convertvector(t, double4), n));
    const double4 c = exchange ? v.im : v.re, s = exchange ? v.re : v.im;
    const double4 im = rotate ? c : s;
    return {rotate ? -s : c, conjugate ? -im : im};
}

int64_t remainder(int64_t k, int64_t n) {
    const int64_t r = k % n;
    return r < 0 ? r + n : r;
}

}  // namespace

void twiddle_unit(int64_t k, int64_t n, float* result) {
    const int64_t r = remainder(k, n);
    const float8 v = rounded(folded_roots(int4{r, r, r, r}, n));
    memcpy(result, &v, 2 * sizeof(float));
}

void twiddle_progression(int64_t first, int64_t step, int64_t n, uint64_t count, float* to, uint64_t distance) {
    if (count == 0) return;  // n may be 0 then
    const int64_t far = remainder(4 * remainder(step, n), n);
    int4 k;
    for (int i = 0; i < 4; ++i) k[i] = remainder(first + i * step, n);
    for (uint64_t left = count; left > 0; left -= left < 4 ? left : 4) {
        const float8 v = rounded(folded_roots(k, n));
        if (left >= 4 && distance == 1) {
            memcpy(to, &v, sizeof v);
            to += 8;
        } else {
            float parts[8];
            memcpy(parts, &v, sizeof v);
            for (uint64_t i = 0; i < 4 && i < left; ++i, to += 2 * distance) memcpy(to, parts + 2 * i, 8);
        }
        k += far;
        k -= k < n ? int4{} : n - int4{};
    }
}

namespace {

// Where roots of a circle stand in its first octant: entry k stride + offset, parts exchanged or not, and their signs.
struct place_in_octant {
    int64_t stride, offset;
    bool exchanged;
    float re_sign, im_sign;
};

// The roots from k to `end` and their conjugates, which are the roots from the other end of the circle.
void unfold(const float* octant, const place_in_octant& p, int64_t k, int64_t end, float* roots, int64_t count) {
    const complex4 signs = pairs_of(p.re_sign, p.im_sign), conjugate = pairs_of(1, -1);
    const offsets4 four = offsets_of(0, p.stride);
    const float* at = octant + 2 * (p.offset + k * p.stride);
    float *to = roots + 2 * k, *mirrored = roots + 2 * (count - k);
    int64_t left = end - k;
    for (; left >= 4; left -= 4, at += 8 * p.stride, to += 8, mirrored -= 8) {
        complex4 v = gather4(at, four);
        if (p.exchanged) v = swap_parts(v);
        v = mul_parts(v, signs);
        store4(to, v);
        store4(mirrored - 6, mul_parts(reverse4(v), conjugate));
    }
    for (; left > 0; --left, at += 2 * p.stride, to += 2, mirrored -= 2) {
        mirrored[0] = to[0] = p.re_sign * at[p.exchanged];
        to[1] = p.im_sign * at[!p.exchanged];
        mirrored[1] = -to[1];
    }
}

// Quarters of a root between neighbours in the octant.
int64_t unit_of_octant(int64_t count) { return count % 4 == 0 ? 4 : count % 2 == 0 ? 2 : 1; }

// In entries: the circle, its first root once more, and the octant, which is computed by fours.
int64_t room(int64_t count) { return count + 1 + count / 2 / unit_of_octant(count) + 4; }

void fill_circle(int64_t count, int64_t L, int64_t n, float sign, float* roots) {
    const int64_t unit = unit_of_octant(count), quarter = count / unit, stride = 4 / unit;
    float* const octant = roots + 2 * (count + 1);
    double4 t = __builtin_convertvector(lanes * (unit * L), double4);
    float* to = octant;
    for (int64_t left = count / 2 / unit; left >= 0; left -= 4, to += 8, t += static_cast<double>(4 * unit * L)) {
        const float8 v = rounded(first_octant(angle_of(t, n)));
        memcpy(to, &v, sizeof v);
    }
    const int64_t ends[] = {count / 8 + 1, count / 4 + 1, 3 * count / 8 + 1, count / 2 + 1};
    unfold(octant, {stride, 0, false, 1, sign}, 0, ends[0], roots, count);
    unfold(octant, {-stride, quarter, true, 1, sign}, ends[0], ends[1], roots, count);
    unfold(octant, {stride, -quarter, true, -1, sign}, ends[1], ends[2], roots, count);
    unfold(octant, {-stride, 2 * quarter, false, -1, sign}, ends[2], ends[3], roots, count);
    roots[1] = 0;  // a sine of 0 has no sign
    if (count % 2 == 0) roots[count + 1] = 0;
}

}  // namespace

root_circle::root_circle(uint64_t n, uint64_t L, int64_t sign)
    : n_(static_cast<int64_t>(n)), step_(turn_of_sign(sign) * static_cast<int64_t>(L)), roots_(few_roots_) {
    const int64_t count = static_cast<int64_t>(n / L);
    if (count > few) roots_ = count > most ? nullptr : static_cast<float*>(malloc(2 * sizeof(float) * room(count)));
    if (roots_) fill_circle(count, static_cast<int64_t>(L), n_, static_cast<float>(turn_of_sign(sign)), roots_);
}

root_circle::~root_circle() {
    if (roots_ != few_roots_) free(roots_);
}

void root_circle::take_row(int64_t i, int64_t first, int64_t end, float* to, int64_t distance) const {
    if (!roots_)
        return twiddle_progression(step_ * i * first, step_ * i, n_, static_cast<uint64_t>(end - first), to, distance);
    const offsets4 four = offsets_of(0, i);
    const float* from = roots_ + 2 * i * first;
    int64_t j = first;
    if (distance == 1)
        for (; j + 4 <= end; j += 4, from += 8 * i, to += 8) store4(to, gather4(from, four));
    for (; j < end; ++j, from += 2 * i, to += 2 * distance) memcpy(to, from, 2 * sizeof(float));
}

void root_circle::take_four_rows(int64_t i, int64_t first, int64_t end, float* to) const {
    if (!roots_) {
        for (int64_t lane = 0; lane < 4; ++lane) take_row(i + lane, first, end, to + 2 * lane, 4);
        return;
    }
    const offsets4 next = offsets_of(i, 1), after_next = next + next;
    offsets4 even = offsets_of(i * first, first), odd = even + next;
    int64_t left = end - first;
    for (; left >= 2; left -= 2, to += 16, even += after_next, odd += after_next) {
        store4(to, gather4(roots_, even));
        store4(to + 8, gather4(roots_, odd));
    }
    if (left > 0) store4(to, gather4(roots_, even));
}
