// SPDX-License-Identifier: Apache-2.0
// How plans read as text: problems of every kind, trees, stages and storage, on records made by hand.
#include "kernels/kernel_types.h"
#include "planner/solver.h"
#include "problems/plan_tree.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

float array_a[2], array_b[2];

fft_plan problem(uint32_t kind, std::initializer_list<fft_dim> dims) {
    fft_plan p = {};
    p.kind = kind;
    p.sign = -1;
    p.split = -1;
    p.in = array_a;
    p.out = array_b;
    for (const fft_dim& d : dims) p.dims[p.rank++] = d;
    return p;
}

void run(fft_plan*, float*, float*) {}

void solve_by(fft_plan& p, const char* solver, const char* execute) {
    p.solver_name = solver;
    install(&p, run, execute);
}

// A list of stages with these radices in `aux`, with or without the word that counts them.
void attach_stages(fft_plan& p, std::initializer_list<uint64_t> radices, bool counted) {
    ASSERT_TRUE(attach_aux(&p, 8 + radices.size() * sizeof(stage_record)));
    auto* words = static_cast<uint64_t*>(p.aux);
    if (counted) *words++ = radices.size();
    auto* stage = reinterpret_cast<stage_record*>(words);
    for (uint64_t radix : radices) (stage++)->radix = radix;
}

}  // namespace

TEST(ProblemText, ShowsEveryKind) {
    EXPECT_EQ(problem_text(problem(kind_c2c, {{1024, 1, 1}})), "c2c- 1024");
    EXPECT_EQ(problem_text(problem(kind_c2c, {{4, 6, 6}, {6, 1, 1}})), "c2c- 4x6");
    EXPECT_EQ(problem_text(problem(kind_c2c, {{4, 12, 6}, {6, 2, 1}})), "c2c- 4:12:6x6:2:1");
    EXPECT_EQ(problem_text(problem(kind_r2c, {{5, 8, 5}, {8, 1, 1}})), "r2c 5x8");
    EXPECT_EQ(problem_text(problem(kind_r2c, {{5, 10, 5}, {8, 1, 1}})), "r2c 5:10:5x8:1:1");
    EXPECT_EQ(problem_text(problem(kind_c2r, {{5, 4, 7}, {7, 1, 1}})), "c2r 5x7");
    EXPECT_EQ(problem_text(problem(kind_c2c_large_piece, {{8, 1, 1}})), "piece- 8");
    EXPECT_EQ(problem_text(problem(kind_c2r_upsampling, {{8, 1, 1}})), "c2r_upsampling 8");
    EXPECT_EQ(problem_text(problem(kind_c2c, {})), "c2c- point");
    fft_plan p = problem(kind_r2r, {{3, 4, 4}, {4, 1, 1}});
    p.r2r_kind[0] = r2r_dht;
    p.r2r_kind[1] = 99;
    EXPECT_EQ(problem_text(p), "r2r dht/99 3x4");
}

TEST(ProblemText, ShowsDirectionFormBatchAndPlace) {
    fft_plan p = problem(kind_c2c, {{8, 1, 1}});
    p.sign = 7;
    p.split = 1;
    p.howmany_rank = 2;
    p.howmany[0] = {5, 10, 20};
    p.howmany[1] = {6, 100, 200};
    p.out = p.in;
    EXPECT_EQ(problem_text(p), "c2c+ split 8 *5:10:20 *6:100:200 =");
    fft_plan u = problem(kind_upsampling_2d, {{3, 0, 0}, {4, 0, 0}});
    u.howmany_rank = 2;
    u.howmany[0].n = 6;
    u.howmany[1].n = 9;
    EXPECT_EQ(problem_text(u), "upsampling 3->6x4->9");
}

TEST(TreeLine, ShowsTheStagesOfChains) {
    const struct {
        const char* execute;
        bool counted;
        const char* text;
    } forms[] = {{"execute_1d_two_stages_sve", false, "s > 1d_two_stages_sve 32 16"},
                 {"execute_1d_two_stages_neon", false, "s > 1d_two_stages_neon 32 16"},
                 {"execute_1d_sve", true, "s > 1d_sve 32 16"},
                 {"execute_1d_neon", true, "s > 1d_neon 32 16"},
                 {"execute_1d_discrete_sve", true, "s > 1d_discrete_sve 32 16"},
                 {"execute_1d_rader_discrete_neon", true, "s > 1d_rader_discrete_neon 32 16"},
                 {"execute_1d_bluestein_sve", true, "s > 1d_bluestein_sve 32 16"}};
    for (const auto& form : forms) {
        fft_plan p = problem(kind_c2c, {{512, 1, 1}});
        attach_stages(p, {32, 16}, form.counted);
        solve_by(p, "solve_problem_s", form.execute);
        EXPECT_EQ(plan_tree_line(p), form.text);
        fft_plan_clear(&p);
    }
}

TEST(TreeLine, WordsFollowANameThatDoesNotTellWhatRuns) {
    fft_plan p = problem(kind_c2c, {{64, 1, 1}});
    p.solver_name = "solve_problem_dft_many";
    install(&p, run, "execute_many", runs_two_stages_each);
    EXPECT_EQ(plan_tree_line(p), "dft_many > many [both stages of each in one loop]");
    EXPECT_EQ(plan_tree_text(p), "c2c- 64\n    dft_many > many [both stages of each in one loop]\n");
    install(&p, run, "execute_many");
    EXPECT_EQ(plan_tree_line(p), "dft_many > many") << "the next solver's answer replaces it";
}

TEST(TreeLine, NestsSubproblems) {
    fft_plan p = problem(kind_r2c, {{16, 1, 1}});
    solve_by(p, "solve_problem_r2c_1d", "execute_1d_r2c");
    ASSERT_TRUE(make_subplans(&p, 2));
    for (int i = 0; i < 2; ++i) {
        p.subplans[i]->kind = kind_c2c;
        p.subplans[i]->dims[0].n = 8 - i;
        solve_by(*p.subplans[i], "solve_bufferized_problem", "execute_bufferization");
    }
    EXPECT_EQ(plan_tree_line(p),
              "r2c_1d > 1d_r2c {c2c- 8: solve_bufferized_problem > bufferization; "
              "c2c- 7: solve_bufferized_problem > bufferization}");
    EXPECT_TRUE(attach_buffer(&p, 128));
    EXPECT_TRUE(attach_aux(p.subplans[0], 64));
    p.subplans[1]->aux = p.aux = p.subplans[0]->aux;
    EXPECT_EQ(plan_tree_text(p),
              "r2c 16\n"
              "    r2c_1d > 1d_r2c  buffer 128  aux borrowed\n"
              "  c2c- 8\n"
              "      solve_bufferized_problem > bufferization  aux 64\n"
              "  c2c- 7\n"
              "      solve_bufferized_problem > bufferization  aux borrowed\n");
    fft_plan_clear(&p);
}

TEST(TreeText, EqualSubproblemsThatFollowEachOtherAreShownOnce) {
    fft_plan p = problem(kind_c2c, {{8, 1, 1}});
    solve_by(p, "solve_problem_dft_many_multithread", "execute_multithread");
    ASSERT_TRUE(make_subplans(&p, 5));
    for (int i = 0; i < 5; ++i) {
        solve_by(*p.subplans[i], "solve_problem_dft_many", "execute_many");
        if (i == 3) p.subplans[i]->dims[0].n = 7;
    }
    EXPECT_EQ(plan_tree_text(p),
              "c2c- 8\n"
              "    dft_many_multithread > multithread\n"
              "  3 x c2c- 8\n"
              "      dft_many > many\n"
              "  c2c- 7\n"
              "      dft_many > many\n"
              "  c2c- 8\n"
              "      dft_many > many\n");
    EXPECT_TRUE(attach_buffer(p.subplans[1], 64));
    const std::vector<equal_subplans> groups = folded_subplans(p);
    ASSERT_EQ(groups.size(), 5u) << "storage tells subplans apart";
    fft_plan_clear(&p);
}

TEST(TreeLine, ShowsARecordWithoutASolver) { EXPECT_EQ(plan_tree_line(problem(kind_c2c, {{8, 1, 1}})), "? > ?"); }
