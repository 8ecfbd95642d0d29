// SPDX-License-Identifier: Apache-2.0
// What can be told of a kernel body without computing it: the promises of its loads, stores and constants.
#pragma once
#include <string>
#include <vector>

#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/bodies/rows.h"
#include "kernels/generator/emit/kernel.h"
#include "kernels/generator/passes/counts.h"

bool has(const generator::body& b, generator::op what);
// Whether the lanes are two rows that vectors are loaded along, and whether these are multiplied by the rows' own
// twiddles before they are transposed.
bool is_transposed(const generator::body& b);
bool has_rows_twiddles(const generator::body& b);
// The slots of all operations of a kind, in the printed order.
std::vector<int> slots_of(const generator::body& b, generator::op what);

// The sizes of a family, and others that it could have: of real data all up to 40 that have a method.
const std::vector<int>& sizes_to_try(const generator::form& f);

// The bodies of a kernel that differ: those that a loop and its tail share count once. They are made once.
const generator::bodies& different_bodies(const generator::form& f, int size, int sign);

// Each returns complaints, none if all is well.
using complaints = std::vector<std::string>;
complaints order_complaints(const generator::body& b);
complaints load_complaints(const generator::body& b, int size);  // of complex bodies
complaints store_complaints(const generator::body& b, int size);
complaints row_complaints(const generator::body& b, int size);  // of bodies that take whole rows: loads and stores
complaints in_place_complaints(const generator::body& b);
// Whether an operation gives the register of an operand away that a later one still wants, which costs a copy.
complaints copy_complaints(const generator::body& b);
complaints constant_complaints(const generator::body& b);
