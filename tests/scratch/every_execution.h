// SPDX-License-Identifier: Apache-2.0
// Problems of which the plans, by the rules and by every other row that takes them, reach every execute function of the
// library (program_contents.h proves it).
#pragma once
#include "record/fft_plan.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

using floats = std::vector<float>;

struct problem_case {
    uint32_t kind = kind_c2c;
    std::vector<fft_dim> dims = {};
    std::vector<fft_dim> batch = {};
    bool in_place = false;
    int64_t nthreads = 1;
    uint32_t r2r = 0;  // of every dimension
    bool split = false;
    bool every_row = true;  // false: it takes too long but by the rules
    int64_t sign = sign_forward;
};

// The two arrays of an execution; in place `out` is empty, and split arrays stand one behind the other.
struct arrays {
    floats in, out;
    friend bool operator==(const arrays&, const arrays&) = default;
};

class planned_execution {
public:
    // By the rules (row -1), or as the measured form of a row of the solver table. Without a plan where that refuses.
    planned_execution(const problem_case& problem, int row);
    ~planned_execution();
    planned_execution(planned_execution&&) = default;
    planned_execution& operator=(planned_execution&&) = default;
    explicit operator bool() const { return static_cast<bool>(plan_); }

    const fft_plan& plan() const { return *plan_; }
    std::string text() const;

    // Noise in the input, something else in the output.
    const arrays& before() const { return before_; }
    // The arrays that were given to the planner, which began as those before.
    const arrays& planned_on() const { return planned_on_; }
    void execute(arrays& on) const;
    arrays result() const {
        arrays on = before_;
        execute(on);
        return on;
    }
    // The same on arrays that begin so many floats behind where the others do.
    arrays result_behind(size_t floats_ahead) const;

private:
    void execute_behind(arrays& on, size_t floats_ahead) const;
    struct release {
        void operator()(fft_plan* p) const { fft_plan_free(p); }
    };
    problem_case problem_;
    int row_;
    arrays before_, planned_on_;
    std::unique_ptr<fft_plan, release> plan_;
};

const std::vector<problem_case>& every_problem();

// Each plan of each problem, in turn. The program is linked with a clock that stands still
// (tests/planner/fake_clock.h), so that measured subplans are the same each time.
void for_each_execution(const std::function<void(const planned_execution&)>& visit);
