// SPDX-License-Identifier: Apache-2.0
// The upsampling call. Its record carries the source size in `dims` and the target size in `howmany`; it has no
// strides.
#include "interface/plan_call.h"
#include "interface/upsampling_arguments.h"

namespace {

using arguments = upsampling_arguments;

constexpr argument_check<arguments> checks[] = {
    {"every size is at least 1", [](const arguments& a) { return a.n0 >= 1 && a.n1 >= 1 && a.m0 >= 1 && a.m1 >= 1; }},
    {"the target is at least as large as the source", [](const arguments& a) { return a.n0 <= a.m0 && a.n1 <= a.m1; }},
};

}  // namespace

const char* upsampling_refusal(const upsampling_arguments& a) { return first_failed<arguments>(checks, a); }

qsl_fftf_plan qsl_fftf_plan_upsampling_2d(int n0, int n1, int m0, int m1, float* in, float* out, unsigned flags,
                                          float shift_x, float shift_y) {
    if (upsampling_refusal({n0, n1, m0, m1})) return nullptr;
    fft_plan* record = new_problem(kind_upsampling_2d, 0, interleaved_arrays, flags);
    if (!record) return nullptr;
    record->in = in;
    record->out = out;
    record->rank = 2;
    record->dims[0].n = n0;
    record->dims[1].n = n1;
    record->howmany_rank = 2;
    record->howmany[0].n = m0;
    record->howmany[1].n = m1;
    record->upsample_shift_x = shift_x;
    record->upsample_shift_y = shift_y;
    return finish_plan_call(record);
}
