// SPDX-License-Identifier: Apache-2.0
// The guru calls: the caller's triples become the record as they stand. Each pair of calls shares one function that is
// told the width by the type of the triples.
#include "interface/guru_arguments.h"
#include "interface/plan_call.h"

fft_plan* guru_record(const guru_arguments& a) {
    if (guru_refusal(a)) return nullptr;
    fft_plan* record = new_problem(a.kind, a.sign, a.split, a.flags);
    if (!record) return nullptr;
    record->in = a.in;
    record->in_imag = a.in_imag;
    record->out = a.out;
    record->out_imag = a.out_imag;
    record->rank = becomes_rank_0(a) ? 0 : a.rank;
    for (int k = 0; k < record->rank; ++k) record->dims[k] = a.dims[k];
    record->howmany_rank = a.howmany_rank;
    for (int k = 0; k < a.howmany_rank; ++k) record->howmany[k] = a.howmany_dims[k];
    if (a.kind == kind_r2r) fft_plan_copy_r2r_kinds(record->r2r_kind, a.r2r_kinds, record->rank);
    return record;
}

namespace {

fft_plan* plan_guru(const guru_arguments& a) { return finish_plan_call(guru_record(a)); }

template <class Dim>
constexpr width width_of = sizeof(Dim) == sizeof(fft_iodim) ? width::narrow : width::wide;

// The transform and batch dimensions of one call.
template <class Dim>
struct shape {
    int rank;
    const Dim* dims;
    int howmany_rank;
    const Dim* howmany_dims;
};

template <class Dim>
fft_plan* plan_interleaved(uint32_t kind, int64_t sign, const shape<Dim>& s, float* in, float* out, unsigned flags,
                           const uint32_t* r2r_kinds = nullptr) {
    return plan_guru({width_of<Dim>, kind, sign, interleaved_arrays, flags, s.rank, s.dims, s.howmany_rank,
                      s.howmany_dims, in, nullptr, out, nullptr, r2r_kinds});
}

template <class Dim>
fft_plan* plan_split(uint32_t kind, int64_t sign, const shape<Dim>& s, float* in_re, float* in_im, float* out_re,
                     float* out_im, unsigned flags) {
    return plan_guru({width_of<Dim>, kind, sign, split_arrays, flags, s.rank, s.dims, s.howmany_rank, s.howmany_dims,
                      in_re, in_im, out_re, out_im, nullptr});
}

}  // namespace

// Complex. The sign is stored as it came: whatever isn't -1 is backward.

qsl_fftf_plan qsl_fftf_plan_guru_dft(int rank, const fft_iodim* dims, int howmany_rank, const fft_iodim* howmany_dims,
                                     qsl_fftf_complex* in, qsl_fftf_complex* out, int sign, unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_c2c, sign, s, as_floats(in), as_floats(out), flags);
}

qsl_fftf_plan qsl_fftf_plan_guru64_dft(int rank, const fft_iodim64* dims, int howmany_rank,
                                       const fft_iodim64* howmany_dims, qsl_fftf_complex* in, qsl_fftf_complex* out,
                                       int sign, unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_c2c, sign, s, as_floats(in), as_floats(out), flags);
}

// Real to complex.

qsl_fftf_plan qsl_fftf_plan_guru_dft_r2c(int rank, const fft_iodim* dims, int howmany_rank,
                                         const fft_iodim* howmany_dims, float* in, qsl_fftf_complex* out,
                                         unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_r2c, sign_forward, s, in, as_floats(out), flags);
}

qsl_fftf_plan qsl_fftf_plan_guru64_dft_r2c(int rank, const fft_iodim64* dims, int howmany_rank,
                                           const fft_iodim64* howmany_dims, float* in, qsl_fftf_complex* out,
                                           unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_r2c, sign_forward, s, in, as_floats(out), flags);
}

// Complex to real.

qsl_fftf_plan qsl_fftf_plan_guru_dft_c2r(int rank, const fft_iodim* dims, int howmany_rank,
                                         const fft_iodim* howmany_dims, qsl_fftf_complex* in, float* out,
                                         unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_c2r, sign_backward, s, as_floats(in), out, flags);
}

qsl_fftf_plan qsl_fftf_plan_guru64_dft_c2r(int rank, const fft_iodim64* dims, int howmany_rank,
                                           const fft_iodim64* howmany_dims, qsl_fftf_complex* in, float* out,
                                           unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_c2r, sign_backward, s, as_floats(in), out, flags);
}

// Real to real.

qsl_fftf_plan qsl_fftf_plan_guru_r2r(int rank, const fft_iodim* dims, int howmany_rank, const fft_iodim* howmany_dims,
                                     float* in, float* out, const qsl_fftf_r2r_kind* kinds, unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_r2r, 0, s, in, out, flags, kinds);
}

qsl_fftf_plan qsl_fftf_plan_guru64_r2r(int rank, const fft_iodim64* dims, int howmany_rank,
                                       const fft_iodim64* howmany_dims, float* in, float* out,
                                       const qsl_fftf_r2r_kind* kinds, unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_interleaved(kind_r2r, 0, s, in, out, flags, kinds);
}

// Split arrays.

qsl_fftf_plan qsl_fftf_plan_guru_split_dft(int rank, const fft_iodim* dims, int howmany_rank,
                                           const fft_iodim* howmany_dims, float* in_re, float* in_im, float* out_re,
                                           float* out_im, unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_split(kind_c2c, sign_forward, s, in_re, in_im, out_re, out_im, flags);
}

qsl_fftf_plan qsl_fftf_plan_guru64_split_dft(int rank, const fft_iodim64* dims, int howmany_rank,
                                             const fft_iodim64* howmany_dims, float* in_re, float* in_im, float* out_re,
                                             float* out_im, unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_split(kind_c2c, sign_forward, s, in_re, in_im, out_re, out_im, flags);
}

qsl_fftf_plan qsl_fftf_plan_guru_split_dft_r2c(int rank, const fft_iodim* dims, int howmany_rank,
                                               const fft_iodim* howmany_dims, float* in, float* out_re, float* out_im,
                                               unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_split(kind_r2c, sign_forward, s, in, nullptr, out_re, out_im, flags);
}

qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_r2c(int rank, const fft_iodim64* dims, int howmany_rank,
                                                 const fft_iodim64* howmany_dims, float* in, float* out_re,
                                                 float* out_im, unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_split(kind_r2c, sign_forward, s, in, nullptr, out_re, out_im, flags);
}

qsl_fftf_plan qsl_fftf_plan_guru_split_dft_c2r(int rank, const fft_iodim* dims, int howmany_rank,
                                               const fft_iodim* howmany_dims, float* in_re, float* in_im, float* out,
                                               unsigned flags) {
    const shape<fft_iodim> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_split(kind_c2r, sign_backward, s, in_re, in_im, out, nullptr, flags);
}

qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_c2r(int rank, const fft_iodim64* dims, int howmany_rank,
                                                 const fft_iodim64* howmany_dims, float* in_re, float* in_im,
                                                 float* out, unsigned flags) {
    const shape<fft_iodim64> s = {rank, dims, howmany_rank, howmany_dims};
    return plan_split(kind_c2r, sign_backward, s, in_re, in_im, out, nullptr, flags);
}
