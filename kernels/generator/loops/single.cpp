// SPDX-License-Identifier: Apache-2.0
// One transform, or one in every lane: no loop, everything is read before the first store.
#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loops.h"

namespace generator {

void print_single(text& out, const form& f, int size, int sign) {
    const surroundings where = {.in = f.in, .loads_first = true, .once = true, .alone = f.loop == shape::direct};
    const body b = make_complex_body({.size = size, .sign = sign, .where = where});
    const strided_address input("in", "is", size), output("out", "os", size);
    access a;
    out.line("{");
    out.line("using namespace ", f.in->vocabulary, ";");
    if (f.data == layout::contig) {
        a.load = [](int j) { return "load(in + " + std::to_string(2 * j) + ")"; };
        a.store = [](int k, std::string v) { return "store(out + " + std::to_string(2 * k) + ", " + v + ")"; };
    } else {
        const std::string two = f.loop == shape::assemble ? ", 2 * idist" : "";
        const std::string two_out = f.loop == shape::assemble ? ", 2 * odist" : "";
        out.line("is *= 2;  // from here on in floats");
        out.line("os *= 2;");
        input.declare_steps(out);
        output.declare_steps(out);
        input.declare_bases(out);
        a.before_stores = [=](text& bases) { output.declare_bases(bases); };
        a.load = [=](int j) { return "load(" + input.at(j) + two + ")"; };
        a.store = [=](int k, std::string v) { return "store(" + output.at(k) + two_out + ", " + v + ")"; };
    }
    print_constants(out, b);
    print_operations(out, b, a);
    out.line("}");
}

}  // namespace generator
