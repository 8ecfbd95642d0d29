// SPDX-License-Identifier: Apache-2.0
// The solve functions, in the order of solver_table. Each is defined in the folder of its subject.
#pragma once
struct fft_plan;

int solve_problem_upsampling_2d(fft_plan* plan);
int solve_problem_c2r_1d_upsampling(fft_plan* plan);
int solve_problem_many_reset(fft_plan* plan);
int solve_problem_rearrange_inplace(fft_plan* plan);
int solve_problem_dft_split(fft_plan* plan);
int solve_problem_dft_many_split(fft_plan* plan);
int solve_problem_nop(fft_plan* plan);
int solve_problem_r2c_nop(fft_plan* plan);
int solve_problem_c2r_nop(fft_plan* plan);
int solve_problem_c2r_multidimension_many(fft_plan* plan);
int solve_problem_r2c_multidimension_many(fft_plan* plan);
int solve_problem_dft_many_multithread(fft_plan* plan);
int solve_problem_c2c_many_parallel(fft_plan* plan);
int solve_bufferized_problem(fft_plan* plan);
int solve_problem_indirect(fft_plan* plan);
int solve_problem_bufferization2(fft_plan* plan);
int solve_problem_c2c_many_block_row_row(fft_plan* plan);
int solve_problem_dft_many_transpose(fft_plan* plan);
int solve_problem_c2c_many_block_col_col(fft_plan* plan);
int solve_problem_r2r_many_block_col_col(fft_plan* plan);
int solve_problem_dft_many_post_transpose(fft_plan* plan);
int solve_problem_c2c_many_direct_parallel_sve(fft_plan* plan);
int solve_problem_c2c_many_direct_parallel_neon(fft_plan* plan);
int solve_problem_c2c_many_direct_assemble_neon(fft_plan* plan);
int solve_problem_c2c_1d_direct_discrete_neon(fft_plan* plan);
int solve_problem_c2c_1d_direct_neon(fft_plan* plan);
int solve_problem_c2c_1d_direct_sve(fft_plan* plan);
int solve_problem_r2c_1d_direct(fft_plan* plan);
int solve_problem_r2c_many_direct(fft_plan* plan);
int solve_problem_c2r_1d_direct(fft_plan* plan);
int solve_problem_c2r_1d_sorensen_sve(fft_plan* plan);
int solve_problem_c2r_many_direct(fft_plan* plan);
int solve_problem_r2hc_many_direct(fft_plan* plan);
int solve_problem_r2hc_direct(fft_plan* plan);
int solve_problem_hc2r_direct(fft_plan* plan);
int solve_problem_c2r_1d_sorensen_neon(fft_plan* plan);
int solve_problem_dht_direct(fft_plan* plan);
int solve_problem_redft00_direct(fft_plan* plan);
int solve_problem_c2r_many_bufferized(fft_plan* plan);
int solve_problem_c2r_many(fft_plan* plan);
int solve_problem_r2c_many_bufferized(fft_plan* plan);
int solve_problem_r2c_many(fft_plan* plan);
int solve_problem_r2hc_many(fft_plan* plan);
int solve_problem_multidimension_parallel(fft_plan* plan);
int solve_problem_dft_many(fft_plan* plan);
int solve_problem_c2c_1d_rader_sve(fft_plan* plan);
int solve_problem_c2c_1d_bluestein_sve(fft_plan* plan);
int solve_problem_c2c_1d_rader_neon(fft_plan* plan);
int solve_problem_c2c_1d_large(fft_plan* plan);
int solve_problem_c2c_1d_sve(fft_plan* plan);
int solve_problem_c2c_1d_neon(fft_plan* plan);
int solve_problem_r2c_1d(fft_plan* plan);
int solve_problem_c2r_1d(fft_plan* plan);
int solve_problem_r2hc_1d(fft_plan* plan);
int solve_problem_hc2r_1d(fft_plan* plan);
int solve_problem_dht_1d(fft_plan* plan);
int solve_problem_redft00_1d(fft_plan* plan);
int solve_problem_redft01_1d(fft_plan* plan);
int solve_problem_redft10_1d(fft_plan* plan);
int solve_problem_redft11_1d(fft_plan* plan);
int solve_problem_rodft01_1d(fft_plan* plan);
int solve_problem_rodft10_1d(fft_plan* plan);
int solve_problem_rodft11_1d(fft_plan* plan);
int solve_problem_r2r_1d(fft_plan* plan);
int solve_problem_multidimension(fft_plan* plan);
int solve_problem_c2r_multidimension(fft_plan* plan);
int solve_problem_rearrange_outplace(fft_plan* plan);
int solve_problem_dft_many_transpose_rotate(fft_plan* plan);

// The last resort, behind the table: what no row takes in place. In place between two layouts, or with the batch of a
// real transform interleaved, a transform may write where another has not read yet, and where no solver knows better
// the table refuses. This plan copies the whole input into compact storage and transforms it from there, out of place,
// to where it belongs. Not a row, since there the solvers above a subplan count on refusals. It refuses all that isn't
// in place.
int solve_problem_compact_input(fft_plan* plan);
