// SPDX-License-Identifier: Apache-2.0
// The first stage: columns l < L, element j of a column at j L + l on both sides. It may run in place.
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loop_shapes.h"

namespace generator {

namespace {

void print_columns(text& out, const body& b, int size, const std::string& mask) {
    const strided_address input("a", "in_step", size), output("b", "out_step", size);
    input.declare_bases(out);
    output.declare_bases(out);
    access a;
    a.load = [&](int j) { return "load(" + mask + input.at(j) + ")"; };
    a.store = [&](int k, std::string v) { return "store(" + mask + output.at(k) + ", " + v + ")"; };
    print_operations(out, b, a);
}

void declare_steps(text& out, int size) {
    strided_address("a", "in_step", size).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
}

void print_contig_neon(text& out, const body& b, int size) {
    out.line("int64_t l = 0;");
    out.line("{");
    out.line("using namespace neon_pair;");
    print_constants(out, b);
    out.line("for (; l + 4 <= in_step; l += 4) {");
    out.line("const float* const a = base(in + l);");
    out.line("float* const b = base(out + l);");
    print_columns(out, b, size, "");
    out.line("}");
    out.line("}");
    out.line("if (l < in_step) {");
    out.line("using namespace neon_one;");
    print_constants(out, b);
    out.line("const float* const a = base(in + l);");
    out.line("float* const b = base(out + l);");
    print_columns(out, b, size, "");
    out.line("}");
}

void print_contig_sve(text& out, const body& b, int size) {
    out.line("using namespace sve_quad;");
    print_constants(out, b);
    out.line("for (int64_t l = 0; l < in_step; l += 8) {");
    out.line("const mask p = lanes_left(l, in_step);");
    out.line("const float* const a = base(in + l);");
    out.line("float* const b = base(out + l);");
    print_columns(out, b, size, "p, ");
    out.line("}");
}

void print_strided(text& out, const form& f, const body& b, int size) {
    out.line("using namespace ", f.data == layout::batch ? full_vocabulary(f) : one_vocabulary(f), ";");
    print_constants(out, b);
    out.line("const float* a = in;");
    out.line("float* b = out;");
    out.line("for (uint64_t l = 0; l < stage->rest; ++l, a += is, b += os) {");
    print_columns(out, b, size, "");
    out.line("}");
}

}  // namespace

void print_first_stage(text& out, const form& f, int size, int sign) {
    const body b = make_complex_body({.size = size, .sign = sign, .where = {.overwrites = is_sve(f), .loads_first = true}});
    out.line("{");
    if (f.data == layout::contig) {
        out.line("const int64_t in_step = 2 * int64_t(stage->rest), out_step = in_step;");
    } else {
        out.line("const int64_t is = 2 * stage->is, os = 2 * stage->os;");
        out.line("const int64_t in_step = int64_t(stage->rest) * is, out_step = int64_t(stage->rest) * os;");
    }
    declare_steps(out, size);
    if (f.data != layout::contig)
        print_strided(out, f, b, size);
    else if (f.isa == instruction_set::neon)
        print_contig_neon(out, b, size);
    else
        print_contig_sve(out, b, size);
    out.line("}");
}

}  // namespace generator
