// SPDX-License-Identifier: Apache-2.0
// A transform problem as the differential test draws, prints and shrinks it. Strides are explicit, so that a problem
// stays valid when a length gets shorter.
#pragma once
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "record/fft_plan.h"

enum class plan_call { many, guru, guru64 };

// The arguments of a many call that dims and batch don't show.
struct many_layout {
    std::vector<int> embed;  // one per dimension; embed[0] isn't read
    int stride = 1;
    int distance = 0;
};

struct transform_problem {
    uint32_t kind = kind_c2c;
    int sign = -1;
    bool split = false;
    std::vector<fft_dim> dims;
    std::vector<fft_dim> batch;
    std::vector<uint32_t> r2r_kinds;
    bool in_place = false;
    bool outputs_overlap = false;  // results mean nothing then, and there may be no plan
    plan_call call = plan_call::guru64;
    many_layout many_in, many_out;
    bool measured = false;
    int clock_seeds = 1;      // if measured: settlements of the races below the outermost one
    bool guarded = true;      // guard zones around the arrays; else arrays that end with the last element
    bool new_arrays = false;  // executed on other arrays than planned
    bool stranger = false;    // executed on a thread that never planned
    int nthreads = 1;
    uint64_t data_seed = 1;

    bool complex_in() const { return kind == kind_c2c || kind == kind_c2r; }
    bool complex_out() const { return kind == kind_c2c || kind == kind_r2c; }
    int64_t points() const;      // of one transform
    int64_t transforms() const;  // of the batch
    // Length of dimension d as stored on a side: the last one of a Hermitian side holds n / 2 + 1.
    int64_t stored_length(size_t d, bool input) const;
    std::string call_text() const;  // the planning call in the words that qfftf-plan reads (problems/call_words.h)
    std::string text() const;       // these and the conditions of the test
};

class problem_source {
public:
    problem_source(uint64_t seed, std::vector<uint32_t> r2r_kinds) : random_(seed), r2r_kinds_(std::move(r2r_kinds)) {}
    transform_problem draw();

private:
    int64_t between(int64_t low, int64_t high) {
        return low + static_cast<int64_t>(random_() % uint64_t(high - low + 1));
    }
    bool one_in(int64_t k) { return between(1, k) == 1; }
    int64_t length(int64_t budget);
    void draw_kind(transform_problem& p);
    void draw_sizes(transform_problem& p);
    void draw_columns(transform_problem& p);
    void draw_many_side(transform_problem& p, bool input);
    void draw_nested_side(transform_problem& p, bool input);
    void draw_in_place_many(transform_problem& p);
    void draw_in_place(transform_problem& p);
    void draw_overlap(transform_problem& p);
    void draw_conditions(transform_problem& p);

    std::mt19937_64 random_;
    std::vector<uint32_t> r2r_kinds_;
};

// Smaller problems of the same nature, most promising first.
std::vector<transform_problem> simpler_problems(const transform_problem& p);
