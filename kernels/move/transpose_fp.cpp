// SPDX-License-Identifier: Apache-2.0
// Out-of-place transpose of a real matrix: parts of 64 by 64, in them NEON tiles of 8 rows and 16 columns, and
// smaller blocks at the edges.
#include "kernels/move/blocks.h"
#include "kernels/move/move.h"

#include <algorithm>

namespace {

constexpr int64_t part_side = 64;
constexpr int64_t tile_rows = 8;
constexpr int64_t tile_columns = 16;

void store_rows(const row4<float>& left, const row4<float>& right, float* destination) {
    store_row(left, destination);
    store_row(right, destination + 4);
}

// Eight rows of a cache line each become sixteen rows of 8.
void transpose_tile(const float* source, float* destination, int64_t source_ld, int64_t destination_ld) {
    for (int64_t i = 0; i < tile_rows; ++i) __builtin_prefetch(source + i * source_ld + tile_columns);
    for (int64_t j = 0; j < tile_columns; j += 4) {
        block4<float> upper, lower;
        upper.load(source + j, source_ld);
        lower.load(source + 4 * source_ld + j, source_ld);
        upper.transpose();
        lower.transpose();
        float* rows = destination + j * destination_ld;
        store_rows(upper.a, lower.a, rows);
        store_rows(upper.b, lower.b, rows + destination_ld);
        store_rows(upper.c, lower.c, rows + 2 * destination_ld);
        store_rows(upper.d, lower.d, rows + 3 * destination_ld);
    }
}

void transpose_part(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                    int64_t destination_ld) {
    const int64_t tiled_rows = rows / tile_rows * tile_rows, tiled_columns = columns / tile_columns * tile_columns;
    for (int64_t i = 0; i < tiled_rows; i += tile_rows) {
        const float* strip = source + i * source_ld;
        for (int64_t j = 0; j < tiled_columns; j += tile_columns)
            transpose_tile(strip + j, destination + j * destination_ld + i, source_ld, destination_ld);
        transpose_with_edges(strip + tiled_columns, destination + tiled_columns * destination_ld + i, tile_rows,
                             columns - tiled_columns, source_ld, destination_ld);
    }
    transpose_with_edges(source + tiled_rows * source_ld, destination + tiled_rows, rows - tiled_rows, columns,
                         source_ld, destination_ld);
}

}  // namespace

void transpose_fp(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                  int64_t destination_ld) {
    if (rows < 1 || columns < 1) return;
    // A few streams side by side need no cutting.
    if (rows < 4 || columns < 4)
        return transpose_with_edges(source, destination, rows, columns, source_ld, destination_ld);
    for (int64_t i = 0; i < rows; i += part_side)
        for (int64_t j = 0; j < columns; j += part_side)
            transpose_part(source + i * source_ld + j, destination + j * destination_ld + i,
                           std::min(part_side, rows - i), std::min(part_side, columns - j), source_ld, destination_ld);
}
