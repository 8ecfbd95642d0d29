// SPDX-License-Identifier: Apache-2.0
#include "tests/shim/random_problem.h"

#include <algorithm>
#include <numeric>
#include <sstream>

namespace {

struct drawer {
    std::mt19937_64& random;
    random_problem p = {};

    ptrdiff_t between(ptrdiff_t low, ptrdiff_t high) {
        return low + static_cast<ptrdiff_t>(random() % static_cast<uint64_t>(high - low + 1));
    }
    bool one_in(int k) { return between(1, k) == 1; }

    ptrdiff_t length(ptrdiff_t budget) {
        if (one_in(8)) return 1;
        const ptrdiff_t high = one_in(3) ? budget : std::min<ptrdiff_t>(budget, 20);
        return between(1, std::max<ptrdiff_t>(high, 1));
    }

    void draw_sizes() {
        const bool many = p.call == plan_call::many;
        static constexpr int ranks[] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 4, 5, 6, 0};
        const int rank = ranks[between(0, std::size(ranks) - 1)];
        const int batch_rank = many ? 1 : static_cast<int>(one_in(6) ? between(4, 9) : between(0, 3));
        ptrdiff_t budget = one_in(10) ? 20000 : 1500;
        for (int d = 0; d < rank; ++d) {
            ptrdiff_t n = length(rank > 3 ? std::min<ptrdiff_t>(budget, 5) : budget);
            const auto kind = static_cast<fftwf_r2r_kind>(between(0, 10));
            if (p.kind == transform::r2r && kind == FFTW_REDFT00 && n < 2) n = 2;
            p.dims.push_back({n, 0, 0});
            p.kinds.push_back(kind);
            budget = std::max<ptrdiff_t>(budget / n, 1);
        }
        for (int b = 0; b < batch_rank; ++b) {
            const ptrdiff_t n = one_in(40)                    ? 0
                                : batch_rank > 3 && one_in(2) ? 1
                                                              : length(std::min<ptrdiff_t>(budget, 40));
            p.batch.push_back({n, 0, 0});
            budget = std::max<ptrdiff_t>(budget / std::max<ptrdiff_t>(n, 1), 1);
        }
    }

    // Row-major blocks for the many call: an array that the transforms are a part of, or interleaved transforms.
    void draw_many_side(bool in_side, bool is_complex, bool tight) {
        std::vector<int>& embed = in_side ? p.in_embed : p.out_embed;
        const ptrdiff_t howmany = p.batch[0].n;
        const bool interleaved = !tight && howmany > 1 && one_in(3);
        ptrdiff_t stride = tight ? 1 : interleaved ? howmany + between(0, 2) : between(1, 3);
        const ptrdiff_t first = stride;
        const bool embedded = !tight && !one_in(3);
        const bool padded = p.in_place && !is_complex && (p.kind == transform::r2c || p.kind == transform::c2r);
        if (embedded) embed.resize(p.dims.size());
        for (size_t d = p.dims.size(); d-- > 0;) {
            (in_side ? p.dims[d].is : p.dims[d].os) = stride;
            ptrdiff_t n = p.stored(d, is_complex);
            if (embedded) {
                // The slowest size isn't looked at.
                embed[d] = static_cast<int>(d == 0 && one_in(2) ? 1 : n + between(0, 2));
                n = d == 0 ? n : embed[d];
            } else if (padded && d + 1 == p.dims.size()) {
                n = 2 * (p.dims[d].n / 2 + 1);
            }
            stride *= n;
        }
        (in_side ? p.batch[0].is : p.batch[0].os) = interleaved                 ? 1
                                                    : howmany == 1 && one_in(2) ? 0
                                                                                : stride + first * between(0, 1);
    }

    // Any nesting of all dimensions with gaps; some run backwards.
    void draw_guru_side(bool in_side, bool is_complex, bool tight) {
        std::vector<std::pair<ptrdiff_t, ptrdiff_t*>> order;  // count and stride, fastest first
        const auto stride_of = [in_side](random_dim& d) { return in_side ? &d.is : &d.os; };
        for (size_t d = p.dims.size(); d-- > 0;) order.push_back({p.stored(d, is_complex), stride_of(p.dims[d])});
        for (size_t b = p.batch.size(); b-- > 0;) order.push_back({p.batch[b].n, stride_of(p.batch[b])});
        if (!tight && one_in(2)) std::shuffle(order.begin(), order.end(), random);
        ptrdiff_t stride = tight ? 1 : between(1, 2);
        for (auto& [n, place] : order) {
            const bool one = n <= 1;
            *place = one && one_in(2) ? between(-3, 3) : stride;
            stride *= std::max<ptrdiff_t>(n, 1);
            if (!tight && one_in(2)) stride += between(0, 3);
        }
    }

    // The other side has the same elements. Real rows in place are padded to the complex ones.
    void copy_in_side() {
        const bool halved = p.kind == transform::r2c || p.kind == transform::c2r;
        if (!halved || p.split()) {
            for (random_dim& d : p.dims) d.os = d.is;
            for (random_dim& b : p.batch) b.os = b.is;
            p.out_embed = p.in_embed;
            return;
        }
        const bool real_in = p.kind == transform::r2c;
        ptrdiff_t stride = 1;
        const auto set = [&](random_dim& d, ptrdiff_t n, bool last) {
            const ptrdiff_t real = last ? 1 : 2 * stride;
            d.is = real_in ? real : stride;
            d.os = real_in ? stride : real;
            stride *= std::max<ptrdiff_t>(n, 1);
        };
        for (size_t d = p.dims.size(); d-- > 0;) set(p.dims[d], p.stored(d, true), d + 1 == p.dims.size());
        for (size_t b = p.batch.size(); b-- > 0;) set(p.batch[b], p.batch[b].n, false);
    }

    void draw_layouts() {
        const bool tight = one_in(4);
        const auto side = [&](bool in_side, bool is_complex) {
            p.call == plan_call::many ? draw_many_side(in_side, is_complex, tight)
                                      : draw_guru_side(in_side, is_complex, tight);
        };
        side(true, p.complex_in());
        if (p.in_place && !one_in(4)) {
            if (p.call == plan_call::many) p.in_embed.clear(), draw_many_side(true, p.complex_in(), true);
            copy_in_side();
        } else {
            side(false, p.complex_out());
        }
        if (p.call == plan_call::many) return;
        for (random_dim& b : p.batch)
            if (one_in(8))
                b.is = -b.is, b.os = -b.os;
            else if (one_in(20))
                b.is = -b.is;
        if (p.dims.size() > 1) return;  // there the peer's planner recurses until the stack is full
        for (random_dim& d : p.dims)
            if (one_in(20)) d.is = -d.is, d.os = -d.os;
    }

    random_problem draw() {
        p.kind = static_cast<transform>(between(0, 3));
        p.call = static_cast<plan_call>(between(0, p.kind == transform::r2r ? 2 : 3));
        p.sign = one_in(2) ? FFTW_FORWARD : FFTW_BACKWARD;
        p.in_place = one_in(3);
        if (p.split() && p.kind != transform::c2c) p.in_place = false;
        p.new_arrays = one_in(3);
        draw_sizes();
        draw_layouts();
        if (p.split() && one_in(3)) {
            p.joined = true;
            for (std::vector<random_dim>* list : {&p.dims, &p.batch})
                for (random_dim& d : *list) {
                    if (p.complex_in()) d.is *= 2;
                    if (p.complex_out()) d.os *= 2;
                }
        }
        static constexpr unsigned more[] = {0, 0, FFTW_PRESERVE_INPUT, FFTW_DESTROY_INPUT, FFTW_UNALIGNED};
        p.flags = FFTW_ESTIMATE | more[between(0, std::size(more) - 1)];
        return p;
    }
};

}  // namespace

random_problem draw_problem(std::mt19937_64& random) { return drawer{random}.draw(); }

std::vector<ptrdiff_t> random_problem::places(bool in_side) const {
    const bool is_complex = in_side ? complex_in() : complex_out();
    const ptrdiff_t step = is_complex && !split() ? 2 : 1;
    std::vector<ptrdiff_t> all = {0};
    const auto extend = [&](ptrdiff_t n, ptrdiff_t stride) {
        std::vector<ptrdiff_t> longer;
        for (ptrdiff_t at : all)
            for (ptrdiff_t i = 0; i < n; ++i) longer.push_back(at + i * stride * step);
        all = std::move(longer);
    };
    for (const random_dim& b : batch) extend(b.n, in_side ? b.is : b.os);
    for (size_t d = 0; d < dims.size(); ++d) extend(stored(d, is_complex), in_side ? dims[d].is : dims[d].os);
    return all;
}

std::string random_problem::text() const {
    static constexpr const char* kind_names[] = {"c2c", "r2c", "c2r", "r2r"};
    static constexpr const char* call_names[] = {"many", "guru", "guru64", "split"};
    std::ostringstream t;
    t << call_names[int(call)] << ' ' << kind_names[int(kind)] << " sign " << sign << (in_place ? " in place" : "")
      << (joined ? " joined" : "") << (new_arrays ? " new arrays" : "") << " flags " << flags;
    for (size_t d = 0; d < dims.size(); ++d) {
        t << "  " << dims[d].n << ':' << dims[d].is << ':' << dims[d].os;
        if (kind == transform::r2r) t << ":kind " << kinds[d];
    }
    t << "  *";
    for (const random_dim& b : batch) t << ' ' << b.n << ':' << b.is << ':' << b.os;
    for (int e : in_embed) t << " inembed " << e;
    for (int e : out_embed) t << " onembed " << e;
    return t.str();
}
