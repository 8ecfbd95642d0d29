// SPDX-License-Identifier: Apache-2.0
// The map of the library. A problem is offered to these rows from the top; the first that accepts owns it. The order
// is the planner's only policy: NEON and SVE twins are chosen by it alone, and measured planning times the first five
// acceptors.
#include "planner/solver_table.h"

#include "planner/solvers.h"

// A solver and the file that defines it.
#define SOLVER(solve, file) {solve, #solve}

// clang-format off
const solver_entry solver_table[solver_count] = {
    // upsampling
    /*  0 */ SOLVER(solve_problem_upsampling_2d,                 "real/upsampling.cpp"),
    /*  1 */ SOLVER(solve_problem_c2r_1d_upsampling,             "real/c2r_upsampling.cpp"),

    // degenerate, split and one-point problems
    /*  2 */ SOLVER(solve_problem_many_reset,                    "batch/many_reset.cpp"),
    /*  3 */ SOLVER(solve_problem_rearrange_inplace,             "batch/rearrange.cpp"),
    /*  4 */ SOLVER(solve_problem_dft_split,                     "batch/single_split.cpp"),
    /*  5 */ SOLVER(solve_problem_dft_many_split,                "batch/many_split.cpp"),
    /*  6 */ SOLVER(solve_problem_nop,                           "batch/nop.cpp"),
    /*  7 */ SOLVER(solve_problem_r2c_nop,                       "real/nop.cpp"),
    /*  8 */ SOLVER(solve_problem_c2r_nop,                       "real/nop.cpp"),

    // in-place real planes
    /*  9 */ SOLVER(solve_problem_c2r_multidimension_many,       "real/planes_in_place.cpp"),
    /* 10 */ SOLVER(solve_problem_r2c_multidimension_many,       "real/planes_in_place.cpp"),

    // batches cut into parts, blocks and threads
    /* 11 */ SOLVER(solve_problem_dft_many_multithread,          "batch/multithread.cpp"),
    /* 12 */ SOLVER(solve_problem_c2c_many_parallel,             "batch/many_parallel.cpp"),
    /* 13 */ SOLVER(solve_bufferized_problem,                    "batch/bufferized.cpp"),
    /* 14 */ SOLVER(solve_problem_indirect,                      "batch/indirect.cpp"),
    /* 15 */ SOLVER(solve_problem_bufferization2,                "batch/bufferization2.cpp"),
    /* 16 */ SOLVER(solve_problem_c2c_many_block_row_row,        "batch/many_block_row_row.cpp"),
    /* 17 */ SOLVER(solve_problem_dft_many_transpose,            "batch/many_transpose.cpp"),
    /* 18 */ SOLVER(solve_problem_c2c_many_block_col_col,        "batch/many_block_col_col.cpp"),
    /* 19 */ SOLVER(solve_problem_r2r_many_block_col_col,        "real/r2r_columns.cpp"),
    /* 20 */ SOLVER(solve_problem_dft_many_post_transpose,       "batch/post_transpose.cpp"),

    // batches of kernel sizes
    /* 21 */ SOLVER(solve_problem_c2c_many_direct_parallel_sve,  "batch/many_direct.cpp"),
    /* 22 */ SOLVER(solve_problem_c2c_many_direct_parallel_neon, "batch/many_direct.cpp"),
    /* 23 */ SOLVER(solve_problem_c2c_many_direct_assemble_neon, "batch/many_direct.cpp"),

    // one transform, one kernel
    /* 24 */ SOLVER(solve_problem_c2c_1d_direct_discrete_neon,   "dft/direct.cpp"),
    /* 25 */ SOLVER(solve_problem_c2c_1d_direct_neon,            "dft/direct.cpp"),
    /* 26 */ SOLVER(solve_problem_c2c_1d_direct_sve,             "dft/direct.cpp"),
    /* 27 */ SOLVER(solve_problem_r2c_1d_direct,                 "real/direct.cpp"),
    /* 28 */ SOLVER(solve_problem_r2c_many_direct,               "real/many_direct.cpp"),
    /* 29 */ SOLVER(solve_problem_c2r_1d_direct,                 "real/direct.cpp"),
    /* 30 */ SOLVER(solve_problem_c2r_1d_sorensen_sve,           "real/sorensen.cpp"),
    /* 31 */ SOLVER(solve_problem_c2r_many_direct,               "real/many_direct.cpp"),
    /* 32 */ SOLVER(solve_problem_r2hc_many_direct,              "real/r2r_direct.cpp"),
    /* 33 */ SOLVER(solve_problem_r2hc_direct,                   "real/r2r_direct.cpp"),
    /* 34 */ SOLVER(solve_problem_hc2r_direct,                   "real/r2r_direct.cpp"),
    /* 35 */ SOLVER(solve_problem_c2r_1d_sorensen_neon,          "real/sorensen.cpp"),
    /* 36 */ SOLVER(solve_problem_dht_direct,                    "real/r2r_direct.cpp"),
    /* 37 */ SOLVER(solve_problem_redft00_direct,                "real/r2r_direct.cpp"),

    // batches of real transforms
    /* 38 */ SOLVER(solve_problem_c2r_many_bufferized,           "real/c2r_many.cpp"),
    /* 39 */ SOLVER(solve_problem_c2r_many,                      "real/c2r_many.cpp"),
    /* 40 */ SOLVER(solve_problem_r2c_many_bufferized,           "real/r2c_many.cpp"),
    /* 41 */ SOLVER(solve_problem_r2c_many,                      "real/r2c_many.cpp"),
    /* 42 */ SOLVER(solve_problem_r2hc_many,                     "real/r2hc.cpp"),

    // any batch
    /* 43 */ SOLVER(solve_problem_multidimension_parallel,       "batch/multidimension.cpp"),
    /* 44 */ SOLVER(solve_problem_dft_many,                      "batch/many_loop.cpp"),

    // lengths with a large prime factor
    /* 45 */ SOLVER(solve_problem_c2c_1d_rader_sve,              "dft/rader.cpp"),
    /* 46 */ SOLVER(solve_problem_c2c_1d_bluestein_sve,          "dft/bluestein.cpp"),
    /* 47 */ SOLVER(solve_problem_c2c_1d_rader_neon,             "dft/rader.cpp"),

    // one complex transform
    /* 48 */ SOLVER(solve_problem_c2c_1d_large,                  "dft/large.cpp"),
    /* 49 */ SOLVER(solve_problem_c2c_1d_sve,                    "dft/multi_stage.cpp"),
    /* 50 */ SOLVER(solve_problem_c2c_1d_neon,                   "dft/multi_stage.cpp"),

    // one real transform
    /* 51 */ SOLVER(solve_problem_r2c_1d,                        "real/r2c.cpp"),
    /* 52 */ SOLVER(solve_problem_c2r_1d,                        "real/c2r.cpp"),

    // one real-to-real transform
    /* 53 */ SOLVER(solve_problem_r2hc_1d,                       "real/r2hc.cpp"),
    /* 54 */ SOLVER(solve_problem_hc2r_1d,                       "real/hc2r.cpp"),
    /* 55 */ SOLVER(solve_problem_dht_1d,                        "real/dht.cpp"),
    /* 56 */ SOLVER(solve_problem_redft00_1d,                    "real/type1.cpp"),
    /* 57 */ SOLVER(solve_problem_redft01_1d,                    "real/type3.cpp"),
    /* 58 */ SOLVER(solve_problem_redft10_1d,                    "real/type2.cpp"),
    /* 59 */ SOLVER(solve_problem_redft11_1d,                    "real/type4.cpp"),
    /* 60 */ SOLVER(solve_problem_rodft01_1d,                    "real/type3.cpp"),
    /* 61 */ SOLVER(solve_problem_rodft10_1d,                    "real/type2.cpp"),
    /* 62 */ SOLVER(solve_problem_rodft11_1d,                    "real/type4.cpp"),
    /* 63 */ SOLVER(solve_problem_r2r_1d,                        "real/type1.cpp"),

    // several dimensions
    /* 64 */ SOLVER(solve_problem_multidimension,                "batch/multidimension.cpp"),
    /* 65 */ SOLVER(solve_problem_c2r_multidimension,            "batch/c2r_multidimension.cpp"),

    // data movement
    /* 66 */ SOLVER(solve_problem_rearrange_outplace,            "batch/rearrange.cpp"),
    /* 67 */ SOLVER(solve_problem_dft_many_transpose_rotate,     "batch/many_transpose.cpp"),
};
// clang-format on
