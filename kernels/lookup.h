// SPDX-License-Identifier: Apache-2.0
// Look-ups of complex kernels that are whole transforms. They take the direction from the plan's `sign` (forward for
// -1, else backward) and return null for a size that the family lacks.
#pragma once
#include "kernels/kernel_types.h"

struct fft_plan;

direct_contig_kernel lookup_direct_neon(const fft_plan* plan, uint64_t size);
direct_strided_kernel lookup_direct_discrete_neon(const fft_plan* plan, uint64_t size);
direct_contig_kernel lookup_direct_sve(const fft_plan* plan, uint64_t size);
direct_contig_kernel lookup_direct_scalar(const fft_plan* plan, uint64_t size);
many_kernel lookup_many_pair_neon(const fft_plan* plan, uint64_t size);
many_kernel lookup_many_quad_sve(const fft_plan* plan, uint64_t size);
many_assemble_kernel lookup_many_assemble_neon(const fft_plan* plan, uint64_t size);
many_rows_kernel lookup_many_rows_neon(const fft_plan* plan, uint64_t size);

// Tables that execute functions read: the kernel of length n stands at n - 1.
extern const many_kernel many_quad_sve_fwd[64], many_quad_sve_bwd[64];
extern const many_rows_kernel many_rows_neon_fwd[64], many_rows_neon_bwd[64];

// Lengths that run by stages, for which a straight kernel costs less where four transforms fill the lanes of vectors:
// 64, and 128 that is no size of stages.
many_kernel lookup_straight_quad_sve(const fft_plan* plan, uint64_t size);
many_rows_kernel lookup_straight_rows_neon(const fft_plan* plan, uint64_t size);
