// SPDX-License-Identifier: Apache-2.0
// In place, the indices (dimensions and batches) fall into two groups. Those with the same step in bytes on both sides
// span a lattice of points that input and output share. The others, with the bytes of one element, span the block that
// hangs on each point. Items can't meet when the blocks can't: when the steps of the lattice, sorted, nest around it.
#include "batch/in_place.h"

#include <algorithm>

namespace {

struct lattice_index {
    int64_t step;   // bytes
    int64_t reach;  // bytes from the first to the last point
};

// Bytes that the block takes on one side, relative to its lattice point.
struct extent {
    int64_t low;
    int64_t high;
    void widen(int64_t n, int64_t step) { (step < 0 ? low : high) += (n - 1) * step; }
};

struct footprint {
    int64_t in_bytes;
    int64_t out_bytes;
    extent in;
    extent out;
    bool elementwise;  // every index takes the same step on both sides
    lattice_index lattice[2 * max_rank];
    int lattice_rank;

    void add(int64_t n_in, int64_t n_out, const fft_dim& d) {
        const int64_t n = std::max(n_in, n_out), step_in = d.is * in_bytes, step_out = d.os * out_bytes;
        if (n <= 1) return;
        if (step_in == step_out) {
            const int64_t step = step_in < 0 ? -step_in : step_in;
            lattice[lattice_rank++] = {step, (n - 1) * step};
        } else {
            in.widen(n_in, step_in);
            out.widen(n_out, step_out);
            elementwise = false;
        }
    }

    bool nests() {
        std::sort(lattice, lattice + lattice_rank, [](const auto& a, const auto& b) { return a.step < b.step; });
        int64_t width = std::max(in.high, out.high) - std::min(in.low, out.low);
        for (int i = 0; i < lattice_rank; ++i) {
            if (width > lattice[i].step) return false;
            width += lattice[i].reach;
        }
        return true;
    }
};

footprint footprint_of(const fft_plan& p) {
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(p.kind, &in_bytes, &out_bytes);
    footprint f = {};
    f.in_bytes = f.in.high = static_cast<int64_t>(in_bytes);
    f.out_bytes = f.out.high = static_cast<int64_t>(out_bytes);
    f.elementwise = in_bytes == out_bytes;
    for (int d = 0; d < p.rank; ++d) {
        const int64_t n = p.dims[d].n, half = d == p.rank - 1 ? n / 2 + 1 : n;  // of Hermitian data the half is stored
        f.add(in_bytes > out_bytes ? half : n, in_bytes < out_bytes ? half : n, p.dims[d]);
    }
    for (int b = 0; b < p.howmany_rank; ++b) f.add(p.howmany[b].n, p.howmany[b].n, p.howmany[b]);
    return f;
}

}  // namespace

bool may_run_in_pieces(const fft_plan& p) {
    if (p.in != p.out || p.howmany_rank < 1 || p.howmany[0].n <= 1) return true;
    footprint f = footprint_of(p);
    if (p.howmany[0].is * f.in_bytes != p.howmany[0].os * f.out_bytes) return false;  // items drift into each other
    return f.elementwise || f.nests();
}
