// SPDX-License-Identifier: Apache-2.0
#include "tests/batch/differential/arrays.h"

#include <algorithm>
#include <cstring>

#include "tests/batch/differential/expected.h"
#include "tests/support/signals.h"

namespace {

constexpr float poisonous = -7.25e18f;

void extend(std::vector<int64_t>& places, int64_t n, int64_t step) {
    std::vector<int64_t> longer;
    for (int64_t place : places)
        for (int64_t i = 0; i < n; ++i) longer.push_back(place + i * step);
    places = std::move(longer);
}

void fill_hermitian(const transform_problem& p, const side& in, int64_t transform, uniform_noise& noise) {
    values real(p.points());
    for (auto& x : real) x = noise();
    const values half = hermitian_half(p, real);
    in.for_each(transform, [&](size_t e, int64_t at) { in.set(at, half[e]); });
}

void fill_with_noise(const transform_problem& p, const side& in) {
    uniform_noise noise(p.data_seed);
    for (int64_t t = 0; t < p.transforms(); ++t) {
        if (p.kind == kind_c2r) {
            fill_hermitian(p, in, t, noise);
            continue;
        }
        in.for_each(t, [&](size_t, int64_t at) {
            const double re = noise();
            in.set(at, {re, noise()});
        });
    }
}

}  // namespace

test_array::test_array(int64_t count, bool guarded, uint64_t seed)
    : front_(guarded ? 64 + int64_t(seed % 4) : 0),
      count_(count + 2 * front_),
      floats_(new float[count_]),
      addressed_(count_) {
    poison();
}

void test_array::poison() { std::fill_n(floats_.get(), count_, poisonous); }

bool test_array::changed(int64_t i) const { return std::memcmp(&floats_[i], &picture_[i], sizeof(float)) != 0; }

bool test_array::is_as_before() const {
    return std::memcmp(floats_.get(), picture_.data(), static_cast<size_t>(count_) * sizeof(float)) == 0;
}

bool test_array::has_stray_write(int64_t* place) const {
    for (int64_t i = 0; i < count_; ++i)
        if (!addressed_[i] && changed(i)) {
            *place = i - front_;
            return true;
        }
    return false;
}

int64_t side::span() const {
    int64_t last = 0;
    for (size_t d = 0; d < p.dims.size(); ++d) last += (p.stored_length(d, input) - 1) * stride(p.dims[d]);
    for (const fft_dim& b : p.batch) last += (b.n - 1) * stride(b);
    return last + floats_per_element();
}

void side::lay_out() {
    element_places = {0};
    for (size_t d = 0; d < p.dims.size(); ++d) extend(element_places, p.stored_length(d, input), stride(p.dims[d]));
    transform_places = {0};
    for (const fft_dim& b : p.batch) extend(transform_places, b.n, stride(b));
}

bool side::overlaps() const {
    std::vector<int64_t> places;
    for (int64_t transform : transform_places)
        for (int64_t element : element_places)
            for (int64_t i = 0; i < floats_per_element(); ++i) places.push_back(transform + element + i);
    std::sort(places.begin(), places.end());
    return std::adjacent_find(places.begin(), places.end()) != places.end();
}

void side::set(int64_t at, std::complex<double> z) const {
    (*re)[at] = static_cast<float>(z.real());
    if (is_complex()) imaginary(at) = static_cast<float>(z.imag());
}

std::complex<double> side::before(int64_t at) const {
    if (!is_complex()) return re->before(at);
    return {re->before(at), im ? im->before(at) : re->before(at + 1)};
}

void side::address_all() const {
    for (size_t t = 0; t < transform_places.size(); ++t)
        for_each(static_cast<int64_t>(t), [&](size_t, int64_t at) {
            re->address(at);
            if (is_complex()) im ? im->address(at) : re->address(at + 1);
        });
}

arrays::arrays(const transform_problem& p) : in{p, true}, out{p, false} {
    const bool split_in = p.split && p.complex_in(), split_out = p.split && p.complex_out();
    const int64_t span = p.in_place ? std::max(in.span(), out.span()) : 0;
    in.re = add(p, std::max(span, in.span()));
    if (split_in) in.im = add(p, std::max(span, in.span()));
    out.re = p.in_place ? in.re : add(p, out.span());
    if (split_out) out.im = p.in_place && split_in ? in.im : add(p, out.span());
    in.lay_out();
    out.lay_out();
    out.address_all();
    if (p.in_place) in.address_all();
    take_pictures();
}

test_array* arrays::add(const transform_problem& p, int64_t count) {
    owned.push_back(std::make_unique<test_array>(count, p.guarded, p.data_seed));
    return owned.back().get();
}

problem_arrays arrays::pointers() const {
    return {in.re->at(), in.im ? in.im->at() : nullptr, out.re->at(), out.im ? out.im->at() : nullptr};
}

void arrays::take_pictures() {
    for (auto& a : owned) a->take_picture();
}

void arrays::fill() {
    for (auto& a : owned) a->poison();
    fill_with_noise(in.p, in);
    take_pictures();
}

bool arrays::are_as_before() const {
    return std::all_of(owned.begin(), owned.end(), [](const auto& a) { return a->is_as_before(); });
}

std::string arrays::stray_write() const {
    int64_t place;
    for (size_t i = 0; i < owned.size(); ++i)
        if (owned[i]->has_stray_write(&place))
            return "float " + std::to_string(place) + " of array " + std::to_string(i) +
                   " was written and belongs to no element";
    return {};
}
