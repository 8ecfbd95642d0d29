// SPDX-License-Identifier: Apache-2.0
// Between two real arrays and one complex array. Rows with unit strides go through ZIP1 and ZIP2, or UZP1 and UZP2.
#include "kernels/move/move.h"

#include "kernels/ops/complex4.h"

namespace {

constexpr int64_t vector_floats = 8;

int64_t interleave_vectors(const float* re, const float* im, float* packed, int64_t n) {
    int64_t i = 0;
    for (; i + vector_floats <= n; i += vector_floats) {
        const complex4 r = load4(re + i), s = load4(im + i);
        store4(packed + 2 * i, zip_low(r, s));
        store4(packed + 2 * i + vector_floats, zip_high(r, s));
    }
    return i;
}

int64_t separate_vectors(const float* packed, float* re, float* im, int64_t n) {
    int64_t i = 0;
    for (; i + vector_floats <= n; i += vector_floats) {
        const complex4 low = load4(packed + 2 * i), high = load4(packed + 2 * i + vector_floats);
        store4(re + i, unzip_even(low, high));
        store4(im + i, unzip_odd(low, high));
    }
    return i;
}

void interleave_row(const float* re, const float* im, float* packed, int64_t n, int64_t split_stride,
                    int64_t packed_stride) {
    int64_t i = split_stride == 1 && packed_stride == 1 ? interleave_vectors(re, im, packed, n) : 0;
    for (; i < n; ++i) {
        packed[2 * i * packed_stride] = re[i * split_stride];
        packed[2 * i * packed_stride + 1] = im[i * split_stride];
    }
}

void separate_row(const float* packed, float* re, float* im, int64_t n, int64_t split_stride, int64_t packed_stride) {
    int64_t i = split_stride == 1 && packed_stride == 1 ? separate_vectors(packed, re, im, n) : 0;
    for (; i < n; ++i) {
        re[i * split_stride] = packed[2 * i * packed_stride];
        im[i * split_stride] = packed[2 * i * packed_stride + 1];
    }
}

int64_t row_length(int64_t n, bool hermitian) { return hermitian ? n / 2 + 1 : n; }

}  // namespace

void split_pack(const float* re, const float* im, float* packed, uint32_t kind, int32_t rank, const fft_dim* split_dims,
                const fft_dim* packed_dims) {
    if (rank == 1) {
        const int64_t n = row_length(split_dims->n, kind == kind_c2r);
        return interleave_row(re, im, packed, n, split_dims->is, packed_dims->is);
    }
    for (int64_t i = 0; i < split_dims->n; ++i)
        split_pack(re + i * split_dims->is, im + i * split_dims->is, packed + 2 * i * packed_dims->is, kind, rank - 1,
                   split_dims + 1, packed_dims + 1);
}

void split_unpack(const float* packed, float* re, float* im, uint32_t kind, int32_t rank, const fft_dim* split_dims,
                  const fft_dim* packed_dims) {
    if (rank == 1) {
        const int64_t n = row_length(split_dims->n, kind == kind_r2c);
        return separate_row(packed, re, im, n, split_dims->os, packed_dims->os);
    }
    for (int64_t i = 0; i < split_dims->n; ++i)
        split_unpack(packed + 2 * i * packed_dims->os, re + i * split_dims->os, im + i * split_dims->os, kind, rank - 1,
                     split_dims + 1, packed_dims + 1);
}
