// SPDX-License-Identifier: Apache-2.0
#include "tools/planned_problem.h"

#include <vector>

namespace {

uint32_t kind_of(bench::family family) {
    switch (family) {
        case bench::family::r2c:
            return kind_r2c;
        case bench::family::c2r:
            return kind_c2r;
        case bench::family::r2r:
            return kind_r2r;
        default:
            return kind_c2c;
    }
}

qsl_fftf_complex* pairs(float* array) { return reinterpret_cast<qsl_fftf_complex*>(array); }

qsl_fftf_plan plan_movement(const bench::problem& p, float* in, float* out, unsigned flags) {
    fft_iodim64 batch[2];
    for (int d : {0, 1}) batch[d] = {p.n[d], p.in.row_stride[d], p.out.row_stride[d]};
    return qsl_fftf_plan_guru64_dft(0, batch, 2, batch, pairs(in), pairs(out), QSL_FFTF_FORWARD, flags);
}

}  // namespace

many_arguments arguments_of(const bench::problem& p, float* in, float* out) {
    const unsigned flags = p.measured ? QSL_FFTF_MEASURED : QSL_FFTF_RULES;
    return {kind_of(p.kind),
            p.sign,
            flags,
            static_cast<int>(p.n.size()),
            p.n.data(),
            p.batch,
            in,
            nullptr,
            p.in.stride,
            p.in.dist,
            out,
            nullptr,
            p.out.stride,
            p.out.dist,
            reinterpret_cast<const uint32_t*>(p.r2r_kinds.data())};
}

qsl_fftf_plan plan_problem_text(const bench::problem& p, float* in, float* out) {
    const many_arguments a = arguments_of(p, in, out);
    qsl_fftf_plan_with_nthreads(p.threads);
    const auto many = [&](auto call, auto* from, auto* to, auto... tail) {
        return call(a.rank, a.n, a.howmany, from, a.inembed, a.istride, a.idist, to, a.onembed, a.ostride, a.odist,
                    tail..., a.flags);
    };
    switch (p.kind) {
        case bench::family::c2c:
            return many(qsl_fftf_plan_many_dft, pairs(in), pairs(out), a.sign);
        case bench::family::r2c:
            return many(qsl_fftf_plan_many_dft_r2c, in, pairs(out));
        case bench::family::c2r:
            return many(qsl_fftf_plan_many_dft_c2r, pairs(in), out);
        case bench::family::r2r:
            return many(qsl_fftf_plan_many_r2r, in, out, a.r2r_kinds);
        default:
            return plan_movement(p, in, out, a.flags);
    }
}
