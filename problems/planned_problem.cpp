// SPDX-License-Identifier: Apache-2.0
#include "problems/planned_problem.h"

#include "interface/guru_arguments.h"
#include "interface/plan_call.h"
#include "problems/refusal_reason.h"

namespace {

struct family_terms {
    uint32_t kind;
    int sign;
};

family_terms terms_of(const problems::problem& p) {
    switch (p.kind) {
        case problems::family::r2c:
            return {kind_r2c, -1};
        case problems::family::c2r:
            return {kind_c2r, +1};
        case problems::family::r2r:
            return {kind_r2r, 0};
        default:
            return {kind_c2c, p.sign};
    }
}

unsigned flags_of(const problems::problem& p) { return p.measured ? QSL_FFTF_MEASURED : QSL_FFTF_RULES; }

bool moves_data(const problems::problem& p) {
    return p.kind == problems::family::transpose || p.kind == problems::family::copy;
}

// Of a single transform, which may be longer than the call's numbers go, no distance is looked at.
int distance(const problems::problem& p, const problems::side& s) { return p.batch > 1 ? static_cast<int>(s.dist) : 1; }

// A transform of rank 0 over a batch of rows and columns.
fft_plan* movement_record(const problems::problem& p, float* in, float* out) {
    fft_iodim64 batch[2];
    for (int d : {0, 1}) batch[d] = {p.n[d], p.in.row_stride[d], p.out.row_stride[d]};
    return guru_record({width::wide, kind_c2c, sign_forward, interleaved_arrays, flags_of(p), 0, batch, 2, batch, in,
                        nullptr, out, nullptr, nullptr});
}

}  // namespace

many_arguments arguments_of(const problems::problem& p, float* in, float* out) {
    const auto [kind, sign] = terms_of(p);
    return {kind,
            sign,
            flags_of(p),
            static_cast<int>(p.n.size()),
            p.n.data(),
            p.batch,
            in,
            nullptr,
            p.in.stride,
            distance(p, p.in),
            out,
            nullptr,
            p.out.stride,
            distance(p, p.out),
            reinterpret_cast<const uint32_t*>(p.r2r_kinds.data())};
}

std::string reason_of(const problems::problem& p, float* in, float* out) {
    return moves_data(p) ? "" : many_reason(arguments_of(p, in, out));
}

fft_plan* record_of(const problems::problem& p, float* in, float* out) {
    qsl_fftf_plan_with_nthreads(p.threads);
    return moves_data(p) ? movement_record(p, in, out) : many_record(arguments_of(p, in, out));
}

qsl_fftf_plan plan_problem_text(const problems::problem& p, float* in, float* out) {
    return finish_plan_call(record_of(p, in, out));
}
