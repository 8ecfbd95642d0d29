// SPDX-License-Identifier: Apache-2.0
#include "problems/plan_tree.h"

#include "kernels/kernel_types.h"
#include "kernels/real_kernels.h"

#include <string_view>

namespace {

std::string without_prefix(const char* name, std::string_view prefix) {
    if (!name) return "?";
    std::string_view text = name;
    if (text.starts_with(prefix)) text.remove_prefix(prefix.size());
    return std::string(text);
}

template <class Record>
std::vector<uint64_t> radices(const void* records, uint64_t count) {
    std::vector<uint64_t> list(count);
    for (uint64_t q = 0; q < count; ++q) list[q] = static_cast<const Record*>(records)[q].radix;
    return list;
}

// The radices of a plan that is a chain of stages. A list of two stages of the multi-stage solvers starts with its
// first record, any other with their number.
std::vector<uint64_t> radices(const fft_plan& plan, std::string_view execute) {
    if (execute.starts_with("1d_two_stages_")) return radices<stage_record>(plan.aux, 2);
    const auto* words = static_cast<const uint64_t*>(plan.aux);
    if (execute.starts_with("c2r_1d_sorensen_")) return radices<sorensen_stage_record>(words + 1, words[0]);
    for (std::string_view chain : {"1d_sve", "1d_neon", "1d_discrete_", "1d_rader_", "1d_bluestein_"})
        if (execute.starts_with(chain)) return radices<stage_record>(words + 1, words[0]);
    return {};
}

std::string solver_text(const fft_plan& plan) {
    const std::string execute = without_prefix(plan.execute_name, "execute_");
    std::string text = without_prefix(plan.solver_name, "solve_problem_") + " > " + execute;
    for (uint64_t radix : radices(plan, execute)) text += " " + std::to_string(radix);
    if (const char* words = words_of(plan.runs)) text += std::string(" [") + words + "]";
    return text;
}

std::string r2r_text(const fft_plan& plan) {
    static constexpr const char* names[] = {"r2hc",    "hc2r",    "dht",     "redft00", "redft01", "redft10",
                                            "redft11", "rodft00", "rodft01", "rodft10", "rodft11"};
    std::string text = "r2r";
    for (int k = 0; k < plan.rank; ++k) {
        const uint32_t kind = plan.r2r_kind[k];
        text += (k ? "/" : " ") + (kind < 11 ? std::string(names[kind]) : std::to_string(kind));
    }
    return text;
}

std::string kind_text(const fft_plan& plan) {
    const std::string direction = plan.sign == sign_forward ? "-" : "+";
    switch (plan.kind) {
        case kind_c2c:
            return "c2c" + direction;
        case kind_c2r:
            return "c2r";
        case kind_r2c:
            return "r2c";
        case kind_r2r:
            return r2r_text(plan);
        case kind_c2c_large_piece:
            return "piece" + direction;
        case kind_upsampling_2d:
            return "upsampling";
        case kind_c2r_upsampling:
            return "c2r_upsampling";
        default:
            return "kind" + std::to_string(plan.kind);
    }
}

std::string triple_text(const fft_dim& d) {
    return std::to_string(d.n) + ":" + std::to_string(d.is) + ":" + std::to_string(d.os);
}

// Length of a row of n points on a side, as a contiguous layout has it.
int64_t contiguous_row(int64_t n, bool complex_half) { return complex_half ? n / 2 + 1 : n; }

// True when the strides are those of arrays without gaps; in-place real transforms are shown with their strides.
bool is_contiguous(const fft_plan& plan) {
    int64_t is = 1, os = 1;
    for (int k = plan.rank - 1; k >= 0; --k) {
        const fft_dim& d = plan.dims[k];
        if (d.is != is || d.os != os) return false;
        const bool last = k == plan.rank - 1;
        is *= contiguous_row(d.n, last && plan.kind == kind_c2r);
        os *= contiguous_row(d.n, last && plan.kind == kind_r2c);
    }
    return true;
}

std::string dims_text(const fft_plan& plan) {
    std::string text;
    const bool contiguous = is_contiguous(plan);
    for (int k = 0; k < plan.rank; ++k) {
        text += k ? "x" : "";
        text += contiguous ? std::to_string(plan.dims[k].n) : triple_text(plan.dims[k]);
    }
    return text.empty() ? "point" : text;
}

std::string bytes_text(const fft_plan& plan) {
    std::string text;
    if (plan.buffer) text += "  buffer " + std::to_string(plan.buffer_size);
    if (plan.aux) text += plan.aux_owned ? "  aux " + std::to_string(plan.aux_size) : "  aux borrowed";
    return text;
}

std::string indented_tree(const fft_plan& plan, size_t depth, int count) {
    const std::string number = count > 1 ? std::to_string(count) + " x " : "";
    std::string text = std::string(2 * depth, ' ') + number + problem_text(plan) + "\n";
    text += std::string(2 * depth + 4, ' ') + solver_text(plan) + bytes_text(plan) + "\n";
    for (const equal_subplans& group : folded_subplans(plan))
        text += indented_tree(*group.first, depth + 1, group.count);
    return text;
}

}  // namespace

std::string problem_text(const fft_plan& plan) {
    std::string text = kind_text(plan);
    if (plan.split == split_arrays) text += " split";
    if (plan.kind == kind_upsampling_2d) {
        for (int k = 0; k < 2; ++k)
            text += (k ? "x" : " ") + std::to_string(plan.dims[k].n) + "->" + std::to_string(plan.howmany[k].n);
        return text;
    }
    text += " " + dims_text(plan);
    for (int k = 0; k < plan.howmany_rank; ++k) text += " *" + triple_text(plan.howmany[k]);
    if (plan.in == plan.out) text += " =";
    return text;
}

std::string plan_tree_line(const fft_plan& plan) {
    std::string text = solver_text(plan);
    if (plan.subplan_count == 0) return text;
    text += " {";
    for (int i = 0; i < plan.subplan_count; ++i) {
        const fft_plan& child = *plan.subplans[i];
        text += (i ? "; " : "") + problem_text(child) + ": " + plan_tree_line(child);
    }
    return text + "}";
}

std::string plan_tree_text(const fft_plan& plan) { return indented_tree(plan, 0, 1); }

std::vector<uint64_t> plan_radices(const fft_plan& plan) {
    return radices(plan, without_prefix(plan.execute_name, "execute_"));
}

std::vector<equal_subplans> folded_subplans(const fft_plan& plan) {
    std::vector<equal_subplans> groups;
    for (int i = 0; i < plan.subplan_count; ++i) {
        const fft_plan* subplan = plan.subplans[i];
        if (!groups.empty() && plan_tree_text(*groups.back().first) == plan_tree_text(*subplan))
            ++groups.back().count;
        else
            groups.push_back({subplan, 1});
    }
    return groups;
}
