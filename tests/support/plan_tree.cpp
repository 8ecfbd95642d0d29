// SPDX-License-Identifier: Apache-2.0
#include "tests/support/plan_tree.h"

#include "kernels/kernel_types.h"
#include "planner/solver_table.h"

namespace {

int row_of(const fft_plan* plan) {
    for (int row = 0; row < solver_count; ++row)
        if (plan->solver_name == solver_table[row].name) return row;
    return -1;
}

// The rows of complex transforms whose `aux` is a list of stages.
bool has_stage_list(int row) { return (row >= 45 && row <= 47) || row == 49 || row == 50; }

std::string radices_of(const fft_plan* plan) {
    const std::string name = plan->execute_name;
    const bool two_stages = name.find("execute_1d_two_stages_") == 0;
    const uint64_t* words = static_cast<uint64_t*>(plan->aux);
    const uint64_t count = two_stages ? 2 : *words;
    const stage_record* stages = reinterpret_cast<const stage_record*>(two_stages ? words : words + 1);
    std::string text = " [";
    for (uint64_t q = 0; q < count; ++q) text += (q ? " " : "") + std::to_string(stages[q].radix);
    return text + "]";
}

}  // namespace

std::string plan_tree(const fft_plan* plan) {
    const int row = row_of(plan);
    std::string text = std::to_string(row) + " " + plan->execute_name;
    if (has_stage_list(row)) text += radices_of(plan);
    if (plan->buffer || plan->aux)
        text += " " + std::to_string(plan->buffer ? plan->buffer_size : 0) + "+" +
                std::to_string(plan->aux ? plan->aux_size : 0);
    for (int i = 0; i < plan->subplan_count; ++i) text += (i ? "; " : " (") + plan_tree(plan->subplans[i]);
    return plan->subplan_count > 0 ? text + ")" : text;
}
