// SPDX-License-Identifier: Apache-2.0
// The four many calls: check, fill a record, plan it.
#include "interface/many_arguments.h"
#include "interface/plan_call.h"

fft_plan* many_record(const many_arguments& a) {
    if (many_refusal(a)) return nullptr;
    fft_plan* record = new_problem(a.kind, a.sign, interleaved_arrays, a.flags);
    if (!record) return nullptr;
    record->in = a.in;
    record->out = a.out;
    fft_plan_fill_dims(record, a.rank, a.n, a.inembed, a.istride, a.onembed, a.ostride);
    if (a.howmany != 1) {
        record->howmany_rank = 1;
        record->howmany[0] = {a.howmany, a.idist, a.odist};
    }
    if (a.kind == kind_r2r) fft_plan_copy_r2r_kinds(record->r2r_kind, a.r2r_kinds, a.rank);
    return record;
}

namespace {

fft_plan* plan_many(const many_arguments& a) { return finish_plan_call(many_record(a)); }

}  // namespace

qsl_fftf_plan qsl_fftf_plan_many_dft(int rank, const int* n, int howmany, qsl_fftf_complex* in, const int* inembed,
                                     int istride, int idist, qsl_fftf_complex* out, const int* onembed, int ostride,
                                     int odist, int sign, unsigned flags) {
    return plan_many({kind_c2c, sign, flags, rank, n, howmany, as_floats(in), inembed, istride, idist, as_floats(out),
                      onembed, ostride, odist, nullptr});
}

qsl_fftf_plan qsl_fftf_plan_many_dft_r2c(int rank, const int* n, int howmany, float* in, const int* inembed,
                                         int istride, int idist, qsl_fftf_complex* out, const int* onembed, int ostride,
                                         int odist, unsigned flags) {
    return plan_many({kind_r2c, sign_forward, flags, rank, n, howmany, in, inembed, istride, idist, as_floats(out),
                      onembed, ostride, odist, nullptr});
}

qsl_fftf_plan qsl_fftf_plan_many_dft_c2r(int rank, const int* n, int howmany, qsl_fftf_complex* in, const int* inembed,
                                         int istride, int idist, float* out, const int* onembed, int ostride, int odist,
                                         unsigned flags) {
    return plan_many({kind_c2r, sign_backward, flags, rank, n, howmany, as_floats(in), inembed, istride, idist, out,
                      onembed, ostride, odist, nullptr});
}

qsl_fftf_plan qsl_fftf_plan_many_r2r(int rank, const int* n, int howmany, float* in, const int* inembed, int istride,
                                     int idist, float* out, const int* onembed, int ostride, int odist,
                                     const qsl_fftf_r2r_kind* kinds, unsigned flags) {
    return plan_many(
        {kind_r2r, 0, flags, rank, n, howmany, in, inembed, istride, idist, out, onembed, ostride, odist, kinds});
}
