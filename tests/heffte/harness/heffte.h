// SPDX-License-Identifier: Apache-2.0
// As much of heFFTe's interface as the backend touches, written for the test of its executors: no MPI, no transforms.
#ifndef QFFTF_TEST_HARNESS_HEFFTE_H
#define QFFTF_TEST_HARNESS_HEFFTE_H

#include <array>
#include <complex>
#include <string>
#include <type_traits>

namespace heffte {

// A box of indices; `order` names its directions, the one that varies fastest first.
template <typename index>
struct box3d {
    std::array<index, 3> size;
    std::array<int, 3> order;

    long long count() const { return static_cast<long long>(size[0]) * size[1] * size[2]; }
    box3d r2c(int direction) const {
        box3d half = *this;
        half.size[direction] = size[direction] / 2 + 1;
        return half;
    }
};

namespace backend {
template <typename>
struct is_enabled : std::false_type {};
template <typename>
struct uses_fft_types : std::true_type {};
template <typename tag, typename in, typename out>
struct check_types : std::true_type {};
template <typename>
std::string name() {
    return "unknown";
}
}  // namespace backend

template <typename>
struct default_plan_options {};
template <typename>
struct one_dim_backend {};

struct executor_base {
    virtual ~executor_base() = default;
    virtual void forward(float[], float*) const {}
    virtual void backward(float[], float*) const {}
    virtual void forward(double[], double*) const {}
    virtual void backward(double[], double*) const {}
    virtual void forward(std::complex<float>[], std::complex<float>*) const {}
    virtual void backward(std::complex<float>[], std::complex<float>*) const {}
    virtual void forward(std::complex<double>[], std::complex<double>*) const {}
    virtual void backward(std::complex<double>[], std::complex<double>*) const {}
    virtual void forward(float const[], std::complex<float>[], std::complex<float>*) const {}
    virtual void backward(std::complex<float>[], float[], std::complex<float>*) const {}
    virtual void forward(double const[], std::complex<double>[], std::complex<double>*) const {}
    virtual void backward(std::complex<double>[], double[], std::complex<double>*) const {}
    virtual int box_size() const { return 0; }
    virtual std::size_t workspace_size() const { return 0; }
    virtual int complex_size() const { return box_size(); }
};

}  // namespace heffte

#endif
