// SPDX-License-Identifier: Apache-2.0
// The seven guru calls of each width under common names, for tests that run both widths through one function.
#pragma once
#include "include/qfftf.h"

struct guru_calls {
    using triple = fft_iodim;
    static constexpr auto dft = qsl_fftf_plan_guru_dft;
    static constexpr auto r2c = qsl_fftf_plan_guru_dft_r2c;
    static constexpr auto c2r = qsl_fftf_plan_guru_dft_c2r;
    static constexpr auto r2r = qsl_fftf_plan_guru_r2r;
    static constexpr auto split_dft = qsl_fftf_plan_guru_split_dft;
    static constexpr auto split_r2c = qsl_fftf_plan_guru_split_dft_r2c;
    static constexpr auto split_c2r = qsl_fftf_plan_guru_split_dft_c2r;
};

struct guru64_calls {
    using triple = fft_iodim64;
    static constexpr auto dft = qsl_fftf_plan_guru64_dft;
    static constexpr auto r2c = qsl_fftf_plan_guru64_dft_r2c;
    static constexpr auto c2r = qsl_fftf_plan_guru64_dft_c2r;
    static constexpr auto r2r = qsl_fftf_plan_guru64_r2r;
    static constexpr auto split_dft = qsl_fftf_plan_guru64_split_dft;
    static constexpr auto split_r2c = qsl_fftf_plan_guru64_split_dft_r2c;
    static constexpr auto split_c2r = qsl_fftf_plan_guru64_split_dft_c2r;
};
