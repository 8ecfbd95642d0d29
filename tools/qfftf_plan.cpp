// SPDX-License-Identifier: Apache-2.0
// qfftf-plan: how the library solves a problem, or why it refuses it.
#include "interface/level.h"
#include "interface/plan_call.h"
#include "planner/plan_tree.h"
#include "tools/call_words.h"
#include "tools/planned_problem.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr char usage[] =
    "usage: qfftf-plan [--line] PROBLEM...\n"
    "Shows the tree of solvers that takes each problem: under each subproblem the solver, the function that it runs,\n"
    "the radices of its stages and its storage in bytes. The first line tells at which level of processors the "
    "library\n"
    "works. With --line a tree is one line, and there are no others. For a problem that is refused, says which\n"
    "documented demand it fails.\n"
    "\n"
    "A problem is one argument, KIND SIZES [WORD ...]:\n"
    "    'c2c 1024'   'r2c 64x100 inplace'   'redft10/dht 32x32'   'c2c 100 batch=8 interleaved backward'\n"
    "    'c2c 360 measured'   'c2c 256 batch=1000 threads=4'   'c2c 16 istride=2 ostride=3'   'transpose 100x200'\n"
    "or a planning call with its arguments, whatever they are:\n"
    "    'many r2c n=4,8 howmany=3 idist=40 odist=20 onembed=4,5 inplace'\n"
    "    'guru c2c dims=16:1:1 batch=10:16:16,2:160:160 sign=1 split wide'\n";

// A record to plan, and what the call demands if there is none.
struct request {
    fft_plan* record;
    const char* demand;
};

struct problem_arrays {
    std::vector<float> in, out;
    explicit problem_arrays(const bench::problem& p) : in(4), out(4) {
        if (!p.measured) return;  // planning by rules looks at the addresses alone
        in.resize(std::max(bench::span_floats(p, p.in), bench::span_floats(p, p.out)));
        out.resize(in.size());
    }
    float* output(const bench::problem& p) { return p.in_place ? in.data() : out.data(); }
};

// Prints the tree, or why there is none. False in the second case.
bool show(const std::string& words, request r, bool in_one_line) {
    const char* reason = r.demand;
    if (!reason && r.record && !layout_is_addressable(*r.record)) reason = "the layout fits an address space";
    if (reason) {
        fft_plan_free(r.record);
        printf("%s : refused; the call demands: %s\n", words.c_str(), reason);
        return false;
    }
    qsl_fftf_plan plan = finish_plan_call(r.record);
    if (!plan) {
        printf("%s : refused; the arguments are valid, but no solver takes the problem, or memory is short\n",
               words.c_str());
        return false;
    }
    if (in_one_line)
        printf("%s : %s\n", words.c_str(), plan_tree_line(*plan).c_str());
    else
        fputs(plan_tree_text(*plan).c_str(), stdout);
    qsl_fftf_destroy_plan(plan);
    return true;
}

bool show_words(const std::string& words, bool in_one_line) {
    if (call_words::are_in(words)) {
        const call_words call(words);
        return show(words, {call.record(), call.refusal()}, in_one_line);
    }
    const bench::problem p = bench::parse_problem(words);
    problem_arrays a(p);
    float *in = a.in.data(), *out = a.output(p);
    return show(words, {record_of(p, in, out), refusal_of(p, in, out)}, in_one_line);
}

}  // namespace

int main(int argc, char** argv) {
    bool in_one_line = false, all_planned = true;
    int problems = 0;
    for (int i = 1; i < argc; ++i) {
        if (!strcmp(argv[i], "--line")) {
            in_one_line = true;
            continue;
        }
        if (!strcmp(argv[i], "--help") || !strcmp(argv[i], "-h")) {
            fputs(usage, stdout);
            return 0;
        }
        if (++problems == 1 && !in_one_line)
            printf("level %s: %s\n", level_at_work().name, level_at_work().description);
        try {
            all_planned &= show_words(argv[i], in_one_line);
        } catch (const std::exception& e) {
            fprintf(stderr, "qfftf-plan: %s: %s\n", argv[i], e.what());
            return 2;
        }
    }
    if (problems == 0) fputs(usage, stderr);
    return problems == 0 ? 2 : all_planned ? 0 : 1;
}
