// SPDX-License-Identifier: Apache-2.0
// The kernels that move data and compute nothing (one of them multiplies on the way). Counts, strides and leading
// dimensions are in elements of the kernel's own width: 8 bytes for _cpx, 4 bytes for _fp. A count of 0 moves nothing,
// nothing is allocated and nothing is kept between calls. Unless told otherwise source and destination don't overlap.
#pragma once
#include "record/fft_plan.h"

// Element (i, j) of the source, at i * source_ld + j, goes to j * destination_ld + i. The cpx form cuts itself to fit
// any cache; the tiled one, for matrices that fit, goes straight through in tiles of 16 by 16.
void transpose_cpx(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                   int64_t destination_ld);
void transpose_cpx_tiled(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                         int64_t destination_ld);
void transpose_fp(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                  int64_t destination_ld);

// A square matrix in its own place.
void transpose_cpx_square(float* matrix, int64_t size, int64_t ld);
void transpose_fp_square(float* matrix, int64_t size, int64_t ld);

// Between `count` strided transforms of `length` elements and groups of four with their elements interleaved. Strided,
// element r of transform t stands at r * stride + t. Grouped, element r of lane c of group g stands at
// 4 * (g * group_length + r) + c; the last count % 4 transforms are plain rows behind the groups, group_length apart.
void pack_lanes4(const float* strided, float* grouped, int64_t length, int64_t count, int64_t group_length,
                 int64_t stride);
void unpack_lanes4(const float* grouped, float* strided, int64_t length, int64_t count, int64_t group_length,
                   int64_t stride);
// The same, each element multiplied by its entry in a table of the grouped layout.
void unpack_lanes4_twiddle(const float* grouped, const float* table, float* strided, int64_t length, int64_t count,
                           int64_t group_length, int64_t stride);

// One strided row, in ascending order; source and destination may be the same if the strides are.
void copy_cpx(const float* source, float* destination, int64_t n, int64_t source_stride, int64_t destination_stride);
void copy_fp(const float* source, float* destination, int64_t n, int64_t source_stride, int64_t destination_stride);

// Rows of contiguous elements.
void copy_rows_cpx(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                   int64_t destination_ld);
void copy_rows_fp(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                  int64_t destination_ld);

// Rows of strided elements.
void copy_matrix_cpx(const float* source, float* destination, int64_t rows, int64_t columns,
                     int64_t source_column_stride, int64_t source_row_stride, int64_t destination_column_stride,
                     int64_t destination_row_stride);
void copy_matrix_fp(const float* source, float* destination, int64_t rows, int64_t columns,
                    int64_t source_column_stride, int64_t source_row_stride, int64_t destination_column_stride,
                    int64_t destination_row_stride);

// Any number of dimensions, the last one innermost.
void copy_nd_cpx(const float* source, float* destination, int32_t rank, const fft_dim* dims);
void copy_nd_fp(const float* source, float* destination, int32_t rank, const fft_dim* dims);

// Between two real arrays, laid out as one side of `split_dims` says, and one complex array, laid out as the same side
// of `packed_dims`. split_pack works on the input sides, split_unpack on the output sides. The last dimension of
// Hermitian data (the input of c2r, the output of r2c) has n / 2 + 1 elements.
void split_pack(const float* re, const float* im, float* packed, uint32_t kind, int32_t rank, const fft_dim* split_dims,
                const fft_dim* packed_dims);
void split_unpack(const float* packed, float* re, float* im, uint32_t kind, int32_t rank, const fft_dim* split_dims,
                  const fft_dim* packed_dims);
