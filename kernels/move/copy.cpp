// SPDX-License-Identifier: Apache-2.0
// Copies: a contiguous row in SVE vectors, a strided row element by element, and everything made of them.
#include "kernels/move/blocks.h"
#include "kernels/move/move.h"
#include "kernels/ops/complex4.h"

namespace {

constexpr int64_t vector_floats = 8;

void copy_contiguous(const float* source, float* destination, int64_t floats) {
    for (; floats >= 4 * vector_floats; floats -= 4 * vector_floats) {
        const complex4 a = load4(source), b = load4(source + 8), c = load4(source + 16), d = load4(source + 24);
        store4(destination, a);
        store4(destination + 8, b);
        store4(destination + 16, c);
        store4(destination + 24, d);
        source += 4 * vector_floats;
        destination += 4 * vector_floats;
    }
    for (; floats >= vector_floats; floats -= vector_floats) {
        store4(destination, load4(source));
        source += vector_floats;
        destination += vector_floats;
    }
    if (floats > 0) copy_part(source, destination, floats);
}

void copy_contiguous(const cpx* source, cpx* destination, int64_t n) {
    copy_contiguous(reinterpret_cast<const float*>(source), reinterpret_cast<float*>(destination), 2 * n);
}

template <class element>
void copy_strided(const element* source, element* destination, int64_t n, int64_t is, int64_t os) {
    int64_t i = 0;
    for (; i + 8 <= n; i += 8, source += 8 * is, destination += 8 * os)
        for (int k = 0; k < 8; ++k) destination[k * os] = source[k * is];
    for (; i < n; ++i, source += is, destination += os) *destination = *source;
}

template <class element>
void copy_row(const element* source, element* destination, int64_t n, int64_t is, int64_t os) {
    if (is == 1 && os == 1)
        copy_contiguous(source, destination, n);
    else
        copy_strided(source, destination, n, is, os);
}

template <class element>
void copy_rows(const element* source, element* destination, int64_t rows, int64_t columns, int64_t source_ld,
               int64_t destination_ld) {
    for (int64_t i = 0; i < rows; ++i)
        copy_contiguous(source + i * source_ld, destination + i * destination_ld, columns);
}

void transpose(const cpx* source, cpx* destination, int64_t rows, int64_t columns, int64_t source_ld,
               int64_t destination_ld) {
    transpose_cpx(reinterpret_cast<const float*>(source), reinterpret_cast<float*>(destination), rows, columns,
                  source_ld, destination_ld);
}

void transpose(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
               int64_t destination_ld) {
    transpose_fp(source, destination, rows, columns, source_ld, destination_ld);
}

// With unit strides in one direction on each side the copy is one of rows or a transpose, both in vectors.
template <class element>
void copy_matrix(const element* source, element* destination, int64_t rows, int64_t columns, fft_dim column_strides,
                 fft_dim row_strides) {
    if (column_strides.is == 1 && column_strides.os == 1)
        return copy_rows(source, destination, rows, columns, row_strides.is, row_strides.os);
    if (row_strides.is == 1 && column_strides.os == 1)
        return transpose(source, destination, columns, rows, column_strides.is, row_strides.os);
    if (column_strides.is == 1 && row_strides.os == 1)
        return transpose(source, destination, rows, columns, row_strides.is, column_strides.os);
    if (columns < 1) return;
    for (int64_t i = 0; i < rows; ++i)
        copy_strided(source + i * row_strides.is, destination + i * row_strides.os, columns, column_strides.is,
                     column_strides.os);
}

template <class element>
void copy_nd(const element* source, element* destination, int32_t rank, const fft_dim* dims) {
    if (rank == 1) return copy_row(source, destination, dims->n, dims->is, dims->os);
    for (int64_t i = 0; i < dims->n; ++i)
        copy_nd(source + i * dims->is, destination + i * dims->os, rank - 1, dims + 1);
}

}  // namespace

void copy_cpx(const float* source, float* destination, int64_t n, int64_t source_stride, int64_t destination_stride) {
    copy_row(as_cpx(source), as_cpx(destination), n, source_stride, destination_stride);
}

void copy_fp(const float* source, float* destination, int64_t n, int64_t source_stride, int64_t destination_stride) {
    copy_row(source, destination, n, source_stride, destination_stride);
}

void copy_rows_cpx(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                   int64_t destination_ld) {
    copy_rows(as_cpx(source), as_cpx(destination), rows, columns, source_ld, destination_ld);
}

void copy_rows_fp(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                  int64_t destination_ld) {
    copy_rows(source, destination, rows, columns, source_ld, destination_ld);
}

void copy_matrix_cpx(const float* source, float* destination, int64_t rows, int64_t columns,
                     int64_t source_column_stride, int64_t source_row_stride, int64_t destination_column_stride,
                     int64_t destination_row_stride) {
    copy_matrix(as_cpx(source), as_cpx(destination), rows, columns,
                {columns, source_column_stride, destination_column_stride},
                {rows, source_row_stride, destination_row_stride});
}

void copy_matrix_fp(const float* source, float* destination, int64_t rows, int64_t columns,
                    int64_t source_column_stride, int64_t source_row_stride, int64_t destination_column_stride,
                    int64_t destination_row_stride) {
    copy_matrix(source, destination, rows, columns, {columns, source_column_stride, destination_column_stride},
                {rows, source_row_stride, destination_row_stride});
}

void copy_nd_cpx(const float* source, float* destination, int32_t rank, const fft_dim* dims) {
    copy_nd(as_cpx(source), as_cpx(destination), rank, dims);
}

void copy_nd_fp(const float* source, float* destination, int32_t rank, const fft_dim* dims) {
    copy_nd(source, destination, rank, dims);
}
