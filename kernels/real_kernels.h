// SPDX-License-Identifier: Apache-2.0
// Calling contracts and look-ups of the generated kernels of real data. Offsets, distances and strides count floats.
#pragma once
#include <cstdint>

#include "kernels/kernel_types.h"

struct fft_plan;

// One or more real transforms of one size. a0 and a1 are the real side at positions 0 and 1 (even- and odd-indexed
// elements), b0 and b1 the spectrum side: real part and imaginary part of coefficient 0 (complex storage: b1 is b0 + 1;
// half-complex storage: b1 is b0 plus n strides). s0[i] is the offset of element pair i into a0 and a1, s1[k] and s2[k]
// those of coefficient k's real and imaginary part into b0 and b1. `count` rows lie d0 apart on the real side and d1
// apart on the spectrum side for a forward kernel; a backward kernel gets the spectrum's distance first.
//   r2c_direct, c2r_direct: one row; count and distances are ignored. The imaginary parts of coefficient 0 and of
//     coefficient n / 2 are neither written (r2c) nor read (c2r).
//   r2c_many, c2r_many, r2hc_quad: rows in groups of four, one row a lane; count % 4 rows are left undone.
//   r2hc_loop, hc2r_loop: any count.
using real_kernel = void (*)(float* a0, float* a1, float* b0, float* b1, const int64_t* s0, const int64_t* s1,
                             const int64_t* s2, int64_t count, int64_t d0, int64_t d1);

// Rows of a type I cosine transform: element i at in_offsets[i], result k at out_offsets[k].
using redft00_kernel = void (*)(const float* in, float* out, const int64_t* in_offsets, const int64_t* out_offsets,
                                int64_t count, int64_t d0, int64_t d1);

// Tables that execute functions read: the kernel of length n stands at n - 1. Kernels of contiguous rows in groups of
// four, which write whole spectra, with the imaginary parts that are zero, or read them without using those. a0 and b0,
// count and distances are used; count % 4 rows are left undone.
extern const real_kernel r2c_rows_fwd[128], c2r_rows_bwd[128];

// Likewise, one contiguous row. The imaginary parts of coefficient 0 and of coefficient n / 2 are neither written nor
// read. In place or not.
extern const direct_contig_kernel r2c_alone_fwd[256], c2r_alone_bwd[256], r2hc_alone_fwd[128], hc2r_alone_bwd[128],
    dht_alone_fwd[128];

// Null for a size that the family lacks.
real_kernel lookup_r2c_direct(const fft_plan* plan, uint64_t size);
real_kernel lookup_c2r_direct(const fft_plan* plan, uint64_t size);
real_kernel lookup_r2c_many(const fft_plan* plan, uint64_t size);
real_kernel lookup_c2r_many(const fft_plan* plan, uint64_t size);

// Short lists of (size, kernel) that a solver searches. The last row has size 0 and no kernel.
struct real_kernel_row {
    uint64_t size;
    real_kernel kernel;
};
struct redft00_kernel_row {
    uint64_t size;
    redft00_kernel kernel;
};
extern const real_kernel_row r2hc_quad[];
extern const real_kernel_row r2hc_loop[];
extern const real_kernel_row hc2r_loop[];
extern const redft00_kernel_row redft00_loop[];

// One stage of the chain of Hermitian stages (Sorensen et al. 1987). Before the stage, `done` sequences are interleaved
// element by element, each the non-negative half of a Hermitian spectrum: row k of branch b stands at k done + b.
struct sorensen_stage_record;
using sorensen_kernel = void (*)(const sorensen_stage_record* stage, const float* in, float* out);

struct sorensen_stage_record {
    sorensen_kernel kernel;
    uint64_t done;        // m: product of the radices of the stages in front of this one
    uint64_t rest;        // L: length of each Hermitian sequence that this stage produces
    uint64_t half;        // coefficient rows of the general loop: L / 2, one more for an odd L
    uint64_t has_middle;  // 1 for an even L: row L / 2 is real and stands apart
    int64_t is;
    int64_t os;
    float* twiddles;  // null on the last stage
    uint64_t spare[2];
    uint64_t radix;
    int64_t sign;
};
static_assert(sizeof(sorensen_stage_record) == 12 * 8);

// Write the kernel, or null, into the record. Found only for unit strides and sign +1.
void stage_lookup_sorensen_first_neon(sorensen_stage_record* stage, const fft_plan* plan);
void stage_lookup_sorensen_other_neon(sorensen_stage_record* stage, const fft_plan* plan);
void stage_lookup_sorensen_last_neon(sorensen_stage_record* stage, const fft_plan* plan);
void stage_lookup_sorensen_first_sve(sorensen_stage_record* stage, const fft_plan* plan);
void stage_lookup_sorensen_other_sve(sorensen_stage_record* stage, const fft_plan* plan);
void stage_lookup_sorensen_last_sve(sorensen_stage_record* stage, const fft_plan* plan);
