// SPDX-License-Identifier: Apache-2.0
// The map of the library. A problem is offered to these rows from the top; the first that accepts owns it. The order
// is the planner's only policy: NEON and SVE twins are chosen by it alone, and measured planning times the first five
// acceptors.
#include "planner/solver_table.h"

#include "planner/solvers.h"

// clang-format off
const solver_entry solver_table[solver_count] = {
    // upsampling
    /*  0 */ { solve_problem_upsampling_2d,                 "solve_problem_upsampling_2d" },
    /*  1 */ { solve_problem_c2r_1d_upsampling,             "solve_problem_c2r_1d_upsampling" },

    // degenerate, split and one-point problems
    /*  2 */ { solve_problem_many_reset,                    "solve_problem_many_reset" },
    /*  3 */ { solve_problem_rearrange_inplace,             "solve_problem_rearrange_inplace" },
    /*  4 */ { solve_problem_dft_split,                     "solve_problem_dft_split" },
    /*  5 */ { solve_problem_dft_many_split,                "solve_problem_dft_many_split" },
    /*  6 */ { solve_problem_nop,                           "solve_problem_nop" },
    /*  7 */ { solve_problem_r2c_nop,                       "solve_problem_r2c_nop" },
    /*  8 */ { solve_problem_c2r_nop,                       "solve_problem_c2r_nop" },

    // in-place real planes
    /*  9 */ { solve_problem_c2r_multidimension_many,       "solve_problem_c2r_multidimension_many" },
    /* 10 */ { solve_problem_r2c_multidimension_many,       "solve_problem_r2c_multidimension_many" },

    // batches cut into parts, blocks and threads
    /* 11 */ { solve_problem_dft_many_multithread,          "solve_problem_dft_many_multithread" },
    /* 12 */ { solve_problem_c2c_many_parallel,             "solve_problem_c2c_many_parallel" },
    /* 13 */ { solve_bufferized_problem,                    "solve_bufferized_problem" },
    /* 14 */ { solve_problem_indirect,                      "solve_problem_indirect" },
    /* 15 */ { solve_problem_bufferization2,                "solve_problem_bufferization2" },
    /* 16 */ { solve_problem_c2c_many_block_row_row,        "solve_problem_c2c_many_block_row_row" },
    /* 17 */ { solve_problem_dft_many_transpose,            "solve_problem_dft_many_transpose" },
    /* 18 */ { solve_problem_c2c_many_block_col_col,        "solve_problem_c2c_many_block_col_col" },
    /* 19 */ { solve_problem_r2r_many_block_col_col,        "solve_problem_r2r_many_block_col_col" },
    /* 20 */ { solve_problem_dft_many_post_transpose,       "solve_problem_dft_many_post_transpose" },

    // batches of kernel sizes
    /* 21 */ { solve_problem_c2c_many_direct_parallel_sve,  "solve_problem_c2c_many_direct_parallel_sve" },
    /* 22 */ { solve_problem_c2c_many_direct_parallel_neon, "solve_problem_c2c_many_direct_parallel_neon" },
    /* 23 */ { solve_problem_c2c_many_direct_assemble_neon, "solve_problem_c2c_many_direct_assemble_neon" },

    // one transform, one kernel
    /* 24 */ { solve_problem_c2c_1d_direct_discrete_neon,   "solve_problem_c2c_1d_direct_discrete_neon" },
    /* 25 */ { solve_problem_c2c_1d_direct_neon,            "solve_problem_c2c_1d_direct_neon" },
    /* 26 */ { solve_problem_c2c_1d_direct_sve,             "solve_problem_c2c_1d_direct_sve" },
    /* 27 */ { solve_problem_r2c_1d_direct,                 "solve_problem_r2c_1d_direct" },
    /* 28 */ { solve_problem_r2c_many_direct,               "solve_problem_r2c_many_direct" },
    /* 29 */ { solve_problem_c2r_1d_direct,                 "solve_problem_c2r_1d_direct" },
    /* 30 */ { solve_problem_c2r_1d_sorensen_sve,           "solve_problem_c2r_1d_sorensen_sve" },
    /* 31 */ { solve_problem_c2r_many_direct,               "solve_problem_c2r_many_direct" },
    /* 32 */ { solve_problem_r2hc_many_direct,              "solve_problem_r2hc_many_direct" },
    /* 33 */ { solve_problem_r2hc_direct,                   "solve_problem_r2hc_direct" },
    /* 34 */ { solve_problem_hc2r_direct,                   "solve_problem_hc2r_direct" },
    /* 35 */ { solve_problem_c2r_1d_sorensen_neon,          "solve_problem_c2r_1d_sorensen_neon" },
    /* 36 */ { solve_problem_dht_direct,                    "solve_problem_dht_direct" },
    /* 37 */ { solve_problem_redft00_direct,                "solve_problem_redft00_direct" },

    // batches of real transforms
    /* 38 */ { solve_problem_c2r_many_bufferized,           "solve_problem_c2r_many_bufferized" },
    /* 39 */ { solve_problem_c2r_many,                      "solve_problem_c2r_many" },
    /* 40 */ { solve_problem_r2c_many_bufferized,           "solve_problem_r2c_many_bufferized" },
    /* 41 */ { solve_problem_r2c_many,                      "solve_problem_r2c_many" },
    /* 42 */ { solve_problem_r2hc_many,                     "solve_problem_r2hc_many" },

    // any batch
    /* 43 */ { solve_problem_multidimension_parallel,       "solve_problem_multidimension_parallel" },
    /* 44 */ { solve_problem_dft_many,                      "solve_problem_dft_many" },

    // lengths with a large prime factor
    /* 45 */ { solve_problem_c2c_1d_rader_sve,              "solve_problem_c2c_1d_rader_sve" },
    /* 46 */ { solve_problem_c2c_1d_bluestein_sve,          "solve_problem_c2c_1d_bluestein_sve" },
    /* 47 */ { solve_problem_c2c_1d_rader_neon,             "solve_problem_c2c_1d_rader_neon" },

    // one complex transform
    /* 48 */ { solve_problem_c2c_1d_large,                  "solve_problem_c2c_1d_large" },
    /* 49 */ { solve_problem_c2c_1d_sve,                    "solve_problem_c2c_1d_sve" },
    /* 50 */ { solve_problem_c2c_1d_neon,                   "solve_problem_c2c_1d_neon" },

    // one real transform
    /* 51 */ { solve_problem_r2c_1d,                        "solve_problem_r2c_1d" },
    /* 52 */ { solve_problem_c2r_1d,                        "solve_problem_c2r_1d" },

    // one real-to-real transform
    /* 53 */ { solve_problem_r2hc_1d,                       "solve_problem_r2hc_1d" },
    /* 54 */ { solve_problem_hc2r_1d,                       "solve_problem_hc2r_1d" },
    /* 55 */ { solve_problem_dht_1d,                        "solve_problem_dht_1d" },
    /* 56 */ { solve_problem_redft00_1d,                    "solve_problem_redft00_1d" },
    /* 57 */ { solve_problem_redft01_1d,                    "solve_problem_redft01_1d" },
    /* 58 */ { solve_problem_redft10_1d,                    "solve_problem_redft10_1d" },
    /* 59 */ { solve_problem_redft11_1d,                    "solve_problem_redft11_1d" },
    /* 60 */ { solve_problem_rodft01_1d,                    "solve_problem_rodft01_1d" },
    /* 61 */ { solve_problem_rodft10_1d,                    "solve_problem_rodft10_1d" },
    /* 62 */ { solve_problem_rodft11_1d,                    "solve_problem_rodft11_1d" },
    /* 63 */ { solve_problem_r2r_1d,                        "solve_problem_r2r_1d" },

    // several dimensions
    /* 64 */ { solve_problem_multidimension,                "solve_problem_multidimension" },
    /* 65 */ { solve_problem_c2r_multidimension,            "solve_problem_c2r_multidimension" },

    // data movement
    /* 66 */ { solve_problem_rearrange_outplace,            "solve_problem_rearrange_outplace" },
    /* 67 */ { solve_problem_dft_many_transpose_rotate,     "solve_problem_dft_many_transpose_rotate" },
};
// clang-format on
