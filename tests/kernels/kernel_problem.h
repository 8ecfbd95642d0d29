// SPDX-License-Identifier: Apache-2.0
// One call of one kernel on poisoned arrays, checked against the reference.
#pragma once
#include <string>

#include "kernels/generator/forms/forms.h"
#include "kernels/registry.h"
#include "placed_array.h"
#include "reference.h"

struct kernel_problem {
    const generator::form* form;
    any_kernel kernel;
    int radix, sign;
    int done, rest;            // m rows, L columns
    int is = 1, os = 1;        // complex elements
    int idist = 1, odist = 1;  // between lanes or transforms; other than 1 in the forms assemble and rows only
    int count = 1;             // of transforms; other than 1 in the form rows only
    bool in_place = false;
    bool in_blocks = false;  // what a last stage reads, or what another one writes for it
    placement where = placement::between_guards;
};

int lanes_of(const generator::form& f);  // transforms at once, in the lanes of a vector
std::string describe(const kernel_problem& p);
// Runs the kernel. Returns an empty text, or what went wrong.
std::string check(const kernel_problem& p, const transform_grid& grid);
