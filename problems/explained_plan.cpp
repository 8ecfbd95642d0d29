// SPDX-License-Identifier: Apache-2.0
#include "problems/explained_plan.h"

#include "interface/plan_call.h"
#include "problems/call_words.h"
#include "problems/plan_tree.h"
#include "problems/planned_problem.h"
#include "problems/refusal_reason.h"
#include "problems/stand_in_arrays.h"

#include <new>

namespace {

using problem_record = std::unique_ptr<fft_plan, void (*)(fft_plan*)>;

// Plans the record of arguments that have passed; null means that there was no memory for it.
void plan_record(fft_plan* record, explained_plan& result) {
    const problem_record problem(record ? fft_plan_clone(record) : nullptr, fft_plan_free);
    result.reason = problem ? problem_reason(*problem) : "memory is short for any plan";
    if (!result.reason.empty()) return fft_plan_free(record);
    result.plan.reset(finish_plan_call(record));
    if (!result.plan) result.reason = unsolved_reason(*problem);
}

// Measured planning runs on the arrays; planning by rules looks at the addresses alone.
bool find_arrays(const problems::problem& p, explained_plan& result) {
    const size_t floats = std::max(problems::span_floats(p, p.in), problems::span_floats(p, p.out));
    try {
        if (floats > result.in.max_size()) throw std::bad_alloc();
        result.in.resize(floats);
        if (!p.in_place) result.out.resize(floats);
        return true;
    } catch (const std::bad_alloc&) {
        result.reason =
            "measuring runs on the arrays, and memory is short for " + std::to_string(floats) + " floats each";
        return false;
    }
}

explained_plan explain_problem(const problems::problem& p) {
    explained_plan result;
    float* in = stand_in_array(stand_in::in);
    float* out = p.in_place ? in : stand_in_array(stand_in::out);
    result.reason = reason_of(p, in, out);
    if (!result.reason.empty()) return result;
    fft_plan* record = record_of(p, in, out);
    if (p.measured && record && problem_reason(*record).empty()) {
        fft_plan_free(record);
        if (!find_arrays(p, result)) return result;
        in = result.in.data();
        record = record_of(p, in, p.in_place ? in : result.out.data());
    }
    plan_record(record, result);
    return result;
}

explained_plan explain_call(const call_words& call) {
    qsl_fftf_plan_with_nthreads(1);
    explained_plan result;
    result.reason = call.reason();
    if (result.reason.empty()) plan_record(call.record(), result);
    return result;
}

}  // namespace

explained_plan explain(const std::string& words) {
    if (call_words::are_in(words)) return explain_call(call_words(words));
    return explain_problem(problems::parse_problem(words));
}
