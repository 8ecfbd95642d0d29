// SPDX-License-Identifier: Apache-2.0
#include "record/what_runs.h"

const char* words_of(what_runs runs) {
    switch (runs) {
        case runs_rows_kernel:
            return "one kernel for all rows";
        case runs_rows_singly:
            return "row by row";
        case runs_straight_kernel:
            return "one kernel in place of the stages";
        case runs_two_stages_each:
            return "both stages of each in one loop";
        case runs_straight_each:
            return "kernels in place of the stages of each";
        case runs_turned_by_stages:
            return "four at once by stages, rows turned to columns or back";
        case runs_turned_by_kernel:
            return "four at once by one kernel, rows turned to columns or back";
        case runs_groups_by_kernel:
            return "one kernel for each group in one loop";
        case runs_groups_by_stages:
            return "both stages of each group in one loop";
        case runs_groups_by_straight:
            return "one kernel in place of the stages of each group";
        case runs_blocks_by_stages:
            return "blocks are copied, their last stage writes to the output";
        case runs_blocks_by_kernel:
            return "blocks are copied, one kernel for each four writes to the output";
        case runs_overlapping_groups:
            return "in two groups of four that overlap";
        case runs_half_length:
            return "by a complex transform of half the length";
        case runs_row_kernel:
            return "one kernel for a contiguous row";
        case runs_as_named:
        case runs_kernel_of_four_lanes:
        case runs_stages:
        case runs_stages_in_scratch:
        case runs_two_stages:
        case runs_groups:
            break;
    }
    return nullptr;
}
