// SPDX-License-Identifier: Apache-2.0
// Transforms of adjacent elements, four at a time, one in every lane: elements are gathered and outputs scattered. Each
// group is read whole before its first store.
#include "kernels/generator/loops/loop_shapes.h"

namespace generator {

void print_rows(text& out, const form& f, int size, int sign) {
    const body b = make_complex_body({.size = size, .sign = sign, .where = {.overwrites = true, .loads_first = true}});
    access a;
    a.load = [](int j) { return "load(in + " + std::to_string(2 * j) + ", in_rows)"; };
    a.store = [](int k, std::string v) { return "store(out + " + std::to_string(2 * k) + ", out_rows, " + v + ")"; };
    out.line("{");
    out.line("using namespace ", full_vocabulary(f), ";");
    print_constants(out, b);
    out.line("const lane_offsets in_rows = lanes_apart(2 * idist), out_rows = lanes_apart(2 * odist);");
    out.line("for (; count > 0; count -= 4, in += 8 * idist, out += 8 * odist) {");
    print_operations(out, b, a);
    out.line("}");
    out.line("}");
}

}  // namespace generator
