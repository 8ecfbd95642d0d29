// SPDX-License-Identifier: Apache-2.0
// What execute functions this very program was linked with, read from its own file: so that a test can show that it
// leaves none out, without a list that somebody has to keep.
#pragma once
#include "record/fft_plan.h"

#include <map>
#include <set>
#include <string>

struct execute_parts {
    std::set<std::string> names;                   // every string that a record's execute_name may hold
    std::map<const void*, std::string> functions;  // every execute and execute_split function, with its symbol
};

execute_parts execute_parts_of_this_program();

// What the records of the plan's tree hold.
void collect_execute_parts(const fft_plan& plan, execute_parts& found);

// Of the functions that one template makes for different lengths one is enough.
std::string list_of_missing_functions(const execute_parts& all, const execute_parts& found);
