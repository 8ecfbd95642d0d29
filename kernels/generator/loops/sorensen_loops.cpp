// SPDX-License-Identifier: Apache-2.0
// Row 0 and row L / 2 are real and go several branches to a vector, one number each; the others are complex and go
// along the branches as the rows of complex middle stages do, or, in the first stage, several rows to a vector.
#include "kernels/generator/loops/sorensen_loops.h"

#include "kernels/generator/loops/address.h"
#include "kernels/generator/bodies/hermitian.h"
#include "kernels/generator/loops/loop_shapes.h"
#include "kernels/generator/emit/kernel.h"
#include "kernels/generator/emit/print.h"
#include "kernels/generator/loops/sorensen_real_rows.h"

namespace generator {

namespace {

std::string two_digits(int size) { return (size < 10 ? "n0" : "n") + std::to_string(size); }

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

void declare_complex_pool(text& out, const body& b, int size) {
    if (!b.graph.constants().entries().empty()) out.line("const float* const pool = pool_bwd_", two_digits(size), ";");
}

// Rows k on, `lanes` at a time with their twiddles side by side in the table, while as many remain.
void print_first_rows(text& out, const form& f, const body& b, int size, int lanes) {
    const row_address input(size);
    const bool sve = lanes == 4;
    access a;
    a.load = [&](int q) {
        const std::string mask = !sve ? "" : q == 0 ? "first, " : 2 * q == size ? "last, " : "";
        return (input.is_back(q) ? "load_backward(" : "load(") + mask + input.at(q) + ")";
    };
    a.twiddle = [&](int j) { return "load(w + " + std::to_string(2 * lanes * (j - 1)) + ")"; };
    a.store = [&](int slot, std::string v) {
        if (lanes == 1) return "store(b + " + std::to_string(2 * slot) + ", " + v + ")";
        if (sve) return "store(b + " + std::to_string(2 * slot) + ", rows, " + v + ")";
        const transposed_slot s = transposed_slot::unpack(slot);
        if (s.row == 2)
            return "store(b + " + std::to_string(2 * s.column) + ", " + std::to_string(2 * size) + ", " + v + ")";
        return "store(b + " + std::to_string(2 * (s.row * size + s.column)) + ", " + v + ")";
    };
    out.line("using namespace ", lanes == 1 ? "neon_one" : full_vocabulary(f), ";");
    declare_complex_pool(out, b, size);
    print_constants(out, b);
    if (sve) {
        out.line("const lane_offsets rows = lanes_apart<", 2 * size, ">();");
        out.line("mask first = but_imaginary_of_first();");
        if (size % 2 == 0) out.line("mask last = but_imaginary_of_last();");
    }
    out.line("for (; k + ", lanes, " <= half; k += ", lanes, ") {");
    out.line("const float* const a = base(in + 2 * k);");
    out.line("const float* const c = base(in + in_step - 2 * k);");
    out.line("const float* const w = base(stage->twiddles + ", 2 * (size - 1), " * k);");
    out.line("float* const b = base(out + ", 2 * size, " * k);");
    input.declare_bases(out);
    print_operations(out, b, a);
    if (sve) out.line("first = all_lanes();");
    if (sve && size % 2 == 0) out.line("last = all_lanes();");
    out.line("}");
}

void print_first(text& out, const form& f, int size) {
    const bool sve = is_sve(f);
    const body rows = make_hermitian_body({.size = size, .transposed = !sve, .overwrites = sve});
    out.line("constexpr int64_t m = 1, out_step = 2;");
    out.line("const int64_t in_step = 2 * int64_t(stage->rest), half = int64_t(stage->half);");
    strided_address("a", "in_step", size / 2 + 1).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
    // Groups of four start with row 0, for which a complex row does as well; pairs start behind it.
    out.line(sve ? "int64_t k = half < 4;" : "int64_t k = 1;");
    if (sve) out.line("if (k > 0)");
    print_row_zero(out, f, size);
    out.line("{");
    print_first_rows(out, f, rows, size, sve ? 4 : 2);
    out.line("}");
    out.line("{");
    print_first_rows(out, f, make_hermitian_body({.size = size}), size, 1);
    out.line("}");
    print_row_middle(out, f, size);
}

// Twiddles of a row stay in registers while there are enough.
bool twiddles_held(int size) { return size <= 10; }

void print_branches(text& out, const body& b, int size, const std::string& mask) {
    const row_address input(size);
    const strided_address output("b", "out_step", size);
    access a;
    a.load = [&](int q) { return "load(" + mask + input.at(q) + ")"; };
    a.store = [&](int j, std::string v) { return "store(" + mask + output.at(j) + ", " + v + ")"; };
    a.twiddle = [](int j) { return "load_row(w + " + std::to_string(2 * (j - 1)) + ")"; };
    a.twiddle_type = "row_twiddle";
    a.twiddles_held = twiddles_held(size);
    out.line("const float* const a = base(row_in + l);");
    out.line("const float* const c = base(row_back + l);");
    out.line("float* const b = base(row_out + l);");
    input.declare_bases(out);
    output.declare_bases(out);
    print_operations(out, b, a);
}

void print_row_constants(text& out, const body& b, int size) {
    print_constants(out, b);
    access a;
    a.twiddle = [](int j) { return "load_row(w + " + std::to_string(2 * (j - 1)) + ")"; };
    a.twiddle_type = "row_twiddle";
    if (twiddles_held(size)) print_twiddles(out, b, a);
}

// One complex row along the branches.
void print_complex_row(text& out, const form& f, const body& b, int size) {
    declare_complex_pool(out, b, size);
    if (is_sve(f)) {
        out.line("using namespace sve_quad;");
        print_row_constants(out, b, size);
        out.line("for (int64_t l = 0; l < row; l += 8) {");
        out.line("const mask p = lanes_left(l, row);");
        print_branches(out, b, size, "p, ");
        out.line("}");
        return;
    }
    out.line("int64_t l = 0;");
    out.line("{");
    out.line("using namespace neon_pair;");
    print_row_constants(out, b, size);
    out.line("for (; l + 4 <= row; l += 4) {");
    print_branches(out, b, size, "");
    out.line("}");
    out.line("}");
    out.line("if (l < row) {");
    out.line("using namespace neon_one;");
    print_row_constants(out, b, size);
    print_branches(out, b, size, "");
    out.line("}");
}

void print_other(text& out, const form& f, int size) {
    out.line("const int64_t m = int64_t(stage->done), half = int64_t(stage->half);");
    out.line("const int64_t row = 2 * m, in_step = int64_t(stage->rest) * row, out_step = row;");
    strided_address("a", "in_step", size / 2 + 1).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
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
    print_complex_row(out, f, make_hermitian_body({.size = size, .overwrites = is_sve(f)}), size);
    out.line("}");
    print_row_middle(out, f, size);
}

// Row 0 is all there is.
void print_last(text& out, const form& f, int size) {
    out.line("const int64_t m = int64_t(stage->done), in_step = 2 * m, out_step = m;");
    strided_address("a", "in_step", size / 2 + 1).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
    print_row_zero(out, f, size);
}

}  // namespace

std::string sorensen_kernel_parameters() { return "(const sorensen_stage_record* stage, const float* in, float* out)"; }

text sorensen_kernel_text(const form& f, int size) {
    text out;
    out.line("// ", f.name, ", size ", size, ". Written by kernels/generator.");
    out.blank();
    out.line("void ", kernel_name(f, size, f.sign), sorensen_kernel_parameters(), " {");
    if (f.loop == shape::sorensen_first) print_first(out, f, size);
    if (f.loop == shape::sorensen_other) print_other(out, f, size);
    if (f.loop == shape::sorensen_last) print_last(out, f, size);
    out.line("}");
    return out;
}

}  // namespace generator
