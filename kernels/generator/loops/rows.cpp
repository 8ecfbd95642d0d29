// SPDX-License-Identifier: Apache-2.0
// One row of a transform in every lane. Last stages: L is 1, so the loop runs over the rows, and every row has twiddles
// of its own; the contiguous forms take two or four rows at a time, transposed in registers or gathered, with the
// twiddles of the rows side by side in the table. The strided form takes two rows whose elements are adjacent. Whole
// transforms of adjacent elements: one or two rows a turn, each read whole before its first store.
#include <set>

#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/bodies/rows.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loops.h"
#include "kernels/row_blocks.h"

namespace generator {

std::string row_address(const std::string& base, int slot, int size) {
    const auto [row, vector] = row_slot::unpack(slot);
    return base + (row == 0 ? "" : "_second") + " + " + std::to_string(2 * first_in_vector(vector, size));
}

void print_rows(text& out, const form& f, int size, int sign) {
    const body b = make_rows_body(size, sign, *f.in);
    if (!b.graph.constants().lanes().empty())
        out.declare_pool({pool_name(f, size, direction(sign)), false, b.graph.constants()});
    access a;
    a.load = [&](int slot) { return "load(" + row_address("in", slot, size) + ")"; };
    a.store = [&](int slot, std::string v) { return "store(" + row_address("out", slot, size) + ", " + v + ")"; };
    const int rows = rows_of_body(size);
    out.line("{");
    out.line("using namespace ", f.in->vocabulary, ";");
    print_constants(out, b);
    out.line("for (; count > 0; count -= ", rows, ", in += ", 2 * rows, " * idist, out += ", 2 * rows, " * odist) {");
    if (rows == 2) {
        out.line("// The last of an odd number of rows runs twice at once.");
        out.line("const float* const in_second = in + (count > 1 ? 2 * idist : 0);");
        out.line("float* const out_second = out + (count > 1 ? 2 * odist : 0);");
    }
    print_operations(out, b, a);
    out.line("}");
    out.line("}");
}

namespace {

// Rows from i on, one at a time, with plain twiddles; a and b are the row's first elements.
void print_single_rows(text& out, const body& b, int size, const std::string& in_stride, bool contiguous) {
    const strided_address input("a", "is", size), output("b", "out_step", size);
    access a;
    take_row_twiddles(a);
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

// Radix 32 has too many values for the registers: it takes in four elements of each row after the other, and constants
// from memory.
constexpr int blocks_in_turn(int size) { return size == 32 ? size / 4 : 0; }

// The block that is taken in behind this one, their bits being counted in reverse; behind the last one the first.
int next_in_turn(int block, int count) {
    int bit = count / 2;
    for (; block & bit; bit /= 2) block -= bit;
    return block + bit;
}

// Four rows whose columns stand in blocks: a load brings four columns of them. It takes long: blocks in turn are loaded
// one ahead.
std::string column_of_block(text& out, std::set<int>& loaded, int column, int in_turn) {
    const auto load = [&](int block) {
        if (loaded.insert(block).second)
            out.line("const four_vectors block", block, " = load_transposed(a + ", block * 32, ");");
    };
    load(column / 4);
    if (in_turn > 0) load(next_in_turn(column / 4, in_turn));
    return "part<" + std::to_string(column % 4) + ">(block" + std::to_string(column / 4) + ")";
}

// A row in every lane.
void print_groups(text& out, const vectors& v, const body& b, int size, bool in_blocks) {
    const int rows = v.lanes;
    const strided_address output("b", "out_step", size);
    access a;
    std::set<int> blocks_loaded;
    a.twiddle = [&](int j) { return "load(w + " + std::to_string(2 * rows * (j - 1)) + ")"; };
    a.load = [&](int slot) {
        if (in_blocks) return column_of_block(out, blocks_loaded, slot, blocks_in_turn(size));
        if (v.gathers) return "load(a + " + std::to_string(2 * slot) + ", rows)";
        const auto [row, column] = transposed_slot::unpack(slot);
        return "load(a + " + std::to_string(2 * (row * size + column)) + ")";
    };
    a.store = [&](int k, std::string value) { return "store(" + output.at(k) + ", " + value + ")"; };
    print_constants(out, b);
    if (v.gathers && !in_blocks) out.line("const lane_offsets rows = lanes_apart<", 2 * size, ">();");
    out.line("const float* a = in;");
    out.line("float* b = out;");
    out.line("const float* w = stage->twiddles;");
    out.line("for (; i + ", rows, " <= stage->done; i += ", rows, ", a += ", 2 * rows * size, ", b += ", 2 * rows,
             ", w += ", 2 * rows * (size - 1), ") {");
    output.declare_bases(out);
    print_operations(out, b, a);
    out.line("}");
}

body make_group_body(complex_kind kind, const vectors& v) {
    kind.transposed = !v.gathers;
    kind.where.in = &v;
    kind.where.input_blocks = v.gathers ? blocks_in_turn(kind.size) : 0;
    return make_complex_body(kind);
}

// Two adjacent rows of adjacent elements with plain twiddles. Outputs stand side by side, or at any stride with `apart`
// behind the address.
void print_pairs_of_rows(text& out, const vectors& v, const body& b, int size, const std::string& apart) {
    const strided_address output("b", "out_step", size);
    const auto at = [](const char* base, int slot, int row_floats, int first) {
        const auto [row, column] = transposed_slot::unpack(slot);
        const int offset = 2 * (column - first) + (row == 1 ? row_floats : 0);
        const std::string rows_apart = row == transposed_slot::both ? ", " + std::to_string(row_floats) : "";
        return "load(" + std::string(base) + " + " + std::to_string(offset) + rows_apart + ")";
    };
    access a;
    a.load = [&](int slot) { return at("a", slot, 2 * size, 0); };
    a.twiddle = [&](int slot) { return at("w", slot, 2 * (size - 1), 1); };
    a.store = [&](int k, std::string value) { return "store(" + output.at(k) + apart + ", " + value + ")"; };
    out.line("using namespace ", v.vocabulary, ";");
    print_constants(out, b);
    out.line("const float* a = in;");
    out.line("float* b = out;");
    out.line("const float* w = stage->twiddles;");
    out.line("for (; i + 2 <= stage->done; i += 2, a += ", 4 * size, ", b += 2 * os, w += ", 4 * (size - 1), ") {");
    output.declare_bases(out);
    print_operations(out, b, a);
    out.line("}");
}

void print_contiguous_rows(text& out, const vectors& v, const complex_kind& kind) {
    out.line("{");
    out.line("using namespace ", v.vocabulary, ";");
    const body group = make_group_body(kind, v);
    if (v.gathers && takes_blocks(kind.size)) {
        out.line("if (is_in_blocks(stage)) {");
        print_groups(out, v, group, kind.size, true);
        out.line("return;");
        out.line("}");
    }
    print_groups(out, v, group, kind.size, false);
    out.line("}");
    out.line("if (i == stage->done) return;");
    out.line("using namespace ", v.single, ";");
    print_single_rows(out, make_complex_body(kind), kind.size, "2", true);
}

}  // namespace

void print_last_stage(text& out, const form& f, int size, int sign) {
    const bool contiguous = f.data == layout::contig;
    complex_kind kind = {.size = size, .sign = sign, .twiddled = true};
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
        print_contiguous_rows(out, *f.in, kind);
    } else {
        kind.where.in = f.in;
        const bool by_twos = f.data == layout::strided && f.in->lanes == 2;
        if (by_twos) {
            complex_kind pair = kind;
            pair.rows_twiddles = true;
            out.line("if (is == 2 && os == 2) {");
            print_pairs_of_rows(out, *f.in, make_complex_body(pair), size, "");
            out.line("} else if (is == 2) {");
            print_pairs_of_rows(out, *f.in, make_complex_body(pair), size, ", os");
            out.line("}");
        }
        out.line("using namespace ", by_twos ? f.in->single : f.in->vocabulary, ";");
        print_single_rows(out, make_complex_body(kind), size, "is", false);
    }
    out.line("}");
}

}  // namespace generator
