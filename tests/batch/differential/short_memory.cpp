// SPDX-License-Identifier: Apache-2.0
#include "tests/batch/differential/short_memory.h"

#include <thread>

#include "problems/plan_tree.h"
#include "tests/planner/failing_memory.h"

namespace {

std::string which(const char* call, long failing) {
    return " (" + std::string(call) + ", allocation " + std::to_string(failing) + " fails)";
}

void check_planning(const transform_problem& p, check_result& result) {
    const arrays planned(p);
    bool all_given = false;
    for (long failing = 0; !all_given && result.failure.empty(); ++failing) {
        memory_watch watch(failing);
        qsl_fftf_plan plan = make_plan(p, planned.pointers());
        watch.stop();
        all_given = watch.allocations() <= failing;
        if (plan) result = check_plan(p, plan);
        qsl_fftf_destroy_plan(plan);
        if (result.failure.empty() && memory_watch::blocks_alive() != 0) result.failure = "memory is lost";
        if (result.failure.empty() && all_given && !plan) result.failure = "no plan";
        if (!result.failure.empty()) result.failure += which("planning", failing);
    }
}

void check_execution(const transform_problem& p, qsl_fftf_plan plan, check_result& result) {
    arrays used(p);
    bool all_given = false;
    for (long failing = 0; !all_given && result.failure.empty(); ++failing) {
        used.fill();
        std::thread([&] {
            memory_watch watch(failing);
            execute_on(p, plan, used.pointers());
            watch.stop();
            all_given = watch.allocations() <= failing;
        }).join();
        if (!all_given && used.are_as_before()) continue;
        compare(p, used, result);
        if (!result.failure.empty()) result.failure += which("execution", failing);
    }
}

}  // namespace

check_result check_short_memory(const transform_problem& p) {
    check_result result;
    const arrays planned(p);
    qsl_fftf_plan plan = make_plan(p, planned.pointers());
    if (!plan) {
        result.refused = true;
        return result;
    }
    const std::string tree = plan_tree_text(*plan);
    check_execution(p, plan, result);
    qsl_fftf_destroy_plan(plan);
    qsl_fftf_cleanup_threads();
    if (result.failure.empty()) check_planning(p, result);
    if (result.tree.empty()) result.tree = tree;
    return result;
}
