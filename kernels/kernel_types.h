// SPDX-License-Identifier: Apache-2.0
// Calling contracts of the generated complex kernels. Strides and distances count complex elements; all data is
// interleaved, real part first. Direct and many kernels take the output first, stage kernels the input first.
#pragma once
#include <cstdint>

// One whole transform, unit strides. The last two arguments are passed and ignored.
using direct_contig_kernel = void (*)(float* out, const float* in, const void* aux, const void* plan);

// One whole transform. The last argument is passed and ignored.
using direct_strided_kernel = void (*)(float* out, const float* in, int64_t is, int64_t os, const void* aux);

// Two (pair, NEON) or four (quad, SVE) adjacent transforms at once: lane c of element j stands at j * stride + c.
using many_kernel = void (*)(float* out, const float* in, int64_t is, int64_t os);

// Two transforms at once, each lane at its own address: lane c of element j stands at j * stride + c * distance.
using many_assemble_kernel = void (*)(float* out, const float* in, int64_t is, int64_t os, int64_t idist,
                                      int64_t odist);

// `count` transforms of adjacent elements: element j of transform c stands at j + c * distance.
using many_rows_kernel = void (*)(float* out, const float* in, int64_t idist, int64_t odist, int64_t count);

struct stage_record;
using stage_kernel = void (*)(const stage_record* stage, const float* in, float* out);

// One stage of a multi-stage transform of length n = done * radix * rest. For all i < done, k < radix, l < rest:
//   out[((k done + i) rest + l) os] =
//       sum over j < radix of in[((i radix + j) rest + l) is] w(i, j) exp(2 pi I sign j k / radix)
// with w(i, j) = exp(2 pi I sign i j rest / n) from `twiddles`. Batched forms add the lane to both positions.
struct stage_record {
    stage_kernel kernel;  // null: the execute function carries this stage out itself
    uint64_t rest;        // L: product of the radices behind this stage
    uint64_t done;        // m: product of the radices in front of this stage
    int64_t is;
    int64_t os;
    float* twiddles;
    uint64_t radix;
    int64_t sign;
    uint32_t double_is;
    uint32_t double_os;
    uint64_t spare[7];
};
static_assert(sizeof(stage_record) == 16 * 8);

// A spare word that isn't 0 tells the last stage, and the one in front of it, that the rows between them lie in blocks:
// of rows 4 a to 4 a + 3, the columns 4 b to 4 b + 3 stand together, row by row, and the blocks of these rows follow
// one another. Four rows are then loaded and transposed by one instruction. For the contiguous SVE kernels, where rows
// and columns are multiples of four.
constexpr int word_of_blocks = 2;
// Registers hold what such loads bring up to radix 20; 32 takes one block after the other and puts aside what it makes
// of it.
constexpr bool takes_blocks(uint64_t radix) { return radix % 4 == 0 && (radix <= 20 || radix == 32); }
inline bool is_in_blocks(const stage_record* stage) { return stage->spare[word_of_blocks] != 0; }
