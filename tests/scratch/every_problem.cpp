// SPDX-License-Identifier: Apache-2.0
#include "tests/scratch/every_execution.h"

namespace {

std::vector<problem_case> complex_singles() {
    std::vector<problem_case> all;
    for (int64_t n : {1, 5, 16, 64, 100, 1000, 41, 82, 83, 94, 1763})
        for (fft_dim strides : {fft_dim{0, 1, 1}, fft_dim{0, 2, 1}, fft_dim{0, 1, 3}})
            all.push_back({.dims = {{n, strides.is, strides.os}}});
    all.push_back({.dims = {{1000, 1, 1}}, .in_place = true});
    all.push_back({.dims = {{65536, 1, 1}}, .every_row = false});
    all.push_back({.dims = {{262144, 1, 1}}, .in_place = true, .every_row = false});
    return all;
}

std::vector<problem_case> complex_batches() {
    std::vector<problem_case> all;
    for (int64_t n : {1, 6, 16, 64, 100, 94})
        for (int64_t count : {1, 3, 4, 7, 8}) {
            all.push_back({.dims = {{n, 1, 1}}, .batch = {{count, n, n}}});           // rows
            all.push_back({.dims = {{n, count, count}}, .batch = {{count, 1, 1}}});   // columns
            all.push_back({.dims = {{n, 1, count}}, .batch = {{count, n, 1}}});       // rows to columns
            all.push_back({.dims = {{n, count, 1}}, .batch = {{count, 1, n + 30}}});  // columns to rows
            if (n > 1) all.push_back({.dims = {{n, 1, 1}}, .batch = {{count, n, n}}, .in_place = true});
        }
    for (int64_t n : {16, 64}) {
        all.push_back({.dims = {{n, 1, 1}}, .batch = {{8, n, n}}, .sign = sign_backward});
        all.push_back({.dims = {{n, 1, 8}}, .batch = {{8, n, 1}}, .sign = sign_backward});
    }
    all.push_back({.dims = {{6, 1, 10}}, .batch = {{10, 6, 1}}, .in_place = true});
    all.push_back({.dims = {{128, 128, 128}}, .batch = {{128, 1, 1}}});
    all.push_back({.dims = {{64, 64, 64}}, .batch = {{64, 1, 1}}, .in_place = true});
    all.push_back({.dims = {{64, 256, 256}}, .batch = {{256, 1, 1}}});
    all.push_back({.dims = {{64, 256, 1}}, .batch = {{256, 1, 64}}});
    all.push_back({.dims = {{4096, 65, 65}}, .batch = {{64, 1, 1}}, .every_row = false});
    all.push_back({.dims = {{256, 256, 1}}, .batch = {{256, 1, 256}}, .every_row = false});
    all.push_back({.dims = {{1100, 1100, 1100}}, .batch = {{20, 1, 1}}, .every_row = false});
    all.push_back({.dims = {{1100, 1100, 1100}}, .batch = {{273, 1, 1}}, .every_row = false});
    all.push_back({.dims = {{1025, 1025, 1025}}, .batch = {{49, 1, 1}}, .every_row = false});
    all.push_back({.dims = {{4096, 64, 64}}, .batch = {{64, 1, 1}}, .every_row = false});
    all.push_back({.dims = {{256, 1, 256}}, .batch = {{256, 256, 1}}, .in_place = true, .every_row = false});
    all.push_back({.dims = {{8192, 1, 16}}, .batch = {{16, 8192, 1}}, .every_row = false});  // columns far apart
    all.push_back({.dims = {{1000, 1, 1}}, .batch = {{3, 1000, 1000}, {2, 3000, 3000}}});
    all.push_back({.dims = {{5, 1, 1}}, .batch = {{3, 5, 5}, {2, 15, 15}}});
    all.push_back({.dims = {{1000, 1, 1}}, .batch = {{8, 1000, 1000}}, .nthreads = 2});
    all.push_back({.dims = {{64, 1, 1}}, .batch = {{24, 64, 64}}, .nthreads = 3});
    all.push_back({.dims = {{16, 1, 1}}, .batch = {{180, 16, 16}}, .nthreads = 2});
    return all;
}

std::vector<problem_case> several_dimensions() {
    return {
        {.dims = {{100, 100, 100}, {100, 1, 1}}},
        {.dims = {{16, 100, 100}, {100, 1, 1}}, .in_place = true},
        {.dims = {{5, 120, 120}, {12, 10, 10}, {10, 1, 1}}},
        {.dims = {{128, 128, 128}, {128, 1, 1}}, .in_place = true, .nthreads = 2, .every_row = false},
        {.dims = {}, .batch = {{7, 9, 1}, {9, 1, 7}}, .in_place = true},
        {.dims = {}, .batch = {{7, 9, 1}, {9, 1, 7}}},
        {.dims = {}, .batch = {{7, 10, 12}, {9, 1, 1}}},
        {.dims = {}, .batch = {{9, 9, 1}, {9, 1, 9}}, .in_place = true},
        {.kind = kind_r2r, .dims = {}, .batch = {{7, 9, 1}, {9, 1, 7}}, .in_place = true},
        {.kind = kind_r2r, .dims = {}, .batch = {{7, 9, 1}, {9, 1, 7}}},
        {.kind = kind_r2r, .dims = {}, .batch = {{7, 10, 12}, {9, 1, 1}}},
        {.kind = kind_r2r, .dims = {}, .batch = {{9, 9, 1}, {9, 1, 9}}, .in_place = true},
        {.kind = kind_r2c, .dims = {{12, 100, 51}, {100, 1, 1}}},
        {.kind = kind_r2c, .dims = {{12, 102, 51}, {100, 1, 1}}, .in_place = true},
        {.kind = kind_r2c, .dims = {{6, 24, 16}, {6, 4, 4}}, .batch = {{4, 1, 1}}, .in_place = true},
        {.kind = kind_c2r, .dims = {{12, 51, 100}, {100, 1, 1}}},
        {.kind = kind_c2r, .dims = {{12, 51, 102}, {100, 1, 1}}, .in_place = true},
        {.kind = kind_c2r, .dims = {{6, 16, 24}, {6, 4, 4}}, .batch = {{4, 1, 1}}, .in_place = true},
        {.kind = kind_r2r, .dims = {{20, 100, 100}, {100, 1, 1}}, .in_place = true, .r2r = r2r_redft10},
        {.kind = kind_upsampling_2d, .dims = {{6, 0, 0}, {10, 0, 0}}, .batch = {{9, 0, 0}, {20, 0, 0}}},
        {.kind = kind_upsampling_2d, .dims = {{6, 0, 0}, {10, 0, 0}}, .batch = {{6, 0, 0}, {13, 0, 0}}},
    };
}

std::vector<problem_case> real_and_complex() {
    std::vector<problem_case> all;
    for (int64_t n : {1, 2, 3, 8, 16, 17, 24, 41, 64, 100, 99, 512, 1000, 2002}) {
        const int64_t half = n / 2 + 1;
        for (fft_dim strides : {fft_dim{0, 1, 1}, fft_dim{0, 2, 1}, fft_dim{0, 1, 3}}) {
            all.push_back({.kind = kind_r2c, .dims = {{n, strides.is, strides.os}}});
            all.push_back({.kind = kind_c2r, .dims = {{n, strides.os, strides.is}}});
        }
        all.push_back({.kind = kind_r2c, .dims = {{n, 1, 1}}, .in_place = true});
        all.push_back({.kind = kind_c2r, .dims = {{n, 1, 1}}, .in_place = true});
        if (n > 1000) continue;
        for (int64_t count : {1, 3, 4, 7}) {
            all.push_back({.kind = kind_r2c, .dims = {{n, 1, 1}}, .batch = {{count, n, half}}});
            all.push_back({.kind = kind_c2r, .dims = {{n, 1, 1}}, .batch = {{count, half, n}}});
            all.push_back(
                {.kind = kind_r2c, .dims = {{n, 1, 1}}, .batch = {{count, 2 * half, half}}, .in_place = true});
            all.push_back(
                {.kind = kind_c2r, .dims = {{n, 1, 1}}, .batch = {{count, half, 2 * half}}, .in_place = true});
            all.push_back({.kind = kind_r2c, .dims = {{n, 1, 1}}, .batch = {{count, n, half}}, .in_place = true});
            all.push_back({.kind = kind_c2r, .dims = {{n, 1, 1}}, .batch = {{count, half, n}}, .in_place = true});
            all.push_back({.kind = kind_r2c, .dims = {{n, count, count}}, .batch = {{count, 1, 1}}});
            all.push_back({.kind = kind_c2r, .dims = {{n, count, count}}, .batch = {{count, 1, 1}}});
        }
    }
    for (uint32_t kind : {kind_r2c, kind_c2r})
        all.push_back({.kind = kind, .dims = {{16384, 1, 1}}, .nthreads = 2, .every_row = false});
    for (int64_t n : {6, 10, 12, 20, 24}) {  // rows of kernels around columns of kernels: nothing below needs scratch
        const int64_t half = 7 / 2 + 1;
        all.push_back({.kind = kind_r2c, .dims = {{n, 7, half}, {7, 1, 1}}, .every_row = false});
        all.push_back({.kind = kind_c2r, .dims = {{n, half, 7}, {7, 1, 1}}, .every_row = false});
    }
    return all;
}

std::vector<problem_case> real_to_real() {
    std::vector<problem_case> all;
    for (uint32_t r2r = r2r_r2hc; r2r <= r2r_rodft11; ++r2r) {
        for (int64_t n : {5, 16, 17, 99, 100, 101, 102, 200}) {
            all.push_back({.kind = kind_r2r, .dims = {{n, 1, 1}}, .r2r = r2r});
            all.push_back({.kind = kind_r2r, .dims = {{n, 2, 1}}, .r2r = r2r});
            all.push_back({.kind = kind_r2r, .dims = {{n, 1, 2}}, .r2r = r2r});
            all.push_back({.kind = kind_r2r, .dims = {{n, 1, 1}}, .in_place = true, .r2r = r2r});
        }
        all.push_back({.kind = kind_r2r, .dims = {{100, 1, 1}}, .batch = {{5, 100, 100}}, .r2r = r2r});
        for (int64_t count : {4, 5})
            all.push_back({.kind = kind_r2r, .dims = {{32, 1, 1}}, .batch = {{count, 32, 32}}, .r2r = r2r});
        all.push_back({.kind = kind_r2r, .dims = {{20, 32, 32}}, .batch = {{32, 1, 1}}, .in_place = true, .r2r = r2r});
    }
    return all;
}

std::vector<problem_case> split_arrays_problems() {
    return {
        {.dims = {{100, 1, 1}}, .split = true},
        {.dims = {{6, 1, 4}, {4, 6, 1}}, .batch = {{3, 24, 24}}, .in_place = true, .split = true},
        {.dims = {{12, 10, 10}, {10, 1, 1}}, .split = true},
        {.dims = {{94, 2, 1}}, .batch = {{3, 188, 94}}, .split = true},
        {.dims = {{12, 10, 10}, {10, 1, 1}}, .batch = {{2, 120, 120}, {2, 240, 240}}, .split = true},
        {.kind = kind_r2c, .dims = {{100, 1, 1}}, .split = true},
        {.kind = kind_r2c, .dims = {{100, 1, 1}}, .batch = {{3, 100, 51}}, .split = true},
        {.kind = kind_c2r, .dims = {{100, 1, 1}}, .split = true},
        {.kind = kind_c2r, .dims = {{100, 1, 1}}, .batch = {{3, 51, 100}}, .split = true},
    };
}

}  // namespace

const std::vector<problem_case>& every_problem() {
    static const std::vector<problem_case> all = [] {
        std::vector<problem_case> list;
        for (const auto& part : {complex_singles(), complex_batches(), several_dimensions(), real_and_complex(),
                                 real_to_real(), split_arrays_problems()})
            list.insert(list.end(), part.begin(), part.end());
        // As many transforms as there are points, 2048 at least: too many for a test, but one block of them does.
        list.push_back({.dims = {{2048, 1, 1}}, .batch = {{2048, 2048, 2048}}, .every_row = false});
        return list;
    }();
    return all;
}
