// SPDX-License-Identifier: Apache-2.0
// The library's 64-bit guru calls under one name.
#include "include/qfftf.h"
#include "shim/plan.h"

namespace {

struct triples {
    fft_iodim64 list[max_rank];

    triples(const dimension* dims, int count) {
        for (int i = 0; i < max_rank; ++i)
            list[i] = i < count ? fft_iodim64{dims[i].n, dims[i].is, dims[i].os} : fft_iodim64{1, 1, 1};
    }
};

qsl_fftf_complex* as_complex(float* array) { return reinterpret_cast<qsl_fftf_complex*>(array); }

}  // namespace

fft_plan* library_plan(const problem& p, const arrays& a, bool measured) {
    const triples t(p.dims, p.rank), h(p.batch, p.batch_rank);
    const fft_iodim64 *dims = t.list, *batch = h.list;
    const unsigned flags = measured ? QSL_FFTF_MEASURED : QSL_FFTF_RULES;
    uint32_t kinds[max_rank] = {};
    for (int d = 0; d < p.rank; ++d) kinds[d] = p.dims[d].r2r_kind;
    const int sign = p.backward ? QSL_FFTF_BACKWARD : QSL_FFTF_FORWARD;
    const int rank = p.rank, many = p.batch_rank;
    switch (p.kind) {
        case kind_c2c:
            if (p.split)
                return qsl_fftf_plan_guru64_split_dft(rank, dims, many, batch, a.in, a.in_imag, a.out, a.out_imag,
                                                      flags);
            return qsl_fftf_plan_guru64_dft(rank, dims, many, batch, as_complex(a.in), as_complex(a.out), sign, flags);
        case kind_r2c:
            if (p.split)
                return qsl_fftf_plan_guru64_split_dft_r2c(rank, dims, many, batch, a.in, a.out, a.out_imag, flags);
            return qsl_fftf_plan_guru64_dft_r2c(rank, dims, many, batch, a.in, as_complex(a.out), flags);
        case kind_c2r:
            if (p.split)
                return qsl_fftf_plan_guru64_split_dft_c2r(rank, dims, many, batch, a.in, a.in_imag, a.out, flags);
            return qsl_fftf_plan_guru64_dft_c2r(rank, dims, many, batch, as_complex(a.in), a.out, flags);
        default:
            return qsl_fftf_plan_guru64_r2r(rank, dims, many, batch, a.in, a.out, kinds, flags);
    }
}

void library_execute(fft_plan* plan, const problem& p, const arrays& a) {
    if (!p.split)
        qsl_fftf_execute_r2r(plan, a.in, a.out);  // one function for all interleaved kinds
    else if (p.kind == kind_c2c)
        qsl_fftf_execute_split_dft(plan, a.in, a.in_imag, a.out, a.out_imag);
    else if (p.kind == kind_r2c)
        qsl_fftf_execute_split_dft_r2c(plan, a.in, a.out, a.out_imag);
    else
        qsl_fftf_execute_split_dft_c2r(plan, a.in, a.in_imag, a.out);
}
