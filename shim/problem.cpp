// SPDX-License-Identifier: Apache-2.0
#include "shim/problem.h"

namespace {

bool is_half_complex_pair(const problem& p) { return p.kind == kind_r2c || p.kind == kind_c2r; }

// One point is what it was, times 1. (The other kinds multiply by 2 or its root.)
bool is_identity_of_one_point(uint32_t r2r_kind) {
    return r2r_kind == r2r_r2hc || r2r_kind == r2r_hc2r || r2r_kind == r2r_dht || r2r_kind == r2r_redft01 ||
           r2r_kind == r2r_rodft01;
}

bool does_something(const problem& p, const dimension& d, bool is_last) {
    if (d.n > 1) return true;
    if (p.kind == kind_r2r) return !is_identity_of_one_point(d.r2r_kind);
    return is_half_complex_pair(p) && is_last;
}

bool add(dimension* list, int& count, const dimension& d) {
    if (count == most_dims) return false;
    list[count++] = d;
    return true;
}

// Real and imaginary part next to each other, every other stride even.
bool strides_are_even(const problem& p, ptrdiff_t dimension::* stride) {
    for (int d = 0; d < p.rank; ++d)
        if (p.dims[d].*stride % 2 != 0) return false;
    for (int b = 0; b < p.batch_rank; ++b)
        if (p.batch[b].*stride % 2 != 0) return false;
    return true;
}

void halve(problem& p, ptrdiff_t dimension::* stride) {
    for (int d = 0; d < p.rank; ++d) p.dims[d].*stride /= 2;
    for (int b = 0; b < p.batch_rank; ++b) p.batch[b].*stride /= 2;
}

// -1, 0 or 1: the imaginary part stands one float before the real part, elsewhere, or one behind it.
int neighbours(const float* re, const float* im) {
    if (!re || !im) return 0;
    return im == re + 1 ? 1 : re == im + 1 ? -1 : 0;
}

// Interleaved data passed as two arrays is an interleaved problem. With the imaginary part first on both sides the
// parts are exchanged, which makes the transform a backward one.
void join_split_arrays(problem& p) {
    const int in = p.complex_in() ? neighbours(p.in, p.in_imag) : 1;
    const int out = p.complex_out() ? neighbours(p.out, p.out_imag) : 1;
    const bool exchanged = p.kind == kind_c2c && in == -1 && out == -1;
    if (!exchanged && (in != 1 || out != 1)) return;
    if (p.complex_in() && !strides_are_even(p, &dimension::is)) return;
    if (p.complex_out() && !strides_are_even(p, &dimension::os)) return;
    if (p.complex_in()) halve(p, &dimension::is);
    if (p.complex_out()) halve(p, &dimension::os);
    p.split = false;
    p.joined_in = p.complex_in();
    p.joined_out = p.complex_out();
    p.imag_first = p.backward = exchanged;
    if (exchanged) {
        p.in = p.in_imag;
        p.out = p.out_imag;
    }
    p.in_imag = p.out_imag = nullptr;
}

// The order of a batch doesn't matter: it can run from its other end.
void flip_negative_batches(problem& p) {
    for (int b = 0; b < p.batch_rank; ++b) {
        dimension& d = p.batch[b];
        if (d.is >= 0 || d.os >= 0) continue;
        p.in_offset += (d.n - 1) * d.is * p.in_step();
        p.out_offset += (d.n - 1) * d.os * p.out_step();
        d.is = -d.is;
        d.os = -d.os;
    }
}

// Largest strides first, so that the last batch dimension is the one to run through in vectors.
void sort_batches(problem& p) {
    for (int i = 1; i < p.batch_rank; ++i) {
        const dimension d = p.batch[i];
        int k = i;
        for (; k > 0 && p.batch[k - 1].is + p.batch[k - 1].os < d.is + d.os; --k) p.batch[k] = p.batch[k - 1];
        p.batch[k] = d;
    }
}

// Two batch dimensions that step through one longer one. True when a pair was found.
bool merge_one_pair(problem& p) {
    for (int outer = 0; outer < p.batch_rank; ++outer)
        for (int inner = 0; inner < p.batch_rank; ++inner) {
            const dimension o = p.batch[outer], i = p.batch[inner];
            if (outer == inner || o.is != i.n * i.is || o.os != i.n * i.os) continue;
            p.batch[inner].n *= o.n;
            for (int b = outer; b + 1 < p.batch_rank; ++b) p.batch[b] = p.batch[b + 1];
            --p.batch_rank;
            return true;
        }
    return false;
}

}  // namespace

bool add_dim(problem& p, const dimension& d, bool is_last) {
    if (d.n < 1) return false;
    if (p.kind == kind_r2r && (d.r2r_kind > r2r_rodft11 || (d.r2r_kind == r2r_redft00 && d.n < 2))) return false;
    if (!does_something(p, d, is_last)) return true;
    // The strides of one element mean nothing.
    return add(p.dims, p.rank, d.n == 1 ? dimension{1, 1, 1, d.r2r_kind} : d);
}

bool add_batch(problem& p, const dimension& d) {
    if (d.n < 0) return false;
    if (d.n == 0) p.empty = true;
    return d.n <= 1 || add(p.batch, p.batch_rank, d);
}

void normalise(problem& p) {
    // A point of no dimension is a real number that becomes a complex one, or the other way round.
    if (p.rank == 0 && is_half_complex_pair(p)) p.dims[p.rank++] = {1, 1, 1, 0};
    if (p.split) join_split_arrays(p);
    flip_negative_batches(p);
    sort_batches(p);
    while (merge_one_pair(p)) {
    }
}
