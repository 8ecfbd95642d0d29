// SPDX-License-Identifier: Apache-2.0
// Drawing problems at random.
#include "tests/batch/differential/problem.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array kernel_lengths = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                       16, 17, 18, 19, 20, 21, 23, 24, 29, 31, 32, 37, 64};
// Columns for which blocks are tuned, with a count that some tuned row takes.
constexpr std::array<std::pair<int, int>, 9> tuned_columns = {
    {{64, 256}, {128, 65 * 4}, {128, 128}, {128, 192}, {176, 96}, {216, 256}, {256, 256}, {1458, 8}, {1024, 128}}};

// Axes of a side from the outermost to the innermost: dimensions first, then batch dimensions behind them.
std::vector<size_t> row_major(size_t rank, size_t batch_rank) {
    std::vector<size_t> order;
    for (size_t b = 0; b < batch_rank; ++b) order.push_back(rank + b);
    for (size_t d = 0; d < rank; ++d) order.push_back(d);
    return order;
}

int64_t& stride_of(transform_problem& p, size_t axis, bool input) {
    fft_dim& d = axis < p.dims.size() ? p.dims[axis] : p.batch[axis - p.dims.size()];
    return input ? d.is : d.os;
}

}  // namespace

int64_t transform_problem::points() const {
    int64_t product = 1;
    for (const fft_dim& d : dims) product *= d.n;
    return product;
}

int64_t transform_problem::transforms() const {
    int64_t product = 1;
    for (const fft_dim& b : batch) product *= b.n;
    return product;
}

int64_t transform_problem::stored_length(size_t d, bool input) const {
    const bool half = d + 1 == dims.size() && kind == (input ? kind_c2r : kind_r2c);
    return half ? dims[d].n / 2 + 1 : dims[d].n;
}

int64_t problem_source::length(int64_t budget) {
    int64_t n;
    switch (between(0, 5)) {
        case 0:
            n = between(1, 3);
            break;
        case 1:
            n = between(2, 9);
            break;
        case 2:
        case 3:
            n = kernel_lengths[between(0, kernel_lengths.size() - 1)];
            break;
        case 4:
            n = between(10, 70);
            break;
        default:
            n = int64_t{1} << between(0, 11);
            break;
    }
    return std::clamp<int64_t>(n, 1, std::max<int64_t>(budget, 1));
}

void problem_source::draw_kind(transform_problem& p) {
    static constexpr uint32_t kinds[] = {kind_c2c, kind_c2c, kind_r2c, kind_c2r, kind_r2r};
    p.kind = kinds[between(0, r2r_kinds_.empty() ? 3 : 4)];
    p.sign = p.kind == kind_c2c ? (one_in(2) ? 1 : -1) : p.kind == kind_c2r ? 1 : p.kind == kind_r2c ? -1 : 0;
    p.split = p.kind != kind_r2r && one_in(6);
    if (p.split && p.kind == kind_c2c) p.sign = -1;  // the split call has no other
}

void problem_source::draw_sizes(transform_problem& p) {
    const bool may_move = p.kind == kind_r2r || (p.kind == kind_c2c && !p.split);
    const int64_t rank = one_in(2) ? 1 : between(may_move ? 0 : 1, 4);
    const int64_t batch_rank = one_in(2) ? 1 : between(rank == 0 ? 1 : 0, 3);
    int64_t budget = int64_t{1} << (one_in(200) ? 15 : one_in(20) ? 11 : between(2, 9));
    for (int64_t d = 0; d < rank; ++d) {
        p.dims.push_back({length(budget), 1, 1});
        budget /= p.dims.back().n;
    }
    for (int64_t b = 0; b < batch_rank; ++b) {
        p.batch.push_back({one_in(3) ? between(1, std::clamp<int64_t>(budget, 1, 9)) : length(budget), 1, 1});
        budget /= p.batch.back().n;
    }
    if (p.kind != kind_r2r) return;
    for (fft_dim& d : p.dims) {
        p.r2r_kinds.push_back(r2r_kinds_[between(0, r2r_kinds_.size() - 1)]);
        if (p.r2r_kinds.back() == r2r_redft00) d.n = std::max<int64_t>(d.n, 2);  // one point has no redft00
    }
}

// A matrix whose columns are transformed, by blocks for the tuned lengths.
void problem_source::draw_columns(transform_problem& p) {
    const auto [n, count] = one_in(24) ? tuned_columns[between(0, tuned_columns.size() - 1)]
                                       : std::pair<int, int>(between(2, 40), 4 * between(2, 5));
    const int64_t padding = one_in(2) ? 0 : between(1, 3), width = count + padding;
    p.kind = kind_c2c;
    p.sign = one_in(2) ? 1 : -1;
    p.split = false;
    p.dims = {{n, width, width}};
    p.batch = {{count, 1, 1}};
    p.in_place = one_in(2);
    if (!p.in_place && one_in(3)) {  // columns on one side only
        p.dims[0].os = 1;
        p.batch[0].os = n;
    }
    if (!p.in_place && one_in(3)) {
        std::swap(p.dims[0].is, p.dims[0].os);
        std::swap(p.batch[0].is, p.batch[0].os);
    }
}

void problem_source::draw_nested_side(transform_problem& p, bool input) {
    const size_t rank = p.dims.size(), batch_rank = p.batch.size();
    std::vector<size_t> order = row_major(rank, batch_rank);
    switch (between(0, 3)) {
        case 0:
            break;
        case 1:
            std::reverse(order.begin(), order.end());
            break;  // column-major
        case 2:
            std::rotate(order.begin(), order.begin() + batch_rank, order.end());
            break;  // interleaved
        default:
            std::shuffle(order.begin(), order.end(), random_);
            break;
    }
    const bool padded = one_in(3);
    int64_t span = one_in(4) ? between(2, 3) : 1;
    for (size_t i = order.size(); i-- > 0;) {
        const size_t axis = order[i];
        stride_of(p, axis, input) = span;
        span *= axis < rank ? p.stored_length(axis, input) : p.batch[axis - rank].n;
        if (padded) span += between(0, 4);
    }
}

void problem_source::draw_many_side(transform_problem& p, bool input) {
    const int rank = static_cast<int>(p.dims.size());
    const int count = p.batch.empty() ? 1 : static_cast<int>(p.batch[0].n);
    many_layout& many = input ? p.many_in : p.many_out;
    const bool interleaved = one_in(3), padded = one_in(3);
    many.stride = interleaved ? count : one_in(4) ? 2 : 1;
    int64_t span = many.stride;
    many.embed.assign(rank, 0);
    for (int d = rank - 1; d >= 0; --d) {
        (input ? p.dims[d].is : p.dims[d].os) = span;
        many.embed[d] = static_cast<int>(p.stored_length(d, input) + (padded && d > 0 ? between(0, 3) : 0));
        span *= many.embed[d];
    }
    many.distance = interleaved ? 1 : static_cast<int>(span + (padded ? between(0, 5) : 0));
    if (!p.batch.empty()) (input ? p.batch[0].is : p.batch[0].os) = many.distance;
}

namespace {

// Real rows padded to the floats of their Hermitian halves, so that both sides share their outer strides.
void pad_real_rows(transform_problem& p) {
    const bool real_input = p.kind == kind_r2c;
    const size_t last = p.dims.size() - 1;
    int64_t span = p.dims[last].n / 2 + 1;
    auto set = [&](fft_dim& d, int64_t complex_stride) {
        (real_input ? d.is : d.os) = 2 * complex_stride;
        (real_input ? d.os : d.is) = complex_stride;
    };
    p.dims[last].is = p.dims[last].os = 1;
    for (size_t d = last; d-- > 0;) {
        set(p.dims[d], span);
        span *= p.dims[d].n;
    }
    for (size_t b = p.batch.size(); b-- > 0;) {
        set(p.batch[b], span);
        span *= p.batch[b].n;
    }
}

void copy_side(transform_problem& p, bool from_input) {
    for (std::vector<fft_dim>* axes : {&p.dims, &p.batch})
        for (fft_dim& d : *axes) (from_input ? d.os : d.is) = from_input ? d.is : d.os;
}

}  // namespace

namespace {

// The arguments of a many call for padded rows.
void describe_padded_rows(transform_problem& p) {
    for (bool input : {true, false}) {
        many_layout& many = input ? p.many_in : p.many_out;
        const size_t last = p.dims.size() - 1;
        for (const fft_dim& d : p.dims) many.embed.push_back(static_cast<int>(d.n));
        const bool real_side = input == (p.kind == kind_r2c);
        many.embed[last] = static_cast<int>(p.dims[last].n / 2 + 1) * (real_side ? 2 : 1);
        if (!p.batch.empty()) many.distance = static_cast<int>(input ? p.batch[0].is : p.batch[0].os);
    }
}

}  // namespace

void problem_source::draw_in_place_many(transform_problem& p) {
    p.call = plan_call::many;
    if (p.kind == kind_c2c || p.kind == kind_r2r) {
        draw_many_side(p, true);
        copy_side(p, true);
        p.many_out = p.many_in;
    } else {
        pad_real_rows(p);
        describe_padded_rows(p);
    }
}

void problem_source::draw_in_place(transform_problem& p) {
    p.call = one_in(4) ? plan_call::guru : plan_call::guru64;
    const bool many_fits = !p.split && !p.dims.empty() && p.batch.size() <= 1;
    if (many_fits && one_in(3)) return draw_in_place_many(p);
    if (p.dims.empty() || one_in(5)) {
        draw_nested_side(p, true);
        draw_nested_side(p, false);
    } else if (p.kind == kind_c2c || p.kind == kind_r2r) {
        draw_nested_side(p, true);
        copy_side(p, true);
    } else if (p.split) {  // laid out for the longer side
        draw_nested_side(p, p.kind == kind_r2c);
        copy_side(p, p.kind == kind_r2c);
    } else {
        pad_real_rows(p);
    }
}

// Distances that are too short, as slips are: inputs that are read several times, outputs that lie on each other.
void problem_source::draw_overlap(transform_problem& p) {
    if (p.kind != kind_c2r && !p.batch.empty() && one_in(12)) {
        p.batch[0].is = between(1, p.batch[0].is);
        if (p.call == plan_call::many) p.many_in.distance = static_cast<int>(p.batch[0].is);
    }
    p.outputs_overlap = !p.batch.empty() && p.batch[0].n > 1 && one_in(24);
    if (!p.outputs_overlap) return;
    p.batch[0].os = one_in(2) ? 1 : between(1, p.batch[0].os);
    if (p.call == plan_call::many) p.many_out.distance = static_cast<int>(p.batch[0].os);
}

void problem_source::draw_conditions(transform_problem& p) {
    const int64_t elements = p.points() * p.transforms();
    p.measured = one_in(elements <= 512 ? 32 : elements <= 8192 ? 128 : 512);
    p.guarded = one_in(2);
    p.new_arrays = one_in(4);
    p.stranger = one_in(6);
    p.nthreads = one_in(6) ? static_cast<int>(between(2, 5)) : 1;
    p.data_seed = random_();
}

transform_problem problem_source::draw() {
    transform_problem p;
    if (one_in(8)) {
        draw_columns(p);
        draw_conditions(p);
        return p;
    }
    draw_kind(p);
    draw_sizes(p);
    p.in_place = one_in(3);
    const bool many_fits = !p.split && !p.dims.empty() && p.batch.size() <= 1;
    if (p.in_place) {
        draw_in_place(p);
    } else if (many_fits && one_in(2)) {
        p.call = plan_call::many;
        draw_many_side(p, true);
        draw_many_side(p, false);
    } else {
        p.call = one_in(4) ? plan_call::guru : plan_call::guru64;
        draw_nested_side(p, true);
        draw_nested_side(p, false);
    }
    if (!p.in_place) draw_overlap(p);
    draw_conditions(p);
    return p;
}
