// SPDX-License-Identifier: Apache-2.0
// The order of the rows is the planner's policy: it changes only together with this list.
#include "planner/solver_table.h"

#include "planner/solvers.h"

#include <gtest/gtest.h>

namespace {

// The row of every name, as the manual numbers them.
constexpr const char* names[] = {"solve_problem_upsampling_2d",
                                 "solve_problem_c2r_1d_upsampling",
                                 "solve_problem_many_reset",
                                 "solve_problem_rearrange_inplace",
                                 "solve_problem_dft_split",
                                 "solve_problem_dft_many_split",
                                 "solve_problem_nop",
                                 "solve_problem_r2c_nop",
                                 "solve_problem_c2r_nop",
                                 "solve_problem_c2r_multidimension_many",
                                 "solve_problem_r2c_multidimension_many",
                                 "solve_problem_dft_many_multithread",
                                 "solve_problem_c2c_many_parallel",
                                 "solve_bufferized_problem",
                                 "solve_problem_indirect",
                                 "solve_problem_bufferization2",
                                 "solve_problem_c2c_many_block_row_row",
                                 "solve_problem_dft_many_transpose",
                                 "solve_problem_c2c_many_block_col_col",
                                 "solve_problem_r2r_many_block_col_col",
                                 "solve_problem_dft_many_post_transpose",
                                 "solve_problem_c2c_many_direct_parallel_sve",
                                 "solve_problem_c2c_many_direct_parallel_neon",
                                 "solve_problem_c2c_many_direct_assemble_neon",
                                 "solve_problem_c2c_1d_direct_discrete_neon",
                                 "solve_problem_c2c_1d_direct_neon",
                                 "solve_problem_c2c_1d_direct_sve",
                                 "solve_problem_r2c_1d_direct",
                                 "solve_problem_r2c_many_direct",
                                 "solve_problem_c2r_1d_direct",
                                 "solve_problem_c2r_1d_sorensen_sve",
                                 "solve_problem_c2r_many_direct",
                                 "solve_problem_r2hc_many_direct",
                                 "solve_problem_r2hc_direct",
                                 "solve_problem_hc2r_direct",
                                 "solve_problem_c2r_1d_sorensen_neon",
                                 "solve_problem_dht_direct",
                                 "solve_problem_redft00_direct",
                                 "solve_problem_c2r_many_bufferized",
                                 "solve_problem_c2r_many",
                                 "solve_problem_r2c_many_bufferized",
                                 "solve_problem_r2c_many",
                                 "solve_problem_r2hc_many",
                                 "solve_problem_multidimension_parallel",
                                 "solve_problem_dft_many",
                                 "solve_problem_c2c_1d_rader_sve",
                                 "solve_problem_c2c_1d_bluestein_sve",
                                 "solve_problem_c2c_1d_rader_neon",
                                 "solve_problem_c2c_1d_large",
                                 "solve_problem_c2c_1d_sve",
                                 "solve_problem_c2c_1d_neon",
                                 "solve_problem_r2c_1d",
                                 "solve_problem_c2r_1d",
                                 "solve_problem_r2hc_1d",
                                 "solve_problem_hc2r_1d",
                                 "solve_problem_dht_1d",
                                 "solve_problem_redft00_1d",
                                 "solve_problem_redft01_1d",
                                 "solve_problem_redft10_1d",
                                 "solve_problem_redft11_1d",
                                 "solve_problem_rodft01_1d",
                                 "solve_problem_rodft10_1d",
                                 "solve_problem_rodft11_1d",
                                 "solve_problem_r2r_1d",
                                 "solve_problem_multidimension",
                                 "solve_problem_c2r_multidimension",
                                 "solve_problem_rearrange_outplace",
                                 "solve_problem_dft_many_transpose_rotate"};

}  // namespace

TEST(SolverTable, NamesStandInTheirOrder) {
    static_assert(sizeof names / sizeof *names == 68 && solver_count == 68);
    for (int row = 0; row < solver_count; ++row) EXPECT_STREQ(solver_table[row].name, names[row]) << "row " << row;
}

TEST(SolverTable, EachNameIsThatOfItsFunction) {
    // a few of them; the table is written so that a wrong pair catches the eye
    EXPECT_EQ(solver_table[0].solve, solve_problem_upsampling_2d);
    EXPECT_EQ(solver_table[13].solve, solve_bufferized_problem);
    EXPECT_EQ(solver_table[25].solve, solve_problem_c2c_1d_direct_neon);
    EXPECT_EQ(solver_table[26].solve, solve_problem_c2c_1d_direct_sve);
    EXPECT_EQ(solver_table[49].solve, solve_problem_c2c_1d_sve);
    EXPECT_EQ(solver_table[67].solve, solve_problem_dft_many_transpose_rotate);
    for (int i = 0; i < solver_count; ++i)
        for (int j = 0; j < i; ++j) EXPECT_NE(solver_table[i].solve, solver_table[j].solve) << i << " " << j;
}
