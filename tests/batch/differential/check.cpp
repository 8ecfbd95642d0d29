// SPDX-License-Identifier: Apache-2.0
#include "tests/batch/differential/check.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <sstream>
#include <thread>

#include "planner/plan_tree.h"
#include "tests/batch/differential/calls.h"
#include "tests/batch/differential/expected.h"
#include "tests/support/signals.h"

namespace {

// Bounds of one element's error, in units of 2^-24 sqrt(log2 points) times the rms of its transform. An element that
// comes from the wrong place is off by about 10^7 of them.
constexpr double allowed_error = 60;
constexpr float poison = -7.25e18f;  // would swamp every result that reads it

// One array of a problem, with or without guard zones around what the layout spans.
class test_array {
public:
    test_array(int64_t count, bool guarded, uint64_t seed)
        : front_(guarded ? 64 + int64_t(seed % 4) : 0), count_(count + 2 * front_), floats_(new float[count_]) {
        std::fill_n(floats_.get(), count_, poison);
    }
    float* at() { return floats_.get() + front_; }
    float& operator[](int64_t i) { return at()[i]; }
    void take_picture() { picture_.assign(floats_.get(), floats_.get() + count_); }
    // What stood there when the picture was taken.
    float before(int64_t i) const { return picture_[front_ + i]; }
    void address(int64_t i) {
        addressed_.resize(count_);
        addressed_[front_ + i] = true;
    }
    // The first float that no output addresses and that changed; -1 if none, else its place in the array.
    bool has_stray_write(int64_t* place) {
        addressed_.resize(count_);
        for (int64_t i = 0; i < count_; ++i)
            if (!addressed_[i] && std::memcmp(&floats_[i], &picture_[i], sizeof(float)) != 0) {
                *place = i - front_;
                return true;
            }
        return false;
    }

private:
    int64_t front_, count_;
    std::unique_ptr<float[]> floats_;
    std::vector<float> picture_;
    std::vector<bool> addressed_;
};

// One side of a problem: where each element stands, in one array of pairs or floats, or in two of floats.
struct side {
    const transform_problem& p;
    bool input;
    test_array* re = nullptr;
    test_array* im = nullptr;
    std::vector<int64_t> element_places = {};
    std::vector<int64_t> transform_places = {};

    bool is_complex() const { return input ? p.complex_in() : p.complex_out(); }
    int64_t floats_per_element() const { return is_complex() && !p.split ? 2 : 1; }
    int64_t stride(const fft_dim& d) const { return (input ? d.is : d.os) * floats_per_element(); }

    int64_t span() const {
        int64_t last = 0;
        for (size_t d = 0; d < p.dims.size(); ++d) last += (p.stored_length(d, input) - 1) * stride(p.dims[d]);
        for (const fft_dim& b : p.batch) last += (b.n - 1) * stride(b);
        return last + floats_per_element();
    }

    // Places of the real parts: of each element of one transform, in row-major order, and of each transform.
    void lay_out() {
        element_places = {0};
        for (size_t d = 0; d < p.dims.size(); ++d) extend(element_places, p.stored_length(d, input), stride(p.dims[d]));
        transform_places = {0};
        for (const fft_dim& b : p.batch) extend(transform_places, b.n, stride(b));
    }
    static void extend(std::vector<int64_t>& places, int64_t n, int64_t step) {
        std::vector<int64_t> longer;
        for (int64_t place : places)
            for (int64_t i = 0; i < n; ++i) longer.push_back(place + i * step);
        places = std::move(longer);
    }
    // Calls visit(index of the element, its place) for one transform of the batch.
    template <class Visit>
    void for_each(int64_t transform, Visit visit) const {
        const int64_t base = transform_places[transform];
        for (size_t e = 0; e < element_places.size(); ++e) visit(e, base + element_places[e]);
    }

    // Whether two elements share a float: results are then whatever was written last.
    bool overlaps() const {
        std::vector<int64_t> places;
        for (int64_t transform : transform_places)
            for (int64_t element : element_places)
                for (int64_t i = 0; i < floats_per_element(); ++i) places.push_back(transform + element + i);
        std::sort(places.begin(), places.end());
        return std::adjacent_find(places.begin(), places.end()) != places.end();
    }

    float& imaginary(int64_t at) const { return im ? (*im)[at] : (*re)[at + 1]; }
    void set(int64_t at, std::complex<double> z) const {
        (*re)[at] = static_cast<float>(z.real());
        if (is_complex()) imaginary(at) = static_cast<float>(z.imag());
    }
    std::complex<double> get(int64_t at) const { return {(*re)[at], is_complex() ? imaginary(at) : 0.0f}; }
    std::complex<double> before(int64_t at) const {
        if (!is_complex()) return re->before(at);
        return {re->before(at), im ? im->before(at) : re->before(at + 1)};
    }
    void address(int64_t at) const {
        re->address(at);
        if (is_complex()) im ? im->address(at) : re->address(at + 1);
    }
};

// The arrays of a problem and their two sides.
struct arrays {
    std::vector<std::unique_ptr<test_array>> owned;
    side in, out;

    explicit arrays(const transform_problem& p) : in{p, true}, out{p, false} {
        const bool split_in = p.split && p.complex_in(), split_out = p.split && p.complex_out();
        const int64_t span = p.in_place ? std::max(in.span(), out.span()) : 0;
        in.re = add(p, std::max(span, in.span()));
        if (split_in) in.im = add(p, std::max(span, in.span()));
        out.re = p.in_place ? in.re : add(p, out.span());
        if (split_out) out.im = p.in_place && split_in ? in.im : add(p, out.span());
        in.lay_out();
        out.lay_out();
    }
    test_array* add(const transform_problem& p, int64_t count) {
        owned.push_back(std::make_unique<test_array>(count, p.guarded, p.data_seed));
        return owned.back().get();
    }
    problem_arrays pointers() const {
        return {in.re->at(), in.im ? in.im->at() : nullptr, out.re->at(), out.im ? out.im->at() : nullptr};
    }
    void take_pictures() {
        for (auto& a : owned) a->take_picture();
    }
};

void fill_hermitian(const transform_problem& p, const side& in, int64_t transform, uniform_noise& noise) {
    values real(p.points());
    for (auto& x : real) x = noise();
    const values half = hermitian_half(p, real);
    in.for_each(transform, [&](size_t e, int64_t at) { in.set(at, half[e]); });
}

void fill(const transform_problem& p, const side& in) {
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

// One element's share of the allowed error of its transform.
double error_scale(const transform_problem& p, const values& expected) {
    double square = 0;
    for (const auto& z : expected) square += std::norm(z);
    const double rms = std::sqrt(square / static_cast<double>(expected.size()));
    return rms * error_unit(p.points());
}

void compare(const transform_problem& p, const arrays& a, check_result& result) {
    for (int64_t t = 0; t < p.transforms(); ++t) {
        values in;
        a.in.for_each(t, [&](size_t, int64_t at) { in.push_back(a.in.before(at)); });
        const values expected = p.dims.empty() ? in : expected_transform(p, in);
        const double scale = error_scale(p, expected);
        if (p.in_place) a.in.for_each(t, [&](size_t, int64_t at) { a.in.address(at); });
        a.out.for_each(t, [&](size_t e, int64_t at) {
            a.out.address(at);
            const std::complex<double> actual = a.out.get(at);
            const double error = std::abs(actual - expected[e]) / (scale > 0 ? scale : 1);
            result.worst_error = std::max(result.worst_error, error);
            if (error <= allowed_error || !result.failure.empty()) return;  // written so that a NaN fails
            std::ostringstream s;
            s << "transform " << t << " element " << e << " is " << actual << " in place of " << expected[e];
            result.failure = s.str();
        });
    }
    int64_t place;
    for (size_t i = 0; i < a.owned.size() && result.failure.empty(); ++i)
        if (a.owned[i]->has_stray_write(&place))
            result.failure = "float " + std::to_string(place) + " of array " + std::to_string(i) +
                             " was written and belongs to no element";
}

qsl_fftf_plan make_plan(const transform_problem& p, const problem_arrays& at) {
    qsl_fftf_plan_with_nthreads(p.nthreads);
    qsl_fftf_plan plan = plan_by_call(p, p.call, at);
    // These test the shape of what they are given; the 64-bit guru calls don't.
    const bool tests_shape = p.call == plan_call::guru || (p.call == plan_call::many && p.in_place);
    if (!plan && tests_shape) plan = plan_by_call(p, plan_call::guru64, at);
    qsl_fftf_plan_with_nthreads(1);
    return plan;
}

void execute(const transform_problem& p, qsl_fftf_plan plan, const problem_arrays& at) {
    auto run = [&] { p.new_arrays ? execute_on(p, plan, at) : qsl_fftf_execute(plan); };
    p.stranger ? std::thread(run).join() : run();
}

}  // namespace

bool elements_overlap(const transform_problem& p) {
    side in = {p, true}, out = {p, false};
    in.lay_out();
    out.lay_out();
    return in.overlaps() || out.overlaps();
}

check_result check_plan(const transform_problem& p, qsl_fftf_plan plan) {
    check_result result;
    result.tree = plan_tree_text(*plan);
    arrays used(p);
    fill(p, used.in);
    used.take_pictures();
    execute_on(p, plan, used.pointers());
    compare(p, used, result);
    return result;
}

check_result check_problem(const transform_problem& p) {
    check_result result;
    arrays planned(p);
    planned.take_pictures();
    qsl_fftf_plan plan = make_plan(p, planned.pointers());
    if (!plan) {
        result.refused = true;
        if (p.same_layout) result.failure = "no plan";
        return result;
    }
    result.tree = plan_tree_text(*plan);
    std::unique_ptr<arrays> fresh;
    if (p.new_arrays) fresh = std::make_unique<arrays>(p);
    arrays& used = p.new_arrays ? *fresh : planned;
    fill(p, used.in);
    used.take_pictures();
    execute(p, plan, used.pointers());
    qsl_fftf_destroy_plan(plan);
    if (p.nthreads > 1) qsl_fftf_cleanup_threads();  // idle workers spin
    compare(p, used, result);
    int64_t place;
    if (p.new_arrays && !p.measured && planned.owned[0]->has_stray_write(&place))
        result.failure = "planned array written";
    return result;
}
