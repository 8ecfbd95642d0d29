// SPDX-License-Identifier: Apache-2.0
#include "tests/batch/differential/calls.h"

#include "tests/support/guru_calls.h"

namespace {

qsl_fftf_complex* as_complex(float* p) { return reinterpret_cast<qsl_fftf_complex*>(p); }

template <class Triple>
std::vector<Triple> triples(const std::vector<fft_dim>& axes) {
    std::vector<Triple> result;
    for (const fft_dim& d : axes)
        result.push_back({decltype(Triple::n)(d.n), decltype(Triple::n)(d.is), decltype(Triple::n)(d.os)});
    result.push_back({});  // a list of none still needs an address
    return result;
}

template <class Calls>
qsl_fftf_plan plan_by_guru(const transform_problem& p, const problem_arrays& a, unsigned flags) {
    const auto dims = triples<typename Calls::triple>(p.dims), batch = triples<typename Calls::triple>(p.batch);
    const int rank = static_cast<int>(p.dims.size()), batch_rank = static_cast<int>(p.batch.size());
    const auto* d = dims.data();
    const auto* b = batch.data();
    switch (p.kind) {
        case kind_c2c:
            return p.split ? Calls::split_dft(rank, d, batch_rank, b, a.in, a.in_imag, a.out, a.out_imag, flags)
                           : Calls::dft(rank, d, batch_rank, b, as_complex(a.in), as_complex(a.out), p.sign, flags);
        case kind_r2c:
            return p.split ? Calls::split_r2c(rank, d, batch_rank, b, a.in, a.out, a.out_imag, flags)
                           : Calls::r2c(rank, d, batch_rank, b, a.in, as_complex(a.out), flags);
        case kind_c2r:
            return p.split ? Calls::split_c2r(rank, d, batch_rank, b, a.in, a.in_imag, a.out, flags)
                           : Calls::c2r(rank, d, batch_rank, b, as_complex(a.in), a.out, flags);
        default: {
            std::vector<uint32_t> kinds = p.r2r_kinds;
            kinds.push_back(0);
            return Calls::r2r(rank, d, batch_rank, b, a.in, a.out, kinds.data(), flags);
        }
    }
}

qsl_fftf_plan plan_by_many(const transform_problem& p, const problem_arrays& a, unsigned flags) {
    std::vector<int> lengths;
    for (const fft_dim& d : p.dims) lengths.push_back(static_cast<int>(d.n));
    const int rank = static_cast<int>(lengths.size()), count = static_cast<int>(p.transforms());
    const int *n = lengths.data(), *in_embed = p.many_in.embed.data(), *out_embed = p.many_out.embed.data();
    const int is = p.many_in.stride, id = p.many_in.distance, os = p.many_out.stride, od = p.many_out.distance;
    switch (p.kind) {
        case kind_c2c:
            return qsl_fftf_plan_many_dft(rank, n, count, as_complex(a.in), in_embed, is, id, as_complex(a.out),
                                          out_embed, os, od, p.sign, flags);
        case kind_r2c:
            return qsl_fftf_plan_many_dft_r2c(rank, n, count, a.in, in_embed, is, id, as_complex(a.out), out_embed, os,
                                              od, flags);
        case kind_c2r:
            return qsl_fftf_plan_many_dft_c2r(rank, n, count, as_complex(a.in), in_embed, is, id, a.out, out_embed, os,
                                              od, flags);
        default:
            return qsl_fftf_plan_many_r2r(rank, n, count, a.in, in_embed, is, id, a.out, out_embed, os, od,
                                          p.r2r_kinds.data(), flags);
    }
}

}  // namespace

qsl_fftf_plan plan_by_call(const transform_problem& p, plan_call call, const problem_arrays& arrays) {
    const unsigned flags = p.measured ? QSL_FFTF_MEASURED : QSL_FFTF_RULES;
    switch (call) {
        case plan_call::many:
            return plan_by_many(p, arrays, flags);
        case plan_call::guru:
            return plan_by_guru<guru_calls>(p, arrays, flags);
        default:
            return plan_by_guru<guru64_calls>(p, arrays, flags);
    }
}

void execute_on(const transform_problem& p, qsl_fftf_plan plan, const problem_arrays& a) {
    switch (p.kind) {
        case kind_c2c:
            if (p.split) return qsl_fftf_execute_split_dft(plan, a.in, a.in_imag, a.out, a.out_imag);
            return qsl_fftf_execute_dft(plan, as_complex(a.in), as_complex(a.out));
        case kind_r2c:
            if (p.split) return qsl_fftf_execute_split_dft_r2c(plan, a.in, a.out, a.out_imag);
            return qsl_fftf_execute_dft_r2c(plan, a.in, as_complex(a.out));
        case kind_c2r:
            if (p.split) return qsl_fftf_execute_split_dft_c2r(plan, a.in, a.in_imag, a.out);
            return qsl_fftf_execute_dft_c2r(plan, as_complex(a.in), a.out);
        default:
            return qsl_fftf_execute_r2r(plan, a.in, a.out);
    }
}
