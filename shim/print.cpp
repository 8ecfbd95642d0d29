// SPDX-License-Identifier: Apache-2.0
// A plan as text: nested parentheses of method, sizes and subplans. The words are this library's.
#include "shim/plan.h"
#include "shim/staged.h"
#include "shim/text.h"

#include <cstdio>
#include <cstring>

namespace {

const char* without_prefix(const char* name, const char* prefix) {
    if (!name) return "none";
    const size_t length = strlen(prefix);
    return strncmp(name, prefix, length) == 0 ? name + length : name;
}

void print_tree(text& t, const fft_plan& plan, int depth) {
    t.print("(%s", without_prefix(plan.solver_name, "solve_problem_"));
    for (int d = 0; d < plan.rank; ++d) t.print("%s%lld", d ? "x" : "-", static_cast<long long>(plan.dims[d].n));
    for (int b = 0; b < plan.howmany_rank; ++b) t.print("-x%lld", static_cast<long long>(plan.howmany[b].n));
    t.print(" \"%s\"", without_prefix(plan.execute_name, "execute_"));
    for (int i = 0; i < plan.subplan_count; ++i) {
        t.print("\n%*s", 2 * (depth + 1), "");
        print_tree(t, *plan.subplans[i], depth + 1);
    }
    t.append(")", 1);
}

void print_plan(text& t, const fftwf_plan_s& plan) {
    if (plan.direct) return print_tree(t, *plan.direct, 0);
    if (!plan.staged) return t.print("(nothing)");
    t.print("(gather-scatter");
    for (int k = 0; const fft_plan* pass = staged_pass(plan.staged, k); ++k) {
        t.print("\n  ");
        print_tree(t, *pass, 1);
    }
    t.append(")", 1);
}

}  // namespace

char* fftwf_sprint_plan(const fftwf_plan plan) {
    text t;
    if (plan) print_plan(t, *plan);
    return t.release();
}

void fftwf_fprint_plan(const fftwf_plan plan, FILE* file) {
    text t;
    if (plan) print_plan(t, *plan);
    if (t.data()) fwrite(t.data(), 1, t.size(), file);
}

void fftwf_print_plan(const fftwf_plan plan) { fftwf_fprint_plan(plan, stdout); }
