// SPDX-License-Identifier: Apache-2.0
// One problem of every sort that has a route over several threads, through the public calls.
#pragma once
#include "include/qfftf.h"
#include "tests/support/signals.h"

#include <functional>
#include <memory>
#include <numeric>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

using floats = std::vector<float>;
using owned_plan = std::unique_ptr<std::remove_pointer_t<qsl_fftf_plan>, void (*)(qsl_fftf_plan)>;

inline qsl_fftf_complex* complex_of(float* data) { return reinterpret_cast<qsl_fftf_complex*>(data); }

struct threaded_problem {
    std::string name;
    size_t in_floats;
    size_t out_floats;  // 0: in place
    std::function<qsl_fftf_plan(float* in, float* out)> make;
    bool own_route = false;  // with several threads another algorithm or kernel computes it than with one
    bool one_array() const { return out_floats == 0; }

    floats input() const {
        uniform_noise noise(in_floats);
        floats data(in_floats);
        for (float& x : data) x = noise();
        return data;
    }

    owned_plan plan(floats& in, floats& out) const {
        return {make(in.data(), one_array() ? in.data() : out.data()), qsl_fftf_destroy_plan};
    }

    // Runs the plan on arrays of its own. Every kind has its execute call; all of them take the plan's pair of arrays.
    floats result(qsl_fftf_plan plan) const {
        floats in = input(), out(out_floats, 0);
        qsl_fftf_execute_r2r(plan, in.data(), one_array() ? in.data() : out.data());
        return one_array() ? in : out;
    }
};

inline void PrintTo(const threaded_problem& problem, std::ostream* text) { *text << problem.name; }

inline threaded_problem complex_batch(int n, int batch, bool rows, bool in_place) {
    const std::string name = "c2c " + std::to_string(n) + (rows ? " rows " : " columns ") + std::to_string(batch);
    const size_t size = size_t{2} * n * batch;
    const int stride = rows ? 1 : batch, distance = rows ? n : 1;
    return {name + (in_place ? " in place" : ""), size, in_place ? 0 : size, [=](float* in, float* out) {
                return qsl_fftf_plan_many_dft(1, &n, batch, complex_of(in), nullptr, stride, distance, complex_of(out),
                                              nullptr, stride, distance, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
            }};
}

// A batch of planes: with placement off and threads to spare the loop over the batch contains loops over rows.
inline threaded_problem complex_planes(int n0, int n1, int batch) {
    const size_t size = size_t{2} * n0 * n1 * batch;
    return {"c2c planes", size, size, [=](float* in, float* out) {
                const int n[] = {n0, n1};
                return qsl_fftf_plan_many_dft(2, n, batch, complex_of(in), nullptr, 1, n0 * n1, complex_of(out),
                                              nullptr, 1, n0 * n1, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
            }};
}

inline threaded_problem complex_box(std::vector<int> n, bool in_place) {
    std::string name = in_place ? "c2c in place" : "c2c";
    for (int d : n) name += " " + std::to_string(d);
    const size_t size = std::accumulate(n.begin(), n.end(), size_t{2}, std::multiplies<>());
    return {name, size, in_place ? 0 : size, [=](float* in, float* out) {
                return qsl_fftf_plan_dft(static_cast<int>(n.size()), n.data(), complex_of(in), complex_of(out),
                                         QSL_FFTF_BACKWARD, QSL_FFTF_RULES);
            }};
}

inline threaded_problem real_box(std::vector<int> n, bool forward) {
    std::string name = forward ? "r2c" : "c2r";
    for (int d : n) name += " " + std::to_string(d);
    const size_t rows = std::accumulate(n.begin(), n.end() - 1, size_t{1}, std::multiplies<>());
    const size_t real = rows * n.back(), half = rows * (n.back() / 2 + 1) * 2;
    const int rank = static_cast<int>(n.size());
    if (forward)
        return {name, real, half, [=](float* in, float* out) {
                    return qsl_fftf_plan_dft_r2c(rank, n.data(), in, complex_of(out), QSL_FFTF_RULES);
                }};
    return {name, half, real, [=](float* in, float* out) {
                return qsl_fftf_plan_dft_c2r(rank, n.data(), complex_of(in), out, QSL_FFTF_RULES);
            }};
}

inline threaded_problem real_batch(int n, int batch, bool forward) {
    const size_t real = size_t{1} * n * batch, half = size_t{2} * (n / 2 + 1) * batch;
    const std::string name = (forward ? "r2c " : "c2r ") + std::to_string(n) + " rows " + std::to_string(batch);
    if (forward)
        return {name, real, half, [=](float* in, float* out) {
                    return qsl_fftf_plan_many_dft_r2c(1, &n, batch, in, nullptr, 1, n, complex_of(out), nullptr, 1,
                                                      n / 2 + 1, QSL_FFTF_RULES);
                }};
    return {name, half, real, [=](float* in, float* out) {
                return qsl_fftf_plan_many_dft_c2r(1, &n, batch, complex_of(in), nullptr, 1, n / 2 + 1, out, nullptr, 1,
                                                  n, QSL_FFTF_RULES);
            }};
}

inline threaded_problem r2r_batch(int n, int batch, bool rows, qsl_fftf_r2r_kind kind) {
    const size_t size = size_t{1} * n * batch;
    const int stride = rows ? 1 : batch, distance = rows ? n : 1;
    const std::string name =
        "r2r kind " + std::to_string(kind) + " " + std::to_string(n) + (rows ? " rows " : " columns ");
    return {name + std::to_string(batch), size, size, [=](float* in, float* out) {
                return qsl_fftf_plan_many_r2r(1, &n, batch, in, nullptr, stride, distance, out, nullptr, stride,
                                              distance, &kind, QSL_FFTF_RULES);
            }};
}

inline threaded_problem by_its_own_route(threaded_problem problem) {
    problem.own_route = true;
    return problem;
}

// Powers of two above 4096 are split in two passes for several threads, and so are the cores of real transforms of
// twice the length. Real rows run in pairs, but a thread that gets four or fewer does them one by one. Of the r2r
// columns, what is left over behind blocks of 16 runs strided: by other kernels and passes for kinds 1, 2, 3 and 7.
inline std::vector<threaded_problem> threaded_problems() {
    std::vector<threaded_problem> all;
    for (int n : {16, 41, 60, 64, 107, 128})
        for (bool rows : {true, false}) all.push_back(complex_batch(n, 40, rows, false));
    all.push_back(complex_batch(64, 50, true, true));
    all.push_back(complex_batch(64, 50, false, true));
    all.push_back(complex_batch(1000, 7, true, false));
    all.push_back(complex_box({64, 48}, false));
    all.push_back(complex_box({64, 48}, true));
    all.push_back(complex_box({16, 20, 24}, false));
    all.push_back(complex_box({4, 6, 8, 10}, false));
    all.push_back(complex_planes(24, 60, 8));
    all.push_back(by_its_own_route(complex_box({8192}, false)));
    all.push_back(by_its_own_route(complex_box({8192}, true)));
    for (bool forward : {true, false}) {
        all.push_back(by_its_own_route(real_box({16384}, forward)));
        all.push_back(real_box({16500}, forward));
        all.push_back(by_its_own_route(real_box({64, 48}, forward)));
        all.push_back(by_its_own_route(real_box({12, 20, 16}, forward)));
        for (int n : {15, 64, 100}) all.push_back(by_its_own_route(real_batch(n, 40, forward)));
    }
    for (qsl_fftf_r2r_kind kind = QSL_FFTF_R2HC; kind <= QSL_FFTF_RODFT11; ++kind)
        for (bool rows : {true, false}) {
            all.push_back(r2r_batch(40, 40, rows, kind));
            all.back().own_route = !rows && (kind == QSL_FFTF_HC2R || kind == QSL_FFTF_DHT ||
                                             kind == QSL_FFTF_REDFT00 || kind == QSL_FFTF_RODFT00);
        }
    return all;
}
