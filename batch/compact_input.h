// SPDX-License-Identifier: Apache-2.0
// The last resort: what no row of the table takes in place.
#pragma once
struct fft_plan;

// In place between two layouts, or with the batch of a real transform interleaved, a transform may write where another
// has not read yet, and where no solver knows better the table refuses. This plan copies the whole input into compact
// storage and transforms it from there, out of place, to where it belongs. Not a row of the table, since there the
// solvers above a subplan count on refusals. Returns `accepted` or `refused`, the latter for all that isn't in place.
int solve_problem_compact_input(fft_plan* plan);
