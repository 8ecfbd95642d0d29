// SPDX-License-Identifier: Apache-2.0
// qfftf for C++20: plans as move-only values, std::complex and std::span, exceptions that say why there is no plan.
//
//     std::vector<std::complex<float>> x(1024), y(1024);
//     auto plan = qfftf::plan_c2c({1024}, std::span(x), std::span(y), qfftf::forward);
//     plan();
//
// A plan looks at the lengths of its arrays: spans that are too short throw, so that no transform runs past their ends.
// Everything else (layout, normalisation, threads) is as qfftf.h tells.
#ifndef QFFTF_HPP
#define QFFTF_HPP

#if __cplusplus < 202002L
#error "qfftf.hpp needs C++20 (-std=c++20); older C++ programs include qfftf.h"
#else

#include <qfftf.h>

#include <complex>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <memory>
#include <mutex>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace qfftf {

using complex = std::complex<float>;

enum direction : int { forward = QSL_FFTF_FORWARD, backward = QSL_FFTF_BACKWARD };
enum planning : unsigned { rules = QSL_FFTF_RULES, measured = QSL_FFTF_MEASURED };
enum class r2r : qsl_fftf_r2r_kind {
    r2hc = QSL_FFTF_R2HC,
    hc2r = QSL_FFTF_HC2R,
    dht = QSL_FFTF_DHT,
    redft00 = QSL_FFTF_REDFT00,
    redft01 = QSL_FFTF_REDFT01,
    redft10 = QSL_FFTF_REDFT10,
    redft11 = QSL_FFTF_REDFT11,
    rodft00 = QSL_FFTF_RODFT00,
    rodft01 = QSL_FFTF_RODFT01,
    rodft10 = QSL_FFTF_RODFT10,
    rodft11 = QSL_FFTF_RODFT11,
};

// No plan: what() tells the demand that the arguments fail.
class refused : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

// Sizes of the transform, slowest first, for a real transform those of its real side.
class sizes {
public:
    sizes(std::initializer_list<int> n) : n_(n) {}
    sizes(std::vector<int> n) : n_(std::move(n)) {}
    const std::vector<int>& values() const { return n_; }

private:
    std::vector<int> n_;
};

// How the transforms of a batch lie in the arrays of one side; the distance counts only with more than one.
struct layout {
    int stride = 1;
    int distance = 0;             // 0: one transform, or the array that holds it, directly behind the other
    std::vector<int> embed = {};  // sizes of the array that holds each transform; empty: those of the transform
};

struct batch {
    int count = 1;
    layout in = {}, out = {};
};

namespace detail {

inline void demand(bool holds, const char* what) {
    if (!holds) throw refused(std::string("qfftf demands: ") + what);
}

template <class Element>
constexpr bool is_complex = std::is_same_v<Element, complex>;

// Sums and products of numbers from 0 up, as large as they get but not larger than the largest.
inline std::int64_t times(std::int64_t a, std::int64_t b) {
    return b != 0 && a > std::numeric_limits<std::int64_t>::max() / b ? std::numeric_limits<std::int64_t>::max()
                                                                      : a * b;
}
inline std::int64_t plus(std::int64_t a, std::int64_t b) {
    return a > std::numeric_limits<std::int64_t>::max() - b ? std::numeric_limits<std::int64_t>::max() : a + b;
}

// One side of a problem: its logical sizes, its row lengths in memory, and from these the length of its array.
struct side {
    int stride = 1, distance = 0;
    std::vector<std::int64_t> n, rows;

    std::int64_t transform_span() const {
        std::int64_t last = 0, step = stride;
        for (std::size_t k = n.size(); k-- > 0;) {
            last = plus(last, times(n[k] - 1, step));
            step = times(step, rows[k]);
        }
        return plus(last, 1);
    }
    std::int64_t span(int count) const { return plus(transform_span(), times(distance, count - 1)); }
};

template <class Element, class Other>
side make_side(const std::vector<int>& n, const layout& l, int count, bool in_place) {
    const bool half = is_complex<Element> && !is_complex<Other>;
    const bool padded = in_place && !is_complex<Element> && is_complex<Other>;
    side s{l.stride, l.distance, {n.begin(), n.end()}, {}};
    if (half) s.n.back() = n.back() / 2 + 1;
    s.rows = s.n;
    if (padded) s.rows.back() = 2 * (std::int64_t{n.back()} / 2 + 1);
    if (!l.embed.empty()) s.rows.assign(l.embed.begin(), l.embed.end());
    if (s.distance == 0 && count > 1) {
        demand(s.rows[0] >= s.n[0], "the first size of an embedding holds the transform's, or a distance is given");
        std::int64_t whole = l.stride;
        for (const std::int64_t row : s.rows) whole = times(whole, row);
        demand(whole <= std::numeric_limits<int>::max(), "the distance between the transforms of a batch fits an int");
        s.distance = static_cast<int>(whole);
    }
    return s;
}

inline void check(const std::vector<int>& n, const batch& b) {
    demand(!n.empty() && n.size() <= 4, "there are 1 to 4 sizes");
    for (int size : n) demand(size >= 1, "every size is at least 1");
    demand(b.count >= 1, "a batch has at least one transform");
    for (const layout* l : {&b.in, &b.out}) {
        demand(l->stride >= 1, "strides are at least 1");
        demand(l->distance >= 0, "distances aren't negative");
        demand(l->embed.empty() || l->embed.size() == n.size(), "an embedding has as many sizes as the transform");
    }
}

struct destroy {
    void operator()(qsl_fftf_plan plan) const { qsl_fftf_destroy_plan(plan); }
};

inline qsl_fftf_complex* c(complex* x) { return reinterpret_cast<qsl_fftf_complex*>(x); }
inline float* c(float* x) { return x; }

}  // namespace detail

// A plan from elements of one type to elements of another. Move-only; owns what the library made.
template <class In, class Out>
class plan {
public:
    // Runs on the arrays that the plan was made with.
    void operator()() const { run(in_, out_); }

    // Runs on other arrays of the planned layout, in place or apart as planned.
    void operator()(std::span<const In> in, std::span<Out> out) const {
        check_lengths(in.size(), out.size());
        detail::demand(are_one(in, out) == in_place_, "arrays are in place, or apart, as planned");
        run(writable(in), out.data());
    }

    // Elements that the arrays have at least.
    std::size_t input_length() const { return input_length_; }
    std::size_t output_length() const { return output_length_; }
    qsl_fftf_plan handle() const { return handle_.get(); }

    // For the functions below: `make` is called with the checked problem and returns the library's handle. Measuring
    // runs transforms on the arrays; apart from the output it is given an input of its own.
    template <class Make>
    plan(const std::vector<int>& n, std::span<const In> in, std::span<Out> out, const batch& b, planning flags,
         Make make)
        : in_place_(are_one(in, out)), in_(writable(in)), out_(out.data()) {
        detail::check(n, b);
        const auto from = detail::make_side<In, Out>(n, b.in, b.count, in_place_);
        const auto to = detail::make_side<Out, In>(n, b.out, b.count, in_place_);
        input_length_ = static_cast<std::size_t>(from.span(b.count));
        output_length_ = static_cast<std::size_t>(to.span(b.count));
        check_lengths(in.size(), out.size());
        const int *in_embed = b.in.embed.empty() ? nullptr : b.in.embed.data(),
                  *out_embed = b.out.embed.empty() ? nullptr : b.out.embed.data();
        std::vector<In> measured_input(flags == measured && !in_place_ ? input_length_ : 0);
        In* input = measured_input.empty() ? in_ : measured_input.data();
        handle_.reset(make(static_cast<int>(n.size()), n.data(), b.count, detail::c(input), in_embed, from.stride,
                           from.distance, detail::c(out_), out_embed, to.stride, to.distance));
        detail::demand(handle_ != nullptr, "this layout can't be transformed, or memory is short");
    }

private:
    static bool are_one(std::span<const In> in, std::span<Out> out) {
        return static_cast<const void*>(in.data()) == static_cast<const void*>(out.data());
    }
    // The library keeps the input of a transform out of place; in place the output is the same array, and not const.
    static In* writable(std::span<const In> in) { return const_cast<In*>(in.data()); }

    void run(In* in, Out* out) const {
        if constexpr (detail::is_complex<In> && detail::is_complex<Out>)
            qsl_fftf_execute_dft(handle_.get(), detail::c(in), detail::c(out));
        else if constexpr (detail::is_complex<Out>)
            qsl_fftf_execute_dft_r2c(handle_.get(), in, detail::c(out));
        else if constexpr (detail::is_complex<In>)
            qsl_fftf_execute_dft_c2r(handle_.get(), detail::c(in), out);
        else
            qsl_fftf_execute_r2r(handle_.get(), in, out);
    }

    void check_lengths(std::size_t in, std::size_t out) const {
        detail::demand(in >= input_length_, "the input array holds the problem");
        detail::demand(out >= output_length_, "the output array holds the problem");
    }

    std::unique_ptr<fft_plan, detail::destroy> handle_;
    std::size_t input_length_ = 0, output_length_ = 0;
    bool in_place_;
    In* in_;
    Out* out_;
};

using c2c_plan = plan<complex, complex>;
using r2c_plan = plan<float, complex>;
using c2r_plan = plan<complex, float>;
using r2r_plan = plan<float, float>;

// Complex transforms; pass the same array twice for a transform in place. Any other transform keeps its input, which
// may be const; measuring overwrites the output alone.
inline c2c_plan plan_c2c(const sizes& n, std::span<const complex> in, std::span<complex> out, direction sign,
                         const batch& b = {}, planning flags = rules) {
    return {n.values(), in, out, b, flags, [&](auto... a) { return qsl_fftf_plan_many_dft(a..., sign, flags); }};
}

// Real to complex, forward.
inline r2c_plan plan_r2c(const sizes& n, std::span<const float> in, std::span<complex> out, const batch& b = {},
                         planning flags = rules) {
    return {n.values(), in, out, b, flags, [&](auto... a) { return qsl_fftf_plan_many_dft_r2c(a..., flags); }};
}

// Complex to real, backward.
inline c2r_plan plan_c2r(const sizes& n, std::span<const complex> in, std::span<float> out, const batch& b = {},
                         planning flags = rules) {
    return {n.values(), in, out, b, flags, [&](auto... a) { return qsl_fftf_plan_many_dft_c2r(a..., flags); }};
}

// Real to real, one kind for each size.
inline r2r_plan plan_r2r(const sizes& n, std::span<const float> in, std::span<float> out, const std::vector<r2r>& kinds,
                         const batch& b = {}, planning flags = rules) {
    detail::demand(kinds.size() == n.values().size(), "there are as many kinds as sizes");
    const auto* k = reinterpret_cast<const qsl_fftf_r2r_kind*>(kinds.data());
    return {n.values(), in, out, b, flags, [&](auto... a) { return qsl_fftf_plan_many_r2r(a..., k, flags); }};
}

// The arrays of a real transform in place: one storage, seen as floats and as complex numbers.
inline std::span<float> as_floats(std::span<complex> array) {
    return {reinterpret_cast<float*>(array.data()), 2 * array.size()};
}

// A plan for every thread that asks, each made by its thread. Threads may share one plan; with plans of their own none
// of their executions allocates.
template <class Plan>
class per_thread {
public:
    explicit per_thread(std::function<Plan()> make) : make_(std::move(make)) {}

    Plan& get() {
        const std::thread::id self = std::this_thread::get_id();
        {
            const std::scoped_lock hold(lock_);
            if (const auto found = plans_.find(self); found != plans_.end()) return found->second;
        }
        Plan made = make_();
        const std::scoped_lock hold(lock_);
        return plans_.emplace(self, std::move(made)).first->second;
    }

private:
    std::function<Plan()> make_;
    std::mutex lock_;
    std::unordered_map<std::thread::id, Plan> plans_;  // references to its plans stay valid
};

// A time limit for measured planning in seconds; 0 means none.
inline void set_time_limit(double seconds) { qsl_fftf_set_timelimit(seconds); }

// The threads of all plans made from now on.
inline void set_threads(int n) { qsl_fftf_plan_with_nthreads(n); }

}  // namespace qfftf

#endif  // C++20
#endif  // QFFTF_HPP
