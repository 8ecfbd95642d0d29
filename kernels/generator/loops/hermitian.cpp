// SPDX-License-Identifier: Apache-2.0
// The stages of Hermitian spectra (Sorensen et al. 1987): row k of branch b stands at element k m + b. Row 0 and row
// L / 2 are real; the others are complex and go along the branches as the rows of complex middle stages do, or, in the
// first stage, several rows to a vector.
#include "kernels/generator/bodies/hermitian.h"

#include <algorithm>

#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loops.h"

namespace generator {

namespace {

// Where the inputs of a complex row stand: those of the first half from a on, their conjugate partners from c on.
class row_address {
public:
    explicit row_address(int size)
        : size_(size), forth_("a", "in_step", stored_inputs(size)), back_("c", "in_step", size / 2) {}
    bool is_back(int q) const { return q >= stored_inputs(size_); }
    std::string at(int q) const { return is_back(q) ? back_.at(size_ - q - 1) : forth_.at(q); }
    void declare_bases(text& out) const {
        forth_.declare_bases(out);
        back_.declare_bases(out);
    }

private:
    int size_;
    strided_address forth_, back_;
};

// Complex rows share the pools of the complex kernels.
void declare_complex_pool(text& out, const body& b, int size) {
    if (!b.graph.constants().empty()) out.line("const float* const pool = ", pool_name(size, +1), ";");
}

void declare_steps(text& out, int size) {
    strided_address("a", "in_step", size / 2 + 1).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
}

// How a group of rows, one in every lane, finds its numbers. Under masks the group may begin with row 0, and its
// imaginary part isn't read, nor that of its mirror image.
access rows_in_lanes(const row_address& input, int size, int lanes, bool masked) {
    access a;
    a.load = [=, &input](int q) {
        const std::string mask = !masked ? "" : q == 0 ? "first, " : 2 * q == size ? "last, " : "";
        return (input.is_back(q) ? "load_backward(" : "load(") + mask + input.at(q) + ")";
    };
    a.twiddle = [=](int j) { return "load(w + " + std::to_string(2 * lanes * (j - 1)) + ")"; };
    a.store = [=](int slot, std::string v) {
        const auto to = [&](int element) { return "store(b + " + std::to_string(2 * element) + ", "; };
        if (lanes == 1) return to(slot) + v + ")";
        const auto [row, column] = transposed_slot::unpack(slot);
        if (row == lanes) return to(column) + (masked ? "rows" : std::to_string(2 * size)) + ", " + v + ")";
        return to(row * size + column) + v + ")";
    };
    return a;
}

bool stores_columns(const body& b, int rows) {
    return std::ranges::any_of(b.graph.nodes(), [&](const node& n) {
        return n.what == op::store && transposed_slot::unpack(n.slot).row == rows;
    });
}

// Rows k on, `lanes` at a time with their twiddles side by side in the table, while as many remain.
void print_first_rows(text& out, const char* vocabulary, const body& b, int size, int lanes, bool masked) {
    const row_address input(size);
    const access a = rows_in_lanes(input, size, lanes, masked);
    const bool has_last = masked && size % 2 == 0;
    out.line("{");
    out.line("using namespace ", vocabulary, ";");
    declare_complex_pool(out, b, size);
    print_constants(out, b);
    if (masked && stores_columns(b, lanes)) out.line("const lane_offsets rows = lanes_apart<", 2 * size, ">();");
    if (masked) out.line("mask first = but_imaginary_of_first();");
    if (has_last) out.line("mask last = but_imaginary_of_last();");
    out.line("for (; k + ", lanes, " <= half; k += ", lanes, ") {");
    out.line("const float* const a = base(in + 2 * k);");
    out.line("const float* const c = base(in + in_step - 2 * k);");
    out.line("const float* const w = base(stage->twiddles + ", 2 * (size - 1), " * k);");
    out.line("float* const b = base(out + ", 2 * size, " * k);");
    input.declare_bases(out);
    print_operations(out, b, a);
    if (masked) out.line("first = all_lanes();");
    if (has_last) out.line("last = all_lanes();");
    out.line("}");
    out.line("}");
}

// A turn along the branches of a complex row.
void print_branches(text& out, const body& b, int size, const std::string& mask) {
    const row_address input(size);
    const strided_address output("b", "out_step", size);
    access a;
    a.load = [&](int q) { return "load(" + mask + input.at(q) + ")"; };
    a.store = [&](int j, std::string v) { return "store(" + mask + output.at(j) + ", " + v + ")"; };
    take_row_twiddles(a);
    a.twiddles_held = are_twiddles_held(size);
    out.line("const float* const a = base(row_in + l);");
    out.line("const float* const c = base(row_back + l);");
    out.line("float* const b = base(row_out + l);");
    input.declare_bases(out);
    output.declare_bases(out);
    print_operations(out, b, a);
}

}  // namespace

void print_hermitian_first(text& out, const form& f, int size, int) {
    const vectors& v = *f.in;
    const body rows = make_hermitian_body({.size = size, .transposed = true, .in = &v});
    out.line("constexpr int64_t m = 1, out_step = 2;");
    out.line("const int64_t in_step = 2 * int64_t(stage->rest), half = int64_t(stage->half);");
    declare_steps(out, size);
    // Masked groups start with row 0, for which a complex row does as well; others start behind it.
    if (v.masked) {
        out.line("int64_t k = half < ", v.lanes, ";");
        out.line("if (k > 0)");
    } else {
        out.line("int64_t k = 1;");
    }
    print_row_zero(out, f, size);
    print_first_rows(out, v.vocabulary, rows, size, v.lanes, v.masked);
    print_first_rows(out, v.single, make_hermitian_body({.size = size}), size, 1, false);
    print_row_middle(out, f, size);
}

void print_hermitian_other(text& out, const form& f, int size, int) {
    const body row = make_hermitian_body({.size = size, .in = f.in});
    out.line("const int64_t m = int64_t(stage->done), half = int64_t(stage->half);");
    out.line("const int64_t row = 2 * m, in_step = int64_t(stage->rest) * row, out_step = row;");
    declare_steps(out, size);
    print_row_zero(out, f, size);
    out.line("const float* row_in = in;");
    out.line("const float* row_back = in + in_step;");
    out.line("float* row_out = out;");
    out.line("const float* w = stage->twiddles;");
    out.line("for (int64_t k = 1; k < half; ++k) {");
    out.line("row_in += row;");
    out.line("row_back -= row;");
    out.line("row_out += ", size, " * row;");
    out.line("w += ", 2 * (size - 1), ";");
    declare_complex_pool(out, row, size);
    print_along(
        out, *f.in, "row", [&] { print_row_constants(out, row, size); },
        [&](const std::string& mask) { print_branches(out, row, size, mask); });
    out.line("}");
    print_row_middle(out, f, size);
}

// Row 0 is all there is.
void print_hermitian_last(text& out, const form& f, int size, int) {
    out.line("const int64_t m = int64_t(stage->done), in_step = 2 * m, out_step = m;");
    declare_steps(out, size);
    print_row_zero(out, f, size);
}

}  // namespace generator
