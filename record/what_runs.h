// SPDX-License-Identifier: Apache-2.0
// What an execute function really does. Their names are part of the design, and several functions share one; solvers
// that can run another's plan without calling it recognise it by this too.
#pragma once
#include <cstdint>

enum what_runs : uint32_t {
    runs_as_named = 0,
    runs_kernel_of_four_lanes,  // of transforms side by side, in a loop
    runs_rows_kernel,           // one call of a kernel for all rows
    runs_rows_singly,           // a loop over the plan of one row
    runs_stages,                // to a contiguous output, which serves as a working array
    runs_stages_in_scratch,     // any strides
    runs_two_stages,            // any strides
    runs_straight_kernel,       // four transforms side by side by one kernel in place of two stages
    runs_two_stages_each,       // a loop over transforms without a plan between the stages
    runs_straight_each,         // the same with kernels in place of the stages
    runs_turned_by_stages,      // rows to columns or back, four in the lanes of stages
    runs_turned_by_kernel,      // the same by one kernel
    runs_groups,                // a loop over one plan of transforms side by side
    runs_groups_by_kernel,      // the same without a plan between the kernels
    runs_groups_by_stages,      // the same without a plan between the two stages
    runs_groups_by_straight,    // the same with a kernel in place of the stages
    runs_blocks_by_stages,      // blocks gathered, four columns in the lanes of stages
    runs_blocks_by_kernel,      // the same by one kernel
    runs_overlapping_groups,    // two groups of four of six or seven transforms
    runs_half_length,           // a complex transform of half the length, between two passes
    runs_row_kernel,            // one call of the kernel of a contiguous real row
};

// In plain words, null where the name of the execute function tells all.
const char* words_of(what_runs runs);
