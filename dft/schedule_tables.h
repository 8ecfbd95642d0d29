// SPDX-License-Identifier: Apache-2.0
// Tuned cuts of single sizes into radices.
#pragma once
#include <cstdint>

constexpr int schedule_row_radices = 6;

struct schedule_row {
    uint64_t size;
    uint64_t stage_count;  // 0: the row gives nothing
    uint64_t radices[schedule_row_radices];
};
static_assert(sizeof(schedule_row) == 8 * 8);

constexpr int schedule_table_main_rows = 196;
constexpr int schedule_table_batch4_rows = 5;
constexpr int schedule_table_sorensen_rows = 15;
extern const schedule_row schedule_table_main[schedule_table_main_rows];
extern const schedule_row schedule_table_batch4[schedule_table_batch4_rows];
extern const schedule_row schedule_table_sorensen[schedule_table_sorensen_rows];
