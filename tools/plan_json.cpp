// SPDX-License-Identifier: Apache-2.0
#include "tools/plan_json.h"

#include "problems/plan_tree.h"
#include "tools/plan_size.h"

#include <cstdio>

namespace {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        char escape[8];
        if (c == '"' || c == '\\') {
            result += std::string("\\") + c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            snprintf(escape, sizeof(escape), "\\u%04x", static_cast<unsigned>(c));
            result += escape;
        } else {
            result += c;
        }
    }
    return result + "\"";
}

std::string member(const char* name, const std::string& value) { return quoted(name) + ": " + value; }

std::string tree_json(const fft_plan& plan, int count) {
    const uint64_t buffer = plan.buffer ? plan.buffer_size : 0, aux = plan.aux_owned ? plan.aux_size : 0;
    std::string text = "{" + member("problem", quoted(problem_text(plan)));
    if (count > 1) text += ", " + member("count", std::to_string(count));
    text += ", " + member("solver", quoted(plan.solver_name)) + ", " + member("execute", quoted(plan.execute_name));
    if (const char* words = words_of(plan.runs)) text += ", " + member("runs", quoted(words));
    text += ", \"radices\": [";
    const std::vector<uint64_t> radices = plan_radices(plan);
    for (size_t q = 0; q < radices.size(); ++q) text += (q ? ", " : "") + std::to_string(radices[q]);
    text += "], " + member("buffer_bytes", std::to_string(buffer)) + ", " + member("aux_bytes", std::to_string(aux));
    text += ", \"subplans\": [";
    for (const equal_subplans& group : folded_subplans(plan))
        text += (text.back() == '[' ? "" : ", ") + tree_json(*group.first, group.count);
    return text + "]}";
}

}  // namespace

std::string plan_json(const std::string& words, const explained_plan& p) {
    const std::string head = "{" + member("words", quoted(words)) + ", ";
    if (!p.plan) return head + "\"planned\": false, " + member("reason", quoted(p.reason)) + "}";
    char operations[40];
    snprintf(operations, sizeof(operations), "%.0f", plan_operations(*p.plan));
    return head + "\"planned\": true, " + member("owned_bytes", std::to_string(plan_bytes(*p.plan))) + ", " +
           member("execution_bytes", std::to_string(execution_bytes(*p.plan))) + ", " +
           member("operations", operations) + ", " + member("plan", tree_json(*p.plan, 1)) + "}";
}
