// SPDX-License-Identifier: Apache-2.0
#include "shim/strided_copy.h"

namespace {

// The indices of one side, outermost first, with their strides in floats.
struct side {
    bool is_complex;
    int rank;
    ptrdiff_t n[2 * most_dims];
    ptrdiff_t stride[2 * most_dims];

    side(const problem& p, bool in_side) : is_complex(in_side ? p.complex_in() : p.complex_out()), rank(0) {
        const int step = in_side ? p.in_step() : p.out_step();
        for (int b = 0; b < p.batch_rank; ++b) add(p.batch[b].n, (in_side ? p.batch[b].is : p.batch[b].os) * step);
        for (int d = 0; d < p.rank; ++d) add(p.stored(d, is_complex), (in_side ? p.dims[d].is : p.dims[d].os) * step);
        if (rank == 0) add(1, 0);
    }

    void add(ptrdiff_t count, ptrdiff_t floats) {
        n[rank] = count;
        stride[rank++] = floats;
    }
};

// Calls row(offset, stride, count, compact) for each innermost row, in the order of compact storage.
template <class Float, class Row>
Float* for_each_row(const side& s, int level, ptrdiff_t offset, Float* compact, const Row& row) {
    if (level + 1 == s.rank) {
        row(offset, s.stride[level], s.n[level], compact);
        return compact + s.n[level] * (s.is_complex ? 2 : 1);
    }
    for (ptrdiff_t i = 0; i < s.n[level]; ++i)
        compact = for_each_row(s, level + 1, offset + i * s.stride[level], compact, row);
    return compact;
}

}  // namespace

void gather(const problem& p, const float* in, const float* imag, float* compact) {
    const side s(p, true);
    if (!s.is_complex) {
        for_each_row(s, 0, 0, compact, [in](ptrdiff_t at, ptrdiff_t stride, ptrdiff_t n, float* to) {
            for (ptrdiff_t i = 0; i < n; ++i) to[i] = in[at + i * stride];
        });
        return;
    }
    if (!imag) imag = in + 1;
    for_each_row(s, 0, 0, compact, [in, imag](ptrdiff_t at, ptrdiff_t stride, ptrdiff_t n, float* to) {
        for (ptrdiff_t i = 0; i < n; ++i) {
            to[2 * i] = in[at + i * stride];
            to[2 * i + 1] = imag[at + i * stride];
        }
    });
}

void scatter(const problem& p, const float* compact, float* out, float* imag) {
    const side s(p, false);
    if (!s.is_complex) {
        for_each_row(s, 0, 0, compact, [out](ptrdiff_t at, ptrdiff_t stride, ptrdiff_t n, const float* from) {
            for (ptrdiff_t i = 0; i < n; ++i) out[at + i * stride] = from[i];
        });
        return;
    }
    if (!imag) imag = out + 1;
    for_each_row(s, 0, 0, compact, [out, imag](ptrdiff_t at, ptrdiff_t stride, ptrdiff_t n, const float* from) {
        for (ptrdiff_t i = 0; i < n; ++i) {
            out[at + i * stride] = from[2 * i];
            imag[at + i * stride] = from[2 * i + 1];
        }
    });
}
