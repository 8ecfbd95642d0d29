// SPDX-License-Identifier: Apache-2.0
// Runs one problem by one library: arrays, the comparison of results, markers for the cycle model, the clock.
#pragma once
#include "bench/library.h"

#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace bench {

// The two arrays of a problem, page-aligned so that both libraries meet the same alignment; one array when in place.
template <typename Real>
class arrays {
public:
    explicit arrays(const problem& p);
    Real* in() const { return in_.get(); }
    Real* out() const { return out_ ? out_.get() : in_.get(); }
    size_t in_span() const { return in_span_; }

    // Fair input: uniform in [-0.5, 0.5) from a fixed seed, single-precision values at any precision; for c2r the
    // spectrum of such numbers, which `maker` computes. Gaps are zero.
    void fill(const problem& p, library<Real>& maker);
    void clear();

private:
    struct release {
        void operator()(Real* p) const { free(p); }
    };
    using block = std::unique_ptr<Real[], release>;
    static block allocate(size_t count);
    size_t in_span_, out_span_;
    block in_, out_;
};

// Relative L2 distance of two results of one problem over the elements of its output.
template <typename Left, typename Right>
double relative_distance(const problem& p, const Left* left, const Right* reference);

struct clock_figures {
    long executions;  // per run
    double median_ns, min_ns, max_ns;
};
// Times each of the plans by turns, `runs` times, each run as many executions as take about a hundredth of a second.
std::vector<clock_figures> time_by_turns(const std::vector<std::function<void()>>& executions, int runs);

// Executes between the instructions `hint #42` and `hint #43`, which processors ignore and bench/model looks for.
void execute_between_markers(library<float>& lib, void* plan, long count);

// A plan and its destruction, after it was planned before; `first` lets the library forget what it remembers of that.
struct planning {
    library<float>& lib;
    const problem& p;
    float *in, *out;
    bool first;
};
void plan_between_markers(const planning& act);
// One plan for each run.
clock_figures time_plans(const planning& act, int runs);

// The core's frequency: a chain of additions, each of which waits one cycle for the one before.
double core_ghz();

// True under the user-mode emulator, where a clock measures the emulator.
bool emulated();

}  // namespace bench
