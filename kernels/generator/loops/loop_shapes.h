// SPDX-License-Identifier: Apache-2.0
// The loops of each shape: they say how a form loads, stores and steps, and nothing about the butterfly.
#pragma once
#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/forms/forms.h"
#include "kernels/generator/emit/print.h"

namespace generator {

void print_direct(text& out, const form& f, int size, int sign);
void print_rows(text& out, const form& f, int size, int sign);
void print_first_stage(text& out, const form& f, int size, int sign);
void print_other_stage(text& out, const form& f, int size, int sign);
void print_last_stage(text& out, const form& f, int size, int sign);

// The vocabulary whose vectors hold one complex number, and all lanes of a batch or of adjacent columns.
const char* one_vocabulary(const form& f);
const char* full_vocabulary(const form& f);

}  // namespace generator
