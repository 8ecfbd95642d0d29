// SPDX-License-Identifier: Apache-2.0
// Look-ups of the kernels of stages: they write the kernel of the record's radix, or null, into the record.
#pragma once
#include "kernels/kernel_types.h"
#include "record/fft_plan.h"

// The form follows from the plan's batch and strides: pair or quad batch, unit strides, or any strides. The plain
// look-ups, for the convolution solvers, have no batched form. Twiddle tables are the caller's business.
void stage_lookup_first_neon(stage_record* stage, const fft_plan* plan);
void stage_lookup_other_neon(stage_record* stage, const fft_plan* plan);
void stage_lookup_last_neon(stage_record* stage, const fft_plan* plan);
void stage_lookup_other_plain_neon(stage_record* stage, const fft_plan* plan);
void stage_lookup_last_plain_neon(stage_record* stage, const fft_plan* plan);
void stage_lookup_first_sve(stage_record* stage, const fft_plan* plan);
void stage_lookup_other_sve(stage_record* stage, const fft_plan* plan);
void stage_lookup_last_sve(stage_record* stage, const fft_plan* plan);
void stage_lookup_other_plain_sve(stage_record* stage, const fft_plan* plan);
void stage_lookup_last_plain_sve(stage_record* stage, const fft_plan* plan);
