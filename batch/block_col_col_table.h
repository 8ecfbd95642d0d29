// SPDX-License-Identifier: Apache-2.0
// How a batch of complex transforms stored by columns is cut into blocks.
#pragma once
#include <cstdint>

enum block_variant : uint64_t {
    block_parallel = 0,  // groups run where they stand, without scratch
    block_copy = 1,      // a block is gathered as it stands, side by side
    block_trans = 2,     // a block is transposed into contiguous rows
};

struct block_col_col_case {
    uint64_t n;        // length of the transforms
    uint64_t exact;    // the only count that the case applies to; 0 for any
    uint64_t block;    // transforms of a block: the count has to be a larger multiple of it
    uint64_t variant;  // block_variant
};

constexpr int block_col_col_count = 57;
extern const block_col_col_case block_col_col_table[block_col_col_count];
