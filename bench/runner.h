// SPDX-License-Identifier: Apache-2.0
// Runs one problem by one library: arrays, the comparison of results, markers for the cycle model, the clock.
#pragma once
#include "bench/library.h"

#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace bench {

enum class input_kind {
    uniform,  // in [-0.5, 0.5), from a fixed seed: fair to everybody
    impulse,  // a single 1 at a third of each transform: the result is a row of twiddle factors
    range     // of both signs and magnitudes from 2^-20 to 2^20, evenly by their logarithm
};

// The two arrays of a problem, page-aligned so that both libraries meet the same alignment; one array when in place.
template <typename Real>
class arrays {
public:
    explicit arrays(const problem& p);
    Real* in() const { return in_.get(); }
    Real* out() const { return out_ ? out_.get() : in_.get(); }
    size_t in_span() const { return in_span_; }

    // Single-precision values at any precision; for c2r the spectrum of such numbers, which `maker` computes. Gaps are
    // zero.
    void fill(const problem& p, library<Real>& maker, input_kind input = input_kind::uniform);
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

// The distance of a result from that of a reference, over the elements of the output of a problem.
struct distances {
    double l2;   // relative to the L2 norm of the reference
    double max;  // the largest, of a real or imaginary part, relative to the largest part of the reference
};
template <typename Left, typename Right>
distances relative_distances(const problem& p, const Left* left, const Right* reference);

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
