// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/loops/real_loops.h"

#include "kernels/generator/emit/kernel.h"
#include "kernels/generator/emit/print.h"
#include "kernels/generator/formulas/lanes_of_four.h"
#include "kernels/generator/loops/real_access.h"
#include "kernels/generator/bodies/real_row.h"
#include "kernels/generator/bodies/groups_of_four.h"

namespace generator {

namespace {

std::string pool_name(const form& f, int size, const char* of = "") {
    return std::string("pool_") + f.name + (size < 10 ? "_n0" : "_n") + std::to_string(size) + of;
}

struct pools_of_kernel {
    std::vector<named_pool> all;

    // The declaration that makes a pool known to the operations that follow. With `each_turn` what is loaded from it
    // isn't kept from turn to turn: most calls have one, and there are more constants than registers.
    void use(text& out, const std::string& name, const body& b, bool in_double, bool each_turn = false) {
        if (b.graph.constants().empty()) return;
        bool known = false;
        for (const named_pool& p : all) known |= p.name == name;
        if (!known) all.push_back({name, in_double, b.graph.constants()});
        out.line("const ", in_double ? "double" : "float",
                 "* const pool = ", each_turn ? "in_this_turn(" + name + ", count)" : name, ";");
    }
};

// Members that compute in double precision and round at the output.
bool in_double(const form& f, int size) {
    if (f.loop == shape::cosine_rows) return size == 17;
    return f.loop == shape::real_row && f.sign > 0 && (size == 3 || size == 5 || size == 7 || size == 32);
}

bool in_quarters(const form& f, int size) {
    return (f.loop == shape::real_row || f.loop == shape::real_rows) && size >= 16;
}

class kernel_printer {
public:
    kernel_printer(const form& f, int size) : f_(f), size_(size) {}

    void print(text& out) {
        if (f_.loop == shape::real_quad) return print_groups(out);
        if (f_.loop != shape::real_row) return print_any_count(out);
        if (in_quarters(f_, size_)) return print_quarters(out);
        print_row_by_offsets(out);
    }

    pools_of_kernel pools;

private:
    const char* one() const { return in_double(f_, size_) ? "real_double" : "real_one"; }
    const char* four() const { return in_double(f_, size_) ? "real_quad_double" : "real_quad"; }

    body row_body(bool everywhere) const { return make_real_row_body(f_, size_, everywhere); }

    // One row whose sequence and spectrum lie contiguous, and one by its offsets.
    void print_quarters(text& out) {
        out.line("if (", in_a_row(row_layout::pairs), ") {");
        print_quarter_row(out, row_layout::pairs);
        out.line("} else {");
        print_row_by_offsets(out);
        out.line("}");
    }

    void print_quarter_row(text& out, row_layout layout) {
        const body b = make_lanes_body(size_, f_.sign);
        out.line("using namespace ", four(), ";");
        pools.use(out, pool_name(f_, size_, "_quarters"), b, in_double(f_, size_), f_.loop == shape::real_rows);
        print_constants(out, b);
        if (layout == row_layout::pairs) out.line("float* const b_rising = base(b0 + 2);");
        print_operations(out, b, quarter_access(layout, size_));
    }

    // Vectors pay for themselves when their lanes come from anywhere only if there are many of them.
    void print_row_by_offsets(text& out) {
        if (size_ >= 32) return print_quarter_row(out, row_layout::offsets);
        const body b = row_body(true);
        out.line("using namespace ", one(), ";");
        pools.use(out, pool_name(f_, size_), b, in_double(f_, size_));
        print_constants(out, b);
        print_operations(out, b, row_access(f_));
    }

    std::string in_a_row(row_layout layout) const {
        const std::string elements = "a1 == a0 + 1 && s0[1] == 2 && ";
        if (layout == row_layout::pairs) return elements + "b1 == b0 + 1 && s1[1] == 2 && s2[1] == 2";
        return elements + "b1 == b0 + " + std::to_string(size_) + " && s1[1] == 1 && s2[1] == -1";
    }

    void print_loop_head(text& out, const char* condition, const std::string& in_step, const std::string& out_step) {
        const bool cosine = f_.loop == shape::cosine_rows;
        const std::string a_step = f_.sign < 0 ? in_step : out_step, b_step = f_.sign < 0 ? out_step : in_step;
        if (cosine)
            out.line("for (; ", condition, ", in += ", in_step, ", out += ", out_step, ") {");
        else
            out.line("for (; ", condition, ", a0 += ", a_step, ", a1 += ", a_step, ", b0 += ", b_step,
                     ", b1 += ", b_step, ") {");
    }

    void print_loop(text& out, const body& b, const access& a, const char* condition, const std::string& in_step,
                    const std::string& out_step) {
        print_constants(out, b);
        print_loop_head(out, condition, in_step, out_step);
        print_operations(out, b, a);
        out.line("}");
    }

    // Adjacent rows, and rows that lie contiguous, go four at a time; what is left over and other rows go one by one.
    void print_any_count(text& out) {
        out.line("if (count >= 4) {");
        print_groups_of_layout(out, group_layout::half_complex_in_a_row);
        out.line("if (d0 == 1 && d1 == 1) {");
        out.line("using namespace ", four(), ";");
        const body quad = row_body(false);
        pools.use(out, pool_name(f_, size_), quad, in_double(f_, size_));
        print_loop(out, quad, row_access(f_), "count >= 4; count -= 4", "4", "4");
        out.line("}");
        out.line("}");
        if (in_quarters(f_, size_)) {
            out.line("if (", in_a_row(row_layout::half_complex), ") {");
            print_loop_head(out, "count > 0; --count", "d0", "d1");
            print_quarter_row(out, row_layout::half_complex);
            out.line("}");
            out.line("}");
        }
        print_loop_head(out, "count > 0; --count", "d0", "d1");
        print_row_by_offsets(out);
        out.line("}");
    }

    void print_groups(text& out) {
        const bool half_complex_only = f_.sizes.front() == 32;
        if (!half_complex_only) print_groups_of_layout(out, group_layout::side_by_side);
        if (!half_complex_only) print_groups_of_layout(out, group_layout::pairs_in_a_row);
        print_groups_of_layout(out, group_layout::half_complex_in_a_row);
        const body quad = row_body(false);
        out.line("using namespace real_quad;");
        pools.use(out, pool_name(f_, size_), quad, false);
        out.line("if (d0 == 1 && d1 == 1) {");
        print_loop(out, quad, row_access(f_), "count >= 4; count -= 4", "4", "4");
        out.line("} else {");
        print_loop(out, quad, apart_access(f_), "count >= 4; count -= 4", "4 * d0", "4 * d1");
        out.line("}");
    }

    // A loop over groups of four rows, if they lie so.
    void print_groups_of_layout(text& out, group_layout layout) {
        const bool beside = layout == group_layout::side_by_side;
        if (f_.loop == shape::cosine_rows || (!beside && size_ % 4 != 0)) return;
        const char* sequence_distance = f_.sign < 0 ? "d0" : "d1";
        const char* spectrum_distance = f_.sign < 0 ? "d1" : "d0";
        if (beside)
            out.line("if (", sequence_distance, " == 1 && ", spectrum_distance,
                     " == 2 && b1 == b0 + 1 && s2[1] == s1[1]) {");
        else
            out.line("if (",
                     in_a_row(layout == group_layout::pairs_in_a_row ? row_layout::pairs : row_layout::half_complex),
                     ") {");
        out.line("using namespace real_quad;");
        const body b = make_group_body(f_, size_, layout);
        pools.use(out, pool_name(f_, size_), b, false);
        print_loop(out, b, rows_access(f_), "count >= 4; count -= 4", "4 * d0", "4 * d1");
        out.line("}");
    }

    const form& f_;
    int size_;
};

}  // namespace

std::string real_kernel_parameters(const form& f) {
    if (f.loop == shape::cosine_rows)
        return "(const float* in, float* out, const int64_t* in_offsets, const int64_t* out_offsets, int64_t count, "
               "int64_t d0, int64_t d1)";
    return "([[maybe_unused]] float* a0, [[maybe_unused]] float* a1, [[maybe_unused]] float* b0, "
           "[[maybe_unused]] float* b1, [[maybe_unused]] const int64_t* s0, [[maybe_unused]] const int64_t* s1, "
           "[[maybe_unused]] const int64_t* s2, [[maybe_unused]] int64_t count, [[maybe_unused]] int64_t d0, "
           "[[maybe_unused]] int64_t d1)";
}

text real_kernel_text(const form& f, int size) {
    text out;
    out.line("// ", f.name, ", size ", size, ". Written by kernels/generator.");
    out.blank();
    out.line("void ", kernel_name(f, size, f.sign), real_kernel_parameters(f), " {");
    kernel_printer(f, size).print(out);
    out.line("}");
    return out;
}

std::vector<named_pool> real_pools(const form& f, int size) {
    text out;
    kernel_printer printer(f, size);
    printer.print(out);
    return printer.pools.all;
}

}  // namespace generator
