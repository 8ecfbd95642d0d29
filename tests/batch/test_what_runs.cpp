// SPDX-License-Identifier: Apache-2.0
// Names of execute functions are part of the design, and some are shared by several functions. What a plan says of
// itself beside its name tells them apart.
#include "planner/solver.h"
#include "problems/plan_tree.h"
#include "problems/planned_problem.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>

namespace {

float array_a[2], array_b[2];  // planning by rules looks at the addresses alone

struct plan_deleter {
    void operator()(fft_plan* p) const { fft_plan_free(p); }
};
using plan_pointer = std::unique_ptr<fft_plan, plan_deleter>;

plan_pointer planned(const std::string& text) {
    const problems::problem p = problems::parse_problem(text);
    return plan_pointer(plan_problem_text(p, array_a, p.in_place ? array_a : array_b));
}

struct told_and_true {
    const char* problem;
    const char* told;
    what_runs runs;
};

constexpr told_and_true shared_names[] = {
    {"c2c 16 batch=8", "execute_c2c_many_direct_assemble_neon", runs_rows_kernel},
    {"c2c 16 batch=8 backward inplace", "execute_c2c_many_direct_assemble_neon", runs_rows_kernel},
    {"c2c 16 batch=8 istride=2 idist=32", "execute_c2c_many_direct_assemble_neon", runs_as_named},
    {"r2c 16 batch=8", "execute_r2c_many_direct", runs_rows_kernel},
    {"r2c 16 batch=8 istride=2", "execute_r2c_many_direct", runs_as_named},
    {"c2r 16 batch=7", "execute_c2r_many_direct_tail", runs_rows_kernel},
    {"c2r 64 batch=8", "execute_c2r_many", runs_rows_singly},
    {"r2c 16", "execute_r2c_1d_direct_even", runs_row_kernel},
    {"r2c 16 istride=2", "execute_r2c_1d_direct_even", runs_as_named},
    {"c2r 36", "execute_c2r_1d_sorensen_two_stages_sve", runs_half_length},
    {"r2c 64 batch=8", "execute_r2c_many", runs_rows_singly},
    {"r2c 36 batch=8", "execute_r2c_many", runs_as_named},
    {"c2c 64 batch=4 interleaved", "execute_1d_two_stages_sve", runs_straight_kernel},
    {"c2c 128 batch=4 interleaved", "execute_1d_two_stages_sve", runs_straight_kernel},
    {"c2c 100 batch=4 interleaved", "execute_1d_two_stages_sve", runs_two_stages},
    {"c2c 1024", "execute_1d_two_stages_sve", runs_two_stages},
    {"c2c 100 batch=8", "execute_many", runs_two_stages_each},
    {"c2c 64 batch=8", "execute_many", runs_straight_each},
    {"c2c 128 batch=3", "execute_many", runs_straight_each},
    {"c2c 30000 batch=4", "execute_many", runs_as_named},
    {"c2c 100 batch=8 istride=8 idist=1", "execute_many", runs_turned_by_stages},
    {"c2c 100 batch=8 ostride=8 odist=1", "execute_many", runs_turned_by_stages},
    {"c2c 128 batch=8 ostride=8 odist=1", "execute_many", runs_turned_by_kernel},
    {"c2c 64 batch=8 ostride=8 odist=1", "execute_many", runs_turned_by_kernel},
    {"c2c 16 batch=8 interleaved", "execute_c2c_many_block_col_col_parallel", runs_groups_by_kernel},
    {"c2c 64 batch=8 interleaved", "execute_c2c_many_block_col_col_parallel", runs_groups_by_straight},
    {"c2c 100 batch=8 interleaved", "execute_c2c_many_block_col_col_parallel", runs_groups_by_stages},
    {"c2c 30000 batch=8 interleaved", "execute_c2c_many_block_col_col_parallel", runs_groups},
    {"c2c 64 batch=7 interleaved", "execute_c2c_many_parallel", runs_overlapping_groups},
    {"c2c 64 batch=6 interleaved", "execute_c2c_many_parallel", runs_overlapping_groups},
    {"c2c 96 batch=6 interleaved", "execute_c2c_many_parallel", runs_as_named},
    {"c2c 64 batch=7 interleaved inplace", "execute_c2c_many_parallel", runs_as_named},
    {"c2c 1024 batch=7 interleaved", "execute_c2c_many_parallel", runs_as_named},
    {"c2c 64 batch=11 interleaved", "execute_c2c_many_parallel", runs_as_named},
    {"c2c 128 batch=256 interleaved", "execute_c2c_many_block_col_col_copy", runs_blocks_by_kernel},
    {"c2c 256 batch=256 interleaved", "execute_c2c_many_block_col_col_copy", runs_blocks_by_stages},
};

void visit(const fft_plan& plan, const std::string& problem, auto&& see) {
    see(plan, problem);
    for (int i = 0; i < plan.subplan_count; ++i) visit(*plan.subplans[i], problem, see);
}

constexpr const char* kinds[] = {"c2c", "r2c", "c2r", "r2hc", "hc2r", "dht", "redft00", "redft01", "redft11"};
constexpr const char* sizes[] = {"2",   "5",   "8",   "16",   "17",   "36",   "64",   "81",    "100",
                                 "128", "160", "256", "1000", "1024", "1009", "8x16", "64x64", "100x128"};
constexpr const char* layouts[] = {"",
                                   " batch=3",
                                   " batch=4 inplace",
                                   " batch=8",
                                   " batch=8 inplace",
                                   " batch=2 interleaved",
                                   " batch=4 interleaved",
                                   " batch=7 interleaved",
                                   " batch=8 interleaved",
                                   " batch=256 interleaved",
                                   " inplace",
                                   " threads=2 batch=64"};

std::vector<std::string> many_problems() {
    std::vector<std::string> list;
    for (const std::string kind : kinds)
        for (const char* n : sizes)
            for (const char* layout : layouts) list.push_back(kind + " " + n + layout);
    for (const char* n : sizes)
        for (const char* layout : layouts) list.push_back(std::string("c2c ") + n + " backward" + layout);
    for (const told_and_true& t : shared_names) list.push_back(t.problem);
    return list;
}

}  // namespace

TEST(WhatRuns, IsToldWhereANameIsShared) {
    for (const told_and_true& t : shared_names) {
        const plan_pointer plan = planned(t.problem);
        ASSERT_TRUE(plan) << t.problem;
        EXPECT_STREQ(plan->execute_name, t.told) << plan_tree_text(*plan);
        EXPECT_EQ(plan->runs, t.runs) << plan_tree_text(*plan);
        const char* const words = words_of(plan->runs);
        const std::string line = plan_tree_line(*plan), own = line.substr(0, line.find(" {"));
        EXPECT_EQ(own.find(words ? words : "[") != std::string::npos, words != nullptr) << line;
    }
}

// Only kernels are told by size and direction as well.
TEST(WhatRuns, TellsTheFunctionTogetherWithItsName) {
    std::map<std::string, std::pair<execute_function, std::string>> known;
    const auto see = [&](const fft_plan& plan, const std::string& problem) {
        if (plan.runs == runs_rows_kernel || plan.runs == runs_turned_by_kernel || plan.runs == runs_row_kernel) return;
        const char* const words = words_of(plan.runs);
        const std::string shown = std::string(plan.execute_name) + ": " + (words ? words : "");
        const auto& first = known.try_emplace(shown, plan.execute, problem).first->second;
        EXPECT_EQ(first.first, plan.execute) << shown << " of " << problem << " and of " << first.second;
    };
    int count = 0;
    for (const std::string& problem : many_problems()) {
        const plan_pointer plan = planned(problem);
        if (!plan) continue;
        visit(*plan, problem, see);
        ++count;
    }
    EXPECT_GT(count, 1500);
}

TEST(WhatRuns, HasWordsOfItsOwnForEachAnswer) {
    std::set<std::string> words;
    int answers = 0;
    for (uint32_t i = 0; i <= runs_row_kernel; ++i)
        if (const char* w = words_of(static_cast<what_runs>(i))) ++answers, words.insert(w);
    EXPECT_EQ(words.size(), static_cast<size_t>(answers));
    std::set<std::string> reached;
    for (const told_and_true& t : shared_names)
        if (const char* w = words_of(t.runs)) reached.insert(w);
    EXPECT_EQ(reached, words);
}
