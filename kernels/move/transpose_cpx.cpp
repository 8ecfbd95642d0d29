// SPDX-License-Identifier: Apache-2.0
// Out-of-place transposes of complex matrices: vector blocks of 4 by 4, and one to three elements at a time
// at the edges.
#include "kernels/move/blocks.h"
#include "kernels/move/leaves.h"
#include "kernels/move/move.h"

namespace {

constexpr int64_t tile = 16;
static_assert(tile == leaf_side);

// Asks for the tile that comes next, whose rows are two cache lines long.
void prefetch_tile(const cpx* source, int64_t source_ld) {
    for (int64_t i = 0; i < tile; ++i) {
        __builtin_prefetch(source + i * source_ld);
        __builtin_prefetch(source + i * source_ld + 8);
    }
}

struct tiled_matrix {
    const cpx* source;
    cpx* destination;
    int64_t source_ld;
    int64_t destination_ld;

    // `ahead` leads from this tile of the source to the next one in the order of the walk.
    void move_tile(int64_t i, int64_t j, int64_t ahead) const {
        const cpx* from = source + i * source_ld + j;
        prefetch_tile(from + ahead, source_ld);
        transpose_blocks(from, destination + j * destination_ld + i, tile, tile, source_ld, destination_ld);
    }
};

}  // namespace

void transpose_cpx(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                   int64_t destination_ld) {
    if (rows < 1 || columns < 1) return;
    const cpx* from = as_cpx(source);
    cpx* to = as_cpx(destination);
    // A few streams side by side need no cutting.
    if (rows < 4 || columns < 4) return transpose_with_edges(from, to, rows, columns, source_ld, destination_ld);
    for_each_leaf(0, 0, rows, columns, [=](int64_t i, int64_t j, int64_t leaf_rows, int64_t leaf_columns) {
        const cpx* leaf = from + i * source_ld + j;
        cpx* image = to + j * destination_ld + i;
        if (leaf_rows == tile && leaf_columns == tile)
            transpose_blocks(leaf, image, tile, tile, source_ld, destination_ld);
        else
            transpose_with_edges(leaf, image, leaf_rows, leaf_columns, source_ld, destination_ld);
    });
}

void transpose_cpx_tiled(const float* source, float* destination, int64_t rows, int64_t columns, int64_t source_ld,
                         int64_t destination_ld) {
    if (rows < 1 || columns < 1) return;
    const tiled_matrix matrix = {as_cpx(source), as_cpx(destination), source_ld, destination_ld};
    const int64_t tiled_rows = rows / tile * tile, tiled_columns = columns / tile * tile;
    if (tiled_rows > tiled_columns) {
        for (int64_t i = 0; i < tiled_rows; i += tile)
            for (int64_t j = 0; j < tiled_columns; j += tile) matrix.move_tile(i, j, tile);
    } else {
        for (int64_t j = 0; j < tiled_columns; j += tile)
            for (int64_t i = 0; i < tiled_rows; i += tile) matrix.move_tile(i, j, tile * source_ld);
    }
    transpose_with_edges(matrix.source + tiled_columns, matrix.destination + tiled_columns * destination_ld, tiled_rows,
                         columns - tiled_columns, source_ld, destination_ld);
    transpose_with_edges(matrix.source + tiled_rows * source_ld, matrix.destination + tiled_rows, rows - tiled_rows,
                         columns, source_ld, destination_ld);
}
