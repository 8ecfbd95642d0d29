// SPDX-License-Identifier: Apache-2.0
// The basic and the many calls: row-major arrays, of which the transforms may be a part.
#include "shim/plan.h"

namespace {

struct side_layout {
    float* array;
    const int* nembed;
    int stride;
    int dist;
};

struct many_call {
    plan_kind kind;
    int sign;
    int rank;
    const int* n;
    int howmany;
    side_layout in;
    side_layout out;
    const fftwf_r2r_kind* kinds;
    unsigned flags;
};

// Elements of dimension d of the array that a side's transforms stand in. In place a real row leaves room for the
// complex one.
ptrdiff_t embedding(const many_call& c, const side_layout& side, bool is_real, int d) {
    if (side.nembed) return side.nembed[d];
    const bool halved = (c.kind == kind_r2c || c.kind == kind_c2r) && d == c.rank - 1;
    if (!halved) return c.n[d];
    const ptrdiff_t half = c.n[d] / 2 + 1;
    if (!is_real) return half;
    return c.in.array == c.out.array ? 2 * half : c.n[d];
}

fftwf_plan plan_many(const many_call& c) {
    if (c.rank < 0 || c.rank > most_dims || c.howmany < 0) return nullptr;
    problem p = {};
    p.kind = c.kind;
    p.backward = c.kind == kind_c2c && c.sign != FFTW_FORWARD;
    p.in = c.in.array;
    p.out = c.out.array;
    dimension dims[most_dims];
    ptrdiff_t is = c.in.stride, os = c.out.stride;
    for (int d = c.rank - 1; d >= 0; --d) {
        dims[d] = {c.n[d], is, os, r2r_kind_of(c.kinds, d)};
        const bool fits = !__builtin_mul_overflow(is, embedding(c, c.in, !p.complex_in(), d), &is) &&
                          !__builtin_mul_overflow(os, embedding(c, c.out, !p.complex_out(), d), &os);
        if (!fits && d > 0) return nullptr;
    }
    for (int d = 0; d < c.rank; ++d)
        if (!add_dim(p, dims[d], d == c.rank - 1)) return nullptr;
    if (!add_batch(p, {c.howmany, c.in.dist, c.out.dist, 0})) return nullptr;
    return finish_plan(p, c.flags);
}

fftwf_plan plan_one(plan_kind kind, int sign, int rank, const int* n, float* in, float* out, unsigned flags,
                    const fftwf_r2r_kind* kinds = nullptr) {
    return plan_many({kind, sign, rank, n, 1, {in, nullptr, 1, 0}, {out, nullptr, 1, 0}, kinds, flags});
}

float* floats(fftwf_complex* array) { return reinterpret_cast<float*>(array); }

}  // namespace

// Complex.

fftwf_plan fftwf_plan_dft(int rank, const int* n, fftwf_complex* in, fftwf_complex* out, int sign, unsigned flags) {
    return plan_one(kind_c2c, sign, rank, n, floats(in), floats(out), flags);
}
fftwf_plan fftwf_plan_dft_1d(int n, fftwf_complex* in, fftwf_complex* out, int sign, unsigned flags) {
    return fftwf_plan_dft(1, &n, in, out, sign, flags);
}
fftwf_plan fftwf_plan_dft_2d(int n0, int n1, fftwf_complex* in, fftwf_complex* out, int sign, unsigned flags) {
    const int n[] = {n0, n1};
    return fftwf_plan_dft(2, n, in, out, sign, flags);
}
fftwf_plan fftwf_plan_dft_3d(int n0, int n1, int n2, fftwf_complex* in, fftwf_complex* out, int sign, unsigned flags) {
    const int n[] = {n0, n1, n2};
    return fftwf_plan_dft(3, n, in, out, sign, flags);
}
fftwf_plan fftwf_plan_many_dft(int rank, const int* n, int howmany, fftwf_complex* in, const int* inembed, int istride,
                               int idist, fftwf_complex* out, const int* onembed, int ostride, int odist, int sign,
                               unsigned flags) {
    return plan_many({kind_c2c,
                      sign,
                      rank,
                      n,
                      howmany,
                      {floats(in), inembed, istride, idist},
                      {floats(out), onembed, ostride, odist},
                      nullptr,
                      flags});
}

// Real to complex.

fftwf_plan fftwf_plan_dft_r2c(int rank, const int* n, float* in, fftwf_complex* out, unsigned flags) {
    return plan_one(kind_r2c, FFTW_FORWARD, rank, n, in, floats(out), flags);
}
fftwf_plan fftwf_plan_dft_r2c_1d(int n, float* in, fftwf_complex* out, unsigned flags) {
    return fftwf_plan_dft_r2c(1, &n, in, out, flags);
}
fftwf_plan fftwf_plan_dft_r2c_2d(int n0, int n1, float* in, fftwf_complex* out, unsigned flags) {
    const int n[] = {n0, n1};
    return fftwf_plan_dft_r2c(2, n, in, out, flags);
}
fftwf_plan fftwf_plan_dft_r2c_3d(int n0, int n1, int n2, float* in, fftwf_complex* out, unsigned flags) {
    const int n[] = {n0, n1, n2};
    return fftwf_plan_dft_r2c(3, n, in, out, flags);
}
fftwf_plan fftwf_plan_many_dft_r2c(int rank, const int* n, int howmany, float* in, const int* inembed, int istride,
                                   int idist, fftwf_complex* out, const int* onembed, int ostride, int odist,
                                   unsigned flags) {
    return plan_many({kind_r2c,
                      FFTW_FORWARD,
                      rank,
                      n,
                      howmany,
                      {in, inembed, istride, idist},
                      {floats(out), onembed, ostride, odist},
                      nullptr,
                      flags});
}

// Complex to real.

fftwf_plan fftwf_plan_dft_c2r(int rank, const int* n, fftwf_complex* in, float* out, unsigned flags) {
    return plan_one(kind_c2r, FFTW_BACKWARD, rank, n, floats(in), out, flags);
}
fftwf_plan fftwf_plan_dft_c2r_1d(int n, fftwf_complex* in, float* out, unsigned flags) {
    return fftwf_plan_dft_c2r(1, &n, in, out, flags);
}
fftwf_plan fftwf_plan_dft_c2r_2d(int n0, int n1, fftwf_complex* in, float* out, unsigned flags) {
    const int n[] = {n0, n1};
    return fftwf_plan_dft_c2r(2, n, in, out, flags);
}
fftwf_plan fftwf_plan_dft_c2r_3d(int n0, int n1, int n2, fftwf_complex* in, float* out, unsigned flags) {
    const int n[] = {n0, n1, n2};
    return fftwf_plan_dft_c2r(3, n, in, out, flags);
}
fftwf_plan fftwf_plan_many_dft_c2r(int rank, const int* n, int howmany, fftwf_complex* in, const int* inembed,
                                   int istride, int idist, float* out, const int* onembed, int ostride, int odist,
                                   unsigned flags) {
    return plan_many({kind_c2r,
                      FFTW_BACKWARD,
                      rank,
                      n,
                      howmany,
                      {floats(in), inembed, istride, idist},
                      {out, onembed, ostride, odist},
                      nullptr,
                      flags});
}

// Real to real.

fftwf_plan fftwf_plan_r2r(int rank, const int* n, float* in, float* out, const fftwf_r2r_kind* kind, unsigned flags) {
    return plan_one(kind_r2r, 0, rank, n, in, out, flags, kind);
}
fftwf_plan fftwf_plan_r2r_1d(int n, float* in, float* out, fftwf_r2r_kind kind, unsigned flags) {
    return fftwf_plan_r2r(1, &n, in, out, &kind, flags);
}
fftwf_plan fftwf_plan_r2r_2d(int n0, int n1, float* in, float* out, fftwf_r2r_kind kind0, fftwf_r2r_kind kind1,
                             unsigned flags) {
    const int n[] = {n0, n1};
    const fftwf_r2r_kind kinds[] = {kind0, kind1};
    return fftwf_plan_r2r(2, n, in, out, kinds, flags);
}
fftwf_plan fftwf_plan_r2r_3d(int n0, int n1, int n2, float* in, float* out, fftwf_r2r_kind kind0, fftwf_r2r_kind kind1,
                             fftwf_r2r_kind kind2, unsigned flags) {
    const int n[] = {n0, n1, n2};
    const fftwf_r2r_kind kinds[] = {kind0, kind1, kind2};
    return fftwf_plan_r2r(3, n, in, out, kinds, flags);
}
fftwf_plan fftwf_plan_many_r2r(int rank, const int* n, int howmany, float* in, const int* inembed, int istride,
                               int idist, float* out, const int* onembed, int ostride, int odist,
                               const fftwf_r2r_kind* kind, unsigned flags) {
    return plan_many(
        {kind_r2r, 0, rank, n, howmany, {in, inembed, istride, idist}, {out, onembed, ostride, odist}, kind, flags});
}
