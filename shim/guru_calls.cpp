// SPDX-License-Identifier: Apache-2.0
// The guru calls. Each pair of 32 and 64 bits is one function that is told the width by the type of the triples.
#include "shim/plan.h"

namespace {

struct guru_call {
    plan_kind kind;
    bool split;
    bool backward;
    arrays a;
    const fftwf_r2r_kind* kinds;
    unsigned flags;
};

template <class Triple>
fftwf_plan plan_guru(const guru_call& c, int rank, const Triple* dims, int howmany_rank, const Triple* howmany_dims) {
    if (rank < 0 || howmany_rank < 0) return nullptr;
    problem p = {};
    p.kind = c.kind;
    p.split = c.split;
    p.backward = c.backward;
    p.in = c.a.in;
    p.in_imag = c.a.in_imag;
    p.out = c.a.out;
    p.out_imag = c.a.out_imag;
    for (int d = 0; d < rank; ++d)
        if (!add_dim(p, {dims[d].n, dims[d].is, dims[d].os, r2r_kind_of(c.kinds, d)}, d == rank - 1)) return nullptr;
    for (int b = 0; b < howmany_rank; ++b)
        if (!add_batch(p, {howmany_dims[b].n, howmany_dims[b].is, howmany_dims[b].os, 0})) return nullptr;
    return finish_plan(p, c.flags);
}

guru_call interleaved(plan_kind kind, int sign, float* in, float* out, const fftwf_r2r_kind* kinds, unsigned flags) {
    return {kind, false, kind == kind_c2c && sign != FFTW_FORWARD, {in, nullptr, out, nullptr}, kinds, flags};
}

guru_call split(plan_kind kind, const arrays& a, unsigned flags) { return {kind, true, false, a, nullptr, flags}; }

float* floats(fftwf_complex* array) { return reinterpret_cast<float*>(array); }

}  // namespace

#define GURU_CALLS(name, triple)                                                                                       \
    fftwf_plan fftwf_plan_##name##_dft(int rank, const triple* dims, int howmany_rank, const triple* howmany_dims,     \
                                       fftwf_complex* in, fftwf_complex* out, int sign, unsigned flags) {              \
        return plan_guru(interleaved(kind_c2c, sign, floats(in), floats(out), nullptr, flags), rank, dims,             \
                         howmany_rank, howmany_dims);                                                                  \
    }                                                                                                                  \
    fftwf_plan fftwf_plan_##name##_dft_r2c(int rank, const triple* dims, int howmany_rank, const triple* howmany_dims, \
                                           float* in, fftwf_complex* out, unsigned flags) {                            \
        return plan_guru(interleaved(kind_r2c, FFTW_FORWARD, in, floats(out), nullptr, flags), rank, dims,             \
                         howmany_rank, howmany_dims);                                                                  \
    }                                                                                                                  \
    fftwf_plan fftwf_plan_##name##_dft_c2r(int rank, const triple* dims, int howmany_rank, const triple* howmany_dims, \
                                           fftwf_complex* in, float* out, unsigned flags) {                            \
        return plan_guru(interleaved(kind_c2r, FFTW_BACKWARD, floats(in), out, nullptr, flags), rank, dims,            \
                         howmany_rank, howmany_dims);                                                                  \
    }                                                                                                                  \
    fftwf_plan fftwf_plan_##name##_r2r(int rank, const triple* dims, int howmany_rank, const triple* howmany_dims,     \
                                       float* in, float* out, const fftwf_r2r_kind* kind, unsigned flags) {            \
        return plan_guru(interleaved(kind_r2r, 0, in, out, kind, flags), rank, dims, howmany_rank, howmany_dims);      \
    }                                                                                                                  \
    fftwf_plan fftwf_plan_##name##_split_dft(int rank, const triple* dims, int howmany_rank,                           \
                                             const triple* howmany_dims, float* ri, float* ii, float* ro, float* io,   \
                                             unsigned flags) {                                                         \
        return plan_guru(split(kind_c2c, {ri, ii, ro, io}, flags), rank, dims, howmany_rank, howmany_dims);            \
    }                                                                                                                  \
    fftwf_plan fftwf_plan_##name##_split_dft_r2c(int rank, const triple* dims, int howmany_rank,                       \
                                                 const triple* howmany_dims, float* in, float* ro, float* io,          \
                                                 unsigned flags) {                                                     \
        return plan_guru(split(kind_r2c, {in, nullptr, ro, io}, flags), rank, dims, howmany_rank, howmany_dims);       \
    }                                                                                                                  \
    fftwf_plan fftwf_plan_##name##_split_dft_c2r(int rank, const triple* dims, int howmany_rank,                       \
                                                 const triple* howmany_dims, float* ri, float* ii, float* out,         \
                                                 unsigned flags) {                                                     \
        return plan_guru(split(kind_c2r, {ri, ii, out, nullptr}, flags), rank, dims, howmany_rank, howmany_dims);      \
    }

GURU_CALLS(guru, fftwf_iodim)
GURU_CALLS(guru64, fftwf_iodim64)
