// SPDX-License-Identifier: Apache-2.0
// A backend of heFFTe 2.4 (distributed FFTs over MPI) that transforms by qfftf. C++11, header only:
//
//     #include <heffte_backend_qfftf.h>                                   // includes heffte.h; link Heffte and qfftf
//     heffte::fft3d<heffte::backend::qfftf> fft(inbox, outbox, MPI_COMM_WORLD);
//
// Tags: qfftf (fft3d, fft3d_r2c), and for rtransform qfftf_cos and qfftf_sin (type II forward, III backward),
// qfftf_cos1 and qfftf_sin1 (type I, both ways). Single precision alone. Executors plan when they are made, both
// directions, and may be shared; a plan that the library refuses throws std::runtime_error with the reason. Threads:
// what the thread that makes the transform has set by qsl_fftf_plan_with_nthreads.
#ifndef HEFFTE_BACKEND_QFFTF_H
#define HEFFTE_BACKEND_QFFTF_H

#include <heffte.h>
#include <qfftf.h>

#include <algorithm>
#include <array>
#include <complex>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace heffte {

// ---- Tags and traits
// -------------------------------------------------------------------------------------------------

namespace backend {

struct qfftf {};
struct qfftf_cos {};
struct qfftf_sin {};
struct qfftf_cos1 {};
struct qfftf_sin1 {};

template <>
struct is_enabled<qfftf> : std::true_type {};
template <>
struct is_enabled<qfftf_cos> : std::true_type {};
template <>
struct is_enabled<qfftf_sin> : std::true_type {};
template <>
struct is_enabled<qfftf_cos1> : std::true_type {};
template <>
struct is_enabled<qfftf_sin1> : std::true_type {};

template <>
inline std::string name<qfftf>() {
    return "qfftf";
}
template <>
inline std::string name<qfftf_cos>() {
    return "qfftf-cos-type-II";
}
template <>
inline std::string name<qfftf_sin>() {
    return "qfftf-sin-type-II";
}
template <>
inline std::string name<qfftf_cos1>() {
    return "qfftf-cos-type-I";
}
template <>
inline std::string name<qfftf_sin1>() {
    return "qfftf-sin-type-I";
}

template <>
struct uses_fft_types<qfftf_cos> : std::false_type {};
template <>
struct uses_fft_types<qfftf_sin> : std::false_type {};
template <>
struct uses_fft_types<qfftf_cos1> : std::false_type {};
template <>
struct uses_fft_types<qfftf_sin1> : std::false_type {};

// heFFTe asserts check_types<...>::value. This one says its sentence when it is asked, not where it is defined.
struct refuses_double {
    template <typename boolean>
    constexpr operator boolean() const {
        static_assert(not std::is_same<boolean, bool>::value,
                      "qfftf transforms single precision only: use float, or another backend of heFFTe for double.");
        return false;
    }
};
struct no_double_precision {
    static constexpr refuses_double value{};
};
template <>
struct check_types<qfftf, double, std::complex<double>> : no_double_precision {};
template <>
struct check_types<qfftf, std::complex<double>, std::complex<double>> : no_double_precision {};
template <>
struct check_types<qfftf_cos, double, double> : no_double_precision {};
template <>
struct check_types<qfftf_sin, double, double> : no_double_precision {};
template <>
struct check_types<qfftf_cos1, double, double> : no_double_precision {};
template <>
struct check_types<qfftf_sin1, double, double> : no_double_precision {};

}  // namespace backend

template <>
struct default_plan_options<backend::qfftf> {
    static const bool use_reorder = true;  // contiguous lines are the fastest, and reshapes copy in any case
};
template <>
struct default_plan_options<backend::qfftf_cos> : default_plan_options<backend::qfftf> {};
template <>
struct default_plan_options<backend::qfftf_sin> : default_plan_options<backend::qfftf> {};
template <>
struct default_plan_options<backend::qfftf_cos1> : default_plan_options<backend::qfftf> {};
template <>
struct default_plan_options<backend::qfftf_sin1> : default_plan_options<backend::qfftf> {};

// ---- Plans
// -----------------------------------------------------------------------------------------------------------

namespace qfftf_backend {

// One planning call of the library: transform dimensions, batch dimensions, steps on both sides.
struct problem {
    std::vector<fft_iodim64> dims, batch;

    // All lines of a box along some of its directions. `in` and `out` differ where one side has the half spectrum;
    // `real` is the box whose sizes are those of the transforms.
    template <typename index>
    problem(box3d<index> const& in, box3d<index> const& out, box3d<index> const& real,
            std::vector<int> const& directions) {
        for (int position = 2; position >= 0; --position) {  // the slowest direction first
            const int d = real.order[position];
            const fft_iodim64 dim = {static_cast<std::int64_t>(real.size[d]), step(in, position), step(out, position)};
            const bool transformed = std::find(directions.begin(), directions.end(), d) != directions.end();
            if (transformed)
                dims.push_back(dim);
            else if (dim.n > 1 and not batch.empty() and continues(batch.back(), dim))
                batch.back() = fft_iodim64{batch.back().n * dim.n, dim.is, dim.os};
            else if (dim.n > 1)
                batch.push_back(dim);
        }
    }

    template <typename index>
    static std::int64_t step(box3d<index> const& box, int position) {
        std::int64_t result = 1;
        for (int p = 0; p < position; ++p) result *= box.size[box.order[p]];
        return result;
    }
    static bool continues(fft_iodim64 const& outer, fft_iodim64 const& inner) {
        return outer.is == inner.n * inner.is and outer.os == inner.n * inner.os;
    }

    // The words that the tool qfftf-plan takes, so that a refusal can be looked into.
    std::string words(std::string const& kind, std::string const& rest) const {
        auto list = [](std::vector<fft_iodim64> const& of) {
            std::string text;
            for (auto const& d : of)
                text += (text.empty() ? "" : ",") + std::to_string(d.n) + ":" + std::to_string(d.is) + ":" +
                        std::to_string(d.os);
            return text;
        };
        return "guru " + kind + " dims=" + list(dims) + (batch.empty() ? "" : " batch=" + list(batch)) + " wide" + rest;
    }

    // The first documented demand that the call fails.
    std::string refusal(bool is_cosine_of_type_one) const {
        for (auto const& d : dims)
            if (d.n < 1 or d.is < 1 or d.os < 1) return "the call demands: all of dims are at least 1";
        for (auto const& d : batch)
            if (d.n < 1 or d.is < 1 or d.os < 1) return "the call demands: all of howmany_dims are at least 1";
        for (auto const& d : dims)
            if (is_cosine_of_type_one and d.n < 2) return "a cosine transform of type I has at least 2 points";
        return "the arguments are valid, but no solver takes the problem, or memory is short";
    }
};

// Owns a plan. Execution may be shared between threads as far as the library allows it for any plan.
class plan {
public:
    static plan c2c(problem const& p, int sign) {
        return plan(p, "c2c", " sign=" + std::to_string(sign) + " inplace", false,
                    qsl_fftf_plan_guru64_dft(rank(p), p.dims.data(), batch_rank(p), p.batch.data(), nullptr, nullptr,
                                             sign, QSL_FFTF_RULES));
    }
    // r2c and c2r run out of place: two null arrays would count as in place, so stand-ins are told, which aren't
    // touched.
    static plan r2c(problem const& p) {
        std::array<std::complex<float>, 2> stand_in;
        return plan(p, "r2c", "", false,
                    qsl_fftf_plan_guru64_dft_r2c(rank(p), p.dims.data(), batch_rank(p), p.batch.data(),
                                                 floats(&stand_in[0]), complexes(&stand_in[1]), QSL_FFTF_RULES));
    }
    static plan c2r(problem const& p) {
        std::array<std::complex<float>, 2> stand_in;
        return plan(p, "c2r", "", false,
                    qsl_fftf_plan_guru64_dft_c2r(rank(p), p.dims.data(), batch_rank(p), p.batch.data(),
                                                 complexes(&stand_in[0]), floats(&stand_in[1]), QSL_FFTF_RULES));
    }
    static plan r2r(problem const& p, qsl_fftf_r2r_kind kind) {
        const std::vector<qsl_fftf_r2r_kind> kinds(p.dims.size(), kind);
        std::string list;
        for (std::size_t i = 0; i < kinds.size(); ++i) list += (i == 0 ? "" : ",") + std::to_string(kind);
        return plan(p, "r2r", " kinds=" + list + " inplace", kind == QSL_FFTF_REDFT00,
                    qsl_fftf_plan_guru64_r2r(rank(p), p.dims.data(), batch_rank(p), p.batch.data(), nullptr, nullptr,
                                             kinds.data(), QSL_FFTF_RULES));
    }

    template <typename in_type, typename out_type>
    void operator()(in_type* in, out_type* out) const {
        qsl_fftf_execute_dft(handle_.get(), complexes(in), complexes(out));  // one function under four types
    }

private:
    struct destroy {
        void operator()(qsl_fftf_plan handle) const { qsl_fftf_destroy_plan(handle); }
    };
    using owner = std::unique_ptr<typename std::remove_pointer<qsl_fftf_plan>::type, destroy>;

    plan(problem const& p, std::string const& kind, std::string const& rest, bool is_cosine_of_type_one,
         qsl_fftf_plan made)
        : handle_(made) {
        if (made == nullptr)
            throw std::runtime_error("qfftf: " + p.words(kind, rest) + " : refused; " +
                                     p.refusal(is_cosine_of_type_one));
    }

    static int rank(problem const& p) { return static_cast<int>(p.dims.size()); }
    static int batch_rank(problem const& p) { return static_cast<int>(p.batch.size()); }
    static qsl_fftf_complex* complexes(void const* x) { return static_cast<qsl_fftf_complex*>(const_cast<void*>(x)); }
    static float* floats(void* x) { return static_cast<float*>(x); }

    owner handle_;
};

// What every executor refuses at run time, where heFFTe doesn't ask for the types at compile time (fft3d_r2c).
class single_precision_executor : public executor_base {
public:
    using executor_base::backward;
    using executor_base::forward;
    void forward(double[], double*) const override { refuse(); }
    void backward(double[], double*) const override { refuse(); }
    void forward(std::complex<double>[], std::complex<double>*) const override { refuse(); }
    void backward(std::complex<double>[], std::complex<double>*) const override { refuse(); }
    void forward(double const[], std::complex<double>[], std::complex<double>*) const override { refuse(); }
    void backward(std::complex<double>[], double[], std::complex<double>*) const override { refuse(); }
    std::size_t workspace_size() const override { return 0; }  // scratch belongs to the plans

private:
    [[noreturn]] static void refuse() {
        throw std::runtime_error(
            "qfftf transforms single precision only: use float, or another backend of heFFTe for double");
    }
};

// ---- Executors
// -------------------------------------------------------------------------------------------------------

// Complex transforms in place, of one, two or all three directions of a box.
class executor : public single_precision_executor {
public:
    using single_precision_executor::backward;
    using single_precision_executor::forward;

    template <typename index>
    executor(void*, box3d<index> const box, int direction) : executor(box, std::vector<int>{direction}) {}
    template <typename index>
    executor(void*, box3d<index> const box, int one, int other) : executor(box, std::vector<int>{one, other}) {}
    template <typename index>
    executor(void*, box3d<index> const box) : executor(box, std::vector<int>{0, 1, 2}) {}

    void forward(std::complex<float> data[], std::complex<float>*) const override { forward_(data, data); }
    void backward(std::complex<float> data[], std::complex<float>*) const override { backward_(data, data); }
    void forward(float const in[], std::complex<float> out[], std::complex<float>* workspace) const override {
        std::copy_n(in, size_, out);
        forward(out, workspace);
    }
    void backward(std::complex<float> in[], float out[], std::complex<float>* workspace) const override {
        backward(in, workspace);
        for (int i = 0; i < size_; ++i) out[i] = in[i].real();
    }
    int box_size() const override { return size_; }

private:
    template <typename index>
    executor(box3d<index> const& box, std::vector<int> const& directions)
        : size_(static_cast<int>(box.count())),
          forward_(plan::c2c(problem(box, box, box, directions), QSL_FFTF_FORWARD)),
          backward_(plan::c2c(problem(box, box, box, directions), QSL_FFTF_BACKWARD)) {}

    int size_;
    plan forward_, backward_;
};

// Real to complex along one direction, which becomes half as long, and back.
class executor_r2c : public single_precision_executor {
public:
    using single_precision_executor::backward;
    using single_precision_executor::forward;

    template <typename index>
    executor_r2c(void*, box3d<index> const box, int direction)
        : size_(static_cast<int>(box.count())),
          complex_size_(static_cast<int>(box.r2c(direction).count())),
          forward_(plan::r2c(problem(box, box.r2c(direction), box, std::vector<int>{direction}))),
          backward_(plan::c2r(problem(box.r2c(direction), box, box, std::vector<int>{direction}))) {}

    void forward(float const in[], std::complex<float> out[], std::complex<float>*) const override {
        forward_(in, out);
    }
    void backward(std::complex<float> in[], float out[], std::complex<float>*) const override { backward_(in, out); }
    int box_size() const override { return size_; }
    int complex_size() const override { return complex_size_; }

private:
    int size_, complex_size_;
    plan forward_, backward_;
};

// Cosine and sine transforms in place. heFFTe's scale for tags that it doesn't know divides by 4 n along every
// direction, whatever the kind: the backward transform makes up for it, so that scale::full gives the inverse.
template <qsl_fftf_r2r_kind forward_kind, qsl_fftf_r2r_kind backward_kind>
class executor_r2r : public single_precision_executor {
public:
    using single_precision_executor::backward;
    using single_precision_executor::forward;

    template <typename index>
    executor_r2r(void*, box3d<index> const box, int direction) : executor_r2r(box, std::vector<int>{direction}) {}
    template <typename index>
    executor_r2r(void*, box3d<index> const box, int one, int other) : executor_r2r(box, std::vector<int>{one, other}) {}
    template <typename index>
    executor_r2r(void*, box3d<index> const box) : executor_r2r(box, std::vector<int>{0, 1, 2}) {}

    void forward(float data[], float*) const override { forward_(data, data); }
    void backward(float data[], float*) const override {
        backward_(data, data);
        for (int i = 0; i < size_; ++i) data[i] *= scale_;
    }
    int box_size() const override { return size_; }

private:
    template <typename index>
    executor_r2r(box3d<index> const& box, std::vector<int> const& directions)
        : size_(static_cast<int>(box.count())),
          forward_(plan::r2r(problem(box, box, box, directions), forward_kind)),
          backward_(plan::r2r(problem(box, box, box, directions), backward_kind)) {
        double scale = 1;
        for (int d : directions) scale *= 4.0 * box.size[d] / logical_length(box.size[d]);
        scale_ = static_cast<float>(scale);
    }

    // Forward and backward multiply by so much.
    static double logical_length(double n) {
        return forward_kind == QSL_FFTF_REDFT00 ? 2 * (n - 1) : forward_kind == QSL_FFTF_RODFT00 ? 2 * (n + 1) : 2 * n;
    }

    int size_;
    float scale_ = 1;
    plan forward_, backward_;
};

}  // namespace qfftf_backend

template <>
struct one_dim_backend<backend::qfftf> {
    using executor = qfftf_backend::executor;
    using executor_r2c = qfftf_backend::executor_r2c;
};
template <>
struct one_dim_backend<backend::qfftf_cos> {
    using executor = qfftf_backend::executor_r2r<QSL_FFTF_REDFT10, QSL_FFTF_REDFT01>;
    using executor_r2c = void;
};
template <>
struct one_dim_backend<backend::qfftf_sin> {
    using executor = qfftf_backend::executor_r2r<QSL_FFTF_RODFT10, QSL_FFTF_RODFT01>;
    using executor_r2c = void;
};
template <>
struct one_dim_backend<backend::qfftf_cos1> {
    using executor = qfftf_backend::executor_r2r<QSL_FFTF_REDFT00, QSL_FFTF_REDFT00>;
    using executor_r2c = void;
};
template <>
struct one_dim_backend<backend::qfftf_sin1> {
    using executor = qfftf_backend::executor_r2r<QSL_FFTF_RODFT00, QSL_FFTF_RODFT00>;
    using executor_r2c = void;
};

}  // namespace heffte

#endif
