// SPDX-License-Identifier: Apache-2.0
// In place, the indices (dimensions and batches) fall into two groups. Those with the same step in bytes on both sides
// span a lattice of points that input and output share. The others, with the bytes of one element, span the block that
// hangs on each point. Items can't meet when the blocks can't: when the steps of the lattice, sorted, nest around it.
#include "record/in_place.h"

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
    extent whole_in;  // with the lattice, of which a half of Hermitian data has fewer points
    extent whole_out;
    bool elementwise;  // every index takes the same step on both sides
    lattice_index lattice[2 * max_rank];
    int lattice_rank;

    void add(int64_t n_in, int64_t n_out, const fft_dim& d) {
        const int64_t n = std::max(n_in, n_out), step_in = d.is * in_bytes, step_out = d.os * out_bytes;
        if (n <= 1) return;
        whole_in.widen(n_in, step_in);
        whole_out.widen(n_out, step_out);
        if (step_in == step_out) {
            const int64_t step = step_in < 0 ? -step_in : step_in;
            lattice[lattice_rank++] = {step, (n - 1) * step};
        } else {
            in.widen(n_in, step_in);
            out.widen(n_out, step_out);
            elementwise = false;
        }
    }

    bool all_batches_are_lattice(const fft_plan& p) const {
        for (int b = 0; b < p.howmany_rank; ++b)
            if (p.howmany[b].n > 1 && p.howmany[b].is * in_bytes != p.howmany[b].os * out_bytes) return false;
        return true;
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

footprint footprint_of_item(const fft_plan& p) {
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(p.kind, &in_bytes, &out_bytes);
    const bool half_in = in_bytes > out_bytes, half_out = in_bytes < out_bytes;
    if (p.split == split_arrays) in_bytes = out_bytes = sizeof(float);
    footprint f = {};
    f.in_bytes = f.in.high = f.whole_in.high = static_cast<int64_t>(in_bytes);
    f.out_bytes = f.out.high = f.whole_out.high = static_cast<int64_t>(out_bytes);
    f.elementwise = !half_in && !half_out;
    for (int d = 0; d < p.rank; ++d) {
        const int64_t n = p.dims[d].n, half = d == p.rank - 1 ? n / 2 + 1 : n;  // of Hermitian data the half is stored
        f.add(half_in ? half : n, half_out ? half : n, p.dims[d]);
    }
    return f;
}

footprint footprint_of(const fft_plan& p) {
    footprint f = footprint_of_item(p);
    for (int b = 0; b < p.howmany_rank; ++b) f.add(p.howmany[b].n, p.howmany[b].n, p.howmany[b]);
    return f;
}

// Two inputs and two outputs at most; the subplan of a split loop shows its real parts alone, by out_imag equal to out.
struct split_sides {
    int64_t in[2];
    int64_t out[2];
    int in_count;
    int out_count;

    explicit split_sides(const fft_plan& p)
        : in{address(p.in), address(p.in_imag)}, out{address(p.out), address(p.out_imag)} {
        const bool whole = p.out_imag != p.out;
        in_count = whole && p.in_imag && p.kind != kind_r2c ? 2 : 1;
        out_count = whole && p.out_imag && p.kind != kind_c2r ? 2 : 1;
    }
    static int64_t address(const float* array) { return static_cast<int64_t>(reinterpret_cast<uintptr_t>(array)); }
    bool same_arrays() const {
        if (in_count != out_count) return false;
        if (in_count == 1) return in[0] == out[0];
        return (in[0] == out[0] && in[1] == out[1]) || (in[0] == out[1] && in[1] == out[0]);
    }
};

// Split arrays meet by address: any input may reach into any output. Arrays that meet widen the block by their offset.
bool split_may_run_in_pieces(const fft_plan& p) {
    const split_sides sides(p);
    footprint f = footprint_of(p);
    if (f.elementwise && sides.same_arrays()) return true;
    const extent in = f.in, out = f.out;
    bool meet = false;
    for (int i = 0; i < sides.in_count; ++i)
        for (int o = 0; o < sides.out_count; ++o) {
            const int64_t in_at = sides.in[i] - sides.in[0], out_at = sides.out[o] - sides.in[0];
            if (in_at + f.whole_in.low >= out_at + f.whole_out.high ||
                out_at + f.whole_out.low >= in_at + f.whole_in.high)
                continue;
            meet = true;
            f.in = {std::min(f.in.low, in_at + in.low), std::max(f.in.high, in_at + in.high)};
            f.out = {std::min(f.out.low, out_at + out.low), std::max(f.out.high, out_at + out.high)};
        }
    return !meet || (f.all_batches_are_lattice(p) && f.nests());
}

bool is_one_item(const fft_plan& p) {
    return std::all_of(p.howmany, p.howmany + p.howmany_rank, [](const fft_dim& d) { return d.n <= 1; });
}

}  // namespace

bool may_run_in_pieces(const fft_plan& p) {
    // Only the outermost loop over split arrays sees them all, and so it answers for the loops inside.
    if (p.split == split_arrays) return is_one_item(p) || split_may_run_in_pieces(p);
    if (p.howmany_rank < 1 || p.howmany[0].n <= 1) return true;
    if (p.in != p.out) return true;
    footprint f = footprint_of(p);
    if (p.howmany[0].is * f.in_bytes != p.howmany[0].os * f.out_bytes) return false;  // items drift into each other
    return f.elementwise || f.nests();
}

bool may_run_ascending(const fft_plan& p, const ascending_run& run) {
    const fft_dim items = p.howmany[0];
    if (p.split == split_arrays || p.howmany_rank != 1 || items.is <= 0 || items.os <= 0) return false;
    const footprint one = footprint_of_item(p);
    const int64_t in_step = items.is * one.in_bytes, out_step = items.os * one.out_bytes;
    // Both sides are linear in the item, so that the first and the last one tell.
    const auto output_ends_before_input = [&](int64_t written, int64_t unread) {
        return written * out_step + one.whole_out.high <= unread * in_step + one.whole_in.low;
    };
    const int64_t rest = items.n % run.group;
    const int64_t first = std::min(items.n < run.group ? 1 : run.group, items.n) - 1;
    const int64_t last = items.n - (rest || items.n == 0 ? 1 : run.group) - 1;
    const bool ascends =
        last < first || (output_ends_before_input(first, first + 1) && output_ends_before_input(last, last + 1));
    const bool off_itself = run.reads_first || items.n < 2 ||
                            (output_ends_before_input(1, 1) && output_ends_before_input(items.n - 1, items.n - 1));
    return ascends && off_itself;
}
