// SPDX-License-Identifier: Apache-2.0
// In-place transposes of square matrices: a tile of 8 by 8 changes places with its mirror across the diagonal, both
// transposed in registers by blocks of 4 by 4. Of the last size % 8 rows four more may go by blocks, the rest by single
// elements.
#include "kernels/move/blocks.h"
#include "kernels/move/move.h"

#include <utility>

namespace {

constexpr int64_t tile = 8;

template <class element>
void swap_blocks(element* below, element* above, int64_t ld) {
    block4<element> a, b;
    a.load(below, ld);
    b.load(above, ld);
    a.transpose();
    b.transpose();
    a.store(above, ld);
    b.store(below, ld);
}

template <class element>
void transpose_block(element* block, int64_t ld) {
    block4<element> b;
    b.load(block, ld);
    b.transpose();
    b.store(block, ld);
}

template <class element>
void transpose_diagonal_tile(element* corner, int64_t ld) {
    transpose_block(corner, ld);
    transpose_block(corner + 4 * ld + 4, ld);
    swap_blocks(corner + 4 * ld, corner + 4, ld);
}

// The pair that comes next lies to the right of the lower tile and below the upper one. A row of a complex tile is a
// whole cache line and worth asking for; a row of a real one is half a line.
template <class element>
void swap_tiles(element* below, element* above, int64_t ld) {
    if (sizeof(element) == sizeof(cpx))
        for (int64_t i = 0; i < tile; ++i) {
            __builtin_prefetch(below + i * ld + tile);
            __builtin_prefetch(above + (tile + i) * ld);
        }
    for (int64_t i = 0; i < tile; i += 4)
        for (int64_t j = 0; j < tile; j += 4) swap_blocks(below + i * ld + j, above + j * ld + i, ld);
}

template <class element>
void transpose_square(element* matrix, int64_t size, int64_t ld) {
    const int64_t tiled = size & ~(tile - 1);
    for (int64_t i = 0; i < tiled; i += tile) {
        transpose_diagonal_tile(matrix + i * ld + i, ld);
        for (int64_t j = 0; j < i; j += tile) swap_tiles(matrix + i * ld + j, matrix + j * ld + i, ld);
    }
    int64_t done = tiled;
    if (size - tiled >= 4) {
        for (int64_t j = 0; j < tiled; j += 4) swap_blocks(matrix + tiled * ld + j, matrix + j * ld + tiled, ld);
        transpose_block(matrix + tiled * ld + tiled, ld);
        done += 4;
    }
    for (int64_t i = done; i < size; ++i)
        for (int64_t j = 0; j < i; ++j) std::swap(matrix[i * ld + j], matrix[j * ld + i]);
}

}  // namespace

void transpose_cpx_square(float* matrix, int64_t size, int64_t ld) { transpose_square(as_cpx(matrix), size, ld); }
void transpose_fp_square(float* matrix, int64_t size, int64_t ld) { transpose_square(matrix, size, ld); }
