// SPDX-License-Identifier: Apache-2.0
// Elements, and blocks of 4 by 4 of them in four vectors. A row of four complex values fills an SVE vector of 256 bits,
// a row of four reals a NEON vector. The shuffles are UZP1 and UZP2 on Arm.
#pragma once
#include <cstdint>
#include <cstring>

// Moved as one word of 64 bits. Records and interfaces keep plain float pointers.
struct cpx {
    float re, im;
};
inline const cpx* as_cpx(const float* p) { return reinterpret_cast<const cpx*>(p); }
inline cpx* as_cpx(float* p) { return reinterpret_cast<cpx*>(p); }

template <class element>
struct row4_of;
template <>
struct row4_of<cpx> {
    typedef uint64_t type __attribute__((vector_size(32)));
};
template <>
struct row4_of<float> {
    typedef float type __attribute__((vector_size(16)));
};

template <class element>
using row4 = typename row4_of<element>::type;

template <class element>
[[gnu::always_inline]] inline void load_row(row4<element>& row, const element* source) {
    memcpy(&row, source, sizeof row);
}
template <class element>
[[gnu::always_inline]] inline void store_row(const row4<element>& row, element* destination) {
    memcpy(destination, &row, sizeof row);
}

// Four rows by name: in an array and a loop, gcc keeps them in memory.
template <class element>
struct block4 {
    row4<element> a, b, c, d;

    [[gnu::always_inline]] void load(const element* source, int64_t ld) {
        load_row(a, source);
        load_row(b, source + ld);
        load_row(c, source + 2 * ld);
        load_row(d, source + 3 * ld);
    }
    [[gnu::always_inline]] void store(element* destination, int64_t ld) const {
        store_row(a, destination);
        store_row(b, destination + ld);
        store_row(c, destination + 2 * ld);
        store_row(d, destination + 3 * ld);
    }
    // Two rounds: the first separates even from odd columns, the second does so once more.
    [[gnu::always_inline]] void transpose() {
        const row4<element> ab_even = __builtin_shufflevector(a, b, 0, 2, 4, 6),
                            ab_odd = __builtin_shufflevector(a, b, 1, 3, 5, 7),
                            cd_even = __builtin_shufflevector(c, d, 0, 2, 4, 6),
                            cd_odd = __builtin_shufflevector(c, d, 1, 3, 5, 7);
        a = __builtin_shufflevector(ab_even, cd_even, 0, 2, 4, 6);
        b = __builtin_shufflevector(ab_odd, cd_odd, 0, 2, 4, 6);
        c = __builtin_shufflevector(ab_even, cd_even, 1, 3, 5, 7);
        d = __builtin_shufflevector(ab_odd, cd_odd, 1, 3, 5, 7);
    }
};

// Rows of two NEON vectors: an exchange moves half as much as one of SVE, but twice as many start in a cycle, one round
// is enough, and pairs of vectors are loaded and stored at once.
template <>
struct block4<cpx> {
    typedef uint64_t pair __attribute__((vector_size(16)));
    struct row {
        pair lo, hi;
    };
    row a, b, c, d;

    [[gnu::always_inline]] static row load_row(const cpx* source) {
        row r;
        memcpy(&r.lo, source, sizeof r.lo);
        memcpy(&r.hi, source + 2, sizeof r.hi);
        return r;
    }
    [[gnu::always_inline]] static void store_row(const row& r, cpx* destination) {
        memcpy(destination, &r.lo, sizeof r.lo);
        memcpy(destination + 2, &r.hi, sizeof r.hi);
    }
    [[gnu::always_inline]] void load(const cpx* source, int64_t ld) {
        a = load_row(source);
        b = load_row(source + ld);
        c = load_row(source + 2 * ld);
        d = load_row(source + 3 * ld);
    }
    [[gnu::always_inline]] void store(cpx* destination, int64_t ld) const {
        store_row(a, destination);
        store_row(b, destination + ld);
        store_row(c, destination + 2 * ld);
        store_row(d, destination + 3 * ld);
    }
    [[gnu::always_inline]] static pair evens(pair x, pair y) { return __builtin_shufflevector(x, y, 0, 2); }
    [[gnu::always_inline]] static pair odds(pair x, pair y) { return __builtin_shufflevector(x, y, 1, 3); }
    [[gnu::always_inline]] void transpose() {
        const block4 t = *this;
        a = {evens(t.a.lo, t.b.lo), evens(t.c.lo, t.d.lo)};
        b = {odds(t.a.lo, t.b.lo), odds(t.c.lo, t.d.lo)};
        c = {evens(t.a.hi, t.b.hi), evens(t.c.hi, t.d.hi)};
        d = {odds(t.a.hi, t.b.hi), odds(t.c.hi, t.d.hi)};
    }
};

// Out of place; rows and columns are multiples of 4.
template <class element>
[[gnu::always_inline]] inline void transpose_blocks(const element* source, element* destination, int64_t rows,
                                                    int64_t columns, int64_t source_ld, int64_t destination_ld) {
    for (int64_t i = 0; i < rows; i += 4)
        for (int64_t j = 0; j < columns; j += 4) {
            block4<element> block;
            block.load(source + i * source_ld + j, source_ld);
            block.transpose();
            block.store(destination + j * destination_ld + i, destination_ld);
        }
}

// Element k < width of step i goes from i * source_step + k * source_lane to i * destination_step + k *
// destination_lane. All of a step are read before one is written.
template <int width, class element>
void copy_narrow(const element* source, element* destination, int64_t n, int64_t source_step, int64_t source_lane,
                 int64_t destination_step, int64_t destination_lane) {
    for (int64_t i = 0; i < n; ++i, source += source_step, destination += destination_step) {
        element step[width];
        for (int k = 0; k < width; ++k) step[k] = source[k * source_lane];
        for (int k = 0; k < width; ++k) destination[k * destination_lane] = step[k];
    }
}

// What is left beside whole blocks: `width` of 0 to 3.
template <class element>
void transpose_edge(const element* source, element* destination, int64_t width, int64_t n, int64_t source_step,
                    int64_t source_lane, int64_t destination_step, int64_t destination_lane) {
    if (width == 3)
        copy_narrow<3>(source, destination, n, source_step, source_lane, destination_step, destination_lane);
    else if (width == 2)
        copy_narrow<2>(source, destination, n, source_step, source_lane, destination_step, destination_lane);
    else if (width == 1)
        copy_narrow<1>(source, destination, n, source_step, source_lane, destination_step, destination_lane);
}

// Whole blocks, then the columns right of them, then the rows below.
template <class element>
void transpose_with_edges(const element* source, element* destination, int64_t rows, int64_t columns, int64_t source_ld,
                          int64_t destination_ld) {
    const int64_t block_rows = rows & ~int64_t{3}, block_columns = columns & ~int64_t{3};
    transpose_blocks(source, destination, block_rows, block_columns, source_ld, destination_ld);
    transpose_edge(source + block_columns, destination + block_columns * destination_ld, columns - block_columns,
                   block_rows, source_ld, 1, 1, destination_ld);
    transpose_edge(source + block_rows * source_ld, destination + block_rows, rows - block_rows, columns, 1, source_ld,
                   destination_ld, 1);
}
