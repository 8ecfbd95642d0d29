// SPDX-License-Identifier: Apache-2.0
// A body as text in the vocabulary of kernels/ops: one named local for every operation.
#pragma once
#include <functional>
#include <memory>

#include "kernels/generator/bodies/recording.h"
#include "kernels/generator/emit/text.h"

namespace generator {

// How a loop addresses its data.
struct access {
    std::function<std::string(int slot)> load;                    // the expression that loads an input
    std::function<std::string(int slot, std::string)> store;      // the statement that stores an output
    std::function<void(text& out)> before_stores = [](text&) {};  // declares what stores alone need
    std::function<std::string(int slot)> twiddle;                 // the expression that loads a twiddle
    std::string twiddle_type = "vec";
    bool twiddles_held = false;  // print_twiddles has loaded them, outside of the loop
};

// Twiddles of a row that every lane multiplies by.
void take_row_twiddles(access& a);

void print_constants(text& out, const body& b);
void print_twiddles(text& out, const body& b, const access& a);
void print_operations(text& out, const body& b, const access& a);

}  // namespace generator
