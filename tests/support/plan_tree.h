// SPDX-License-Identifier: Apache-2.0
// A plan as a line of text, so that a route through solver_table can be compared and read.
#pragma once
#include "record/fft_plan.h"

#include <string>

// "row execute_name [radices] buffer+aux (subplan; subplan)", row being the number of the winning row of solver_table.
// Radices are given where `aux` is a stage list, the bytes of buffer and aux where there are any.
std::string plan_tree(const fft_plan* plan);
