// SPDX-License-Identifier: Apache-2.0
// The last stage: L is 1, so the loop runs over the rows, and every row has twiddles of its own. The contiguous forms
// take two or four rows at a time, transposed in registers, with the twiddles of the rows side by side in the table.
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loop_shapes.h"

namespace generator {

namespace {

// Rows from i on, one at a time, with plain twiddles; a and b are the row's first elements.
void print_single_rows(text& out, const body& b, int size, const std::string& in_stride, bool contiguous) {
    const strided_address input("a", "is", size), output("b", "out_step", size);
    access a;
    a.twiddle = [](int j) { return "load_row(w + " + std::to_string(2 * (j - 1)) + ")"; };
    a.twiddle_type = "row_twiddle";
    a.load = [&](int j) { return "load(" + (contiguous ? "a + " + std::to_string(2 * j) : input.at(j)) + ")"; };
    a.store = [&](int k, std::string v) { return "store(" + output.at(k) + ", " + v + ")"; };
    print_constants(out, b);
    out.line("const float* a = in + int64_t(i) * ", size, " * ", in_stride, ";");
    out.line("float* b = out + int64_t(i) * os;");
    out.line("const float* w = stage->twiddles + i * ", 2 * (size - 1), ";");
    out.line("for (; i < stage->done; ++i, a += ", size, " * ", in_stride, ", b += os, w += ", 2 * (size - 1), ") {");
    if (!contiguous) input.declare_bases(out);
    output.declare_bases(out);
    print_operations(out, b, a);
    out.line("}");
}

// Groups of two or four rows, one row in every lane: NEON transposes pairs of columns, SVE gathers.
void print_groups(text& out, const form& f, const body& b, int size) {
    const bool sve = is_sve(f);
    const int rows = sve ? 4 : 2;
    const strided_address output("b", "out_step", size);
    access a;
    a.twiddle = [&](int j) { return "load(w + " + std::to_string(2 * rows * (j - 1)) + ")"; };
    a.load = [&](int slot) {
        if (sve) return "load(a + " + std::to_string(2 * slot) + ", rows)";
        const transposed_slot s = transposed_slot::unpack(slot);
        return "load(a + " + std::to_string(2 * (s.row * size + s.column)) + ")";
    };
    a.store = [&](int k, std::string v) { return "store(" + output.at(k) + ", " + v + ")"; };
    out.line("using namespace ", full_vocabulary(f), ";");
    print_constants(out, b);
    if (sve) out.line("const lane_offsets rows = lanes_apart<", 2 * size, ">();");
    out.line("const float* a = in;");
    out.line("float* b = out;");
    out.line("const float* w = stage->twiddles;");
    out.line("for (; i + ", rows, " <= stage->done; i += ", rows, ", a += ", 2 * rows * size, ", b += ", 2 * rows,
             ", w += ", 2 * rows * (size - 1), ") {");
    output.declare_bases(out);
    print_operations(out, b, a);
    out.line("}");
}

}  // namespace

void print_last_stage(text& out, const form& f, int size, int sign) {
    const bool contiguous = f.data == layout::contig, sve = is_sve(f);
    const body single = make_complex_body({.size = size, .sign = sign, .twiddled = true, .where = {.overwrites = sve && !contiguous}});
    out.line("{");
    if (contiguous)
        out.line("constexpr int64_t os = 2;");
    else
        out.line("const int64_t is = 2 * stage->is, os = 2 * stage->os;");
    out.line("const int64_t out_step = int64_t(stage->done) * os;");
    if (!contiguous) strided_address("a", "is", size).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
    out.line("uint64_t i = 0;");
    if (contiguous) {
        out.line("{");
        print_groups(out, f,
                     make_complex_body({.size = size, .sign = sign, .twiddled = true, .transposed = !sve, .where = {.overwrites = sve}}),
                     size);
        out.line("}");
        out.line("if (i == stage->done) return;");
        out.line("using namespace neon_one;");
        print_single_rows(out, single, size, "2", true);
    } else {
        out.line("using namespace ", f.data == layout::batch ? full_vocabulary(f) : one_vocabulary(f), ";");
        print_single_rows(out, single, size, "is", false);
    }
    out.line("}");
}

}  // namespace generator
