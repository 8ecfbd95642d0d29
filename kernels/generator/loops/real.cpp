// SPDX-License-Identifier: Apache-2.0
// Kernels of real data: addresses come from tables of offsets, rows lie any distance apart. They test at entry how the
// rows lie and have a loop for each layout.
#include "kernels/generator/bodies/groups_of_four.h"
#include "kernels/generator/bodies/real_row.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/formulas/lanes_of_four.h"
#include "kernels/generator/loops/loops.h"
#include "kernels/generator/loops/real_places.h"

namespace generator {

namespace {

class real_printer {
public:
    real_printer(text& out, const form& f, int size)
        : out_(out),
          f_(f),
          size_(size),
          in_double_(is_in_double(f, size)),
          in_(in_double_ ? real_quad_double : *f.in) {}

    void print() {
        if (f_.loop == shape::real_groups) return print_groups();
        if (f_.loop == shape::whole_rows) return print_whole_rows();
        if (f_.loop == shape::alone) return print_row_alone();
        if (f_.loop != shape::real_row) return print_any_count();
        if (has_lanes_of_four(size_)) return print_contiguous_row_or_other();
        print_row_by_offsets();
    }

private:
    // Makes a pool known to the operations that follow. With `each_turn` what is loaded from it isn't kept from turn to
    // turn: most calls have one, and there are more constants than registers.
    void use_pool(const body& b, const char* part, bool each_turn = false) {
        if (b.graph.constants().empty()) return;
        const std::string name = pool_name(f_, size_, part);
        out_.declare_pool({name, in_double_, b.graph.constants()});
        out_.line("const ", in_double_ ? "double" : "float",
                  "* const pool = ", each_turn ? "in_this_turn(" + name + ", count)" : name, ";");
    }

    body row_body(bool everywhere) const { return make_real_row_body(f_, size_, everywhere); }

    void open_if(real_layout layout) { out_.line("if (", condition_of(layout, f_, size_), ") {"); }

    // One row whose sequence and spectrum lie contiguous, and one by its offsets.
    void print_contiguous_row_or_other() {
        open_if(real_layout::pairs);
        print_row_in_lanes(real_layout::pairs);
        out_.line("} else {");
        print_row_by_offsets();
        out_.line("}");
    }

    void print_row_in_lanes(real_layout layout) {
        const body b = make_lanes_body(size_, f_.sign);
        out_.line("using namespace ", in_.vocabulary, ";");
        use_pool(b, "_quarters", f_.loop == shape::real_rows);
        print_constants(out_, b);
        if (layout == real_layout::pairs) out_.line("float* const b_rising = base(b0 + 2);");
        print_operations(out_, b, in_lanes(layout, size_));
    }

    // Vectors pay for themselves when their lanes come from anywhere only if there are many of them.
    void print_row_by_offsets() {
        if (size_ >= 32 && has_lanes_of_four(size_)) return print_row_in_lanes(real_layout::anywhere);
        const body b = row_body(true);
        out_.line("using namespace ", in_.single, ";");
        use_pool(b, "");
        print_constants(out_, b);
        print_operations(out_, b, at_offsets(f_));
    }

    void open_loop(const char* condition, const std::string& in_step, const std::string& out_step) {
        const std::string a_step = f_.sign < 0 ? in_step : out_step, b_step = f_.sign < 0 ? out_step : in_step;
        if (f_.loop == shape::cosine_rows)
            out_.line("for (; ", condition, ", in += ", in_step, ", out += ", out_step, ") {");
        else
            out_.line("for (; ", condition, ", a0 += ", a_step, ", a1 += ", a_step, ", b0 += ", b_step,
                      ", b1 += ", b_step, ") {");
    }
    void open_loop_over_rows() { open_loop("count > 0; --count", "d0", "d1"); }

    void print_loop_over_groups(const body& b, const access& a, const std::string& in_step,
                                const std::string& out_step) {
        print_constants(out_, b);
        open_loop("count >= 4; count -= 4", in_step, out_step);
        print_operations(out_, b, a);
        out_.line("}");
    }

    // Adjacent rows, and rows that lie contiguous, go four at a time; what is left over and other rows go one by one.
    void print_any_count() {
        out_.line("if (count >= 4) {");
        if (f_.loop != shape::cosine_rows) print_groups_of_layout(real_layout::half_complex);
        out_.line("if (d0 == 1 && d1 == 1) {");
        const body adjacent = row_body(false);
        out_.line("using namespace ", in_.vocabulary, ";");
        use_pool(adjacent, "");
        print_loop_over_groups(adjacent, at_offsets(f_), "4", "4");
        out_.line("}");
        out_.line("}");
        if (f_.loop == shape::real_rows && has_lanes_of_four(size_)) {
            open_if(real_layout::half_complex);
            open_loop_over_rows();
            print_row_in_lanes(real_layout::half_complex);
            out_.line("}");
            out_.line("}");
        }
        open_loop_over_rows();
        print_row_by_offsets();
        out_.line("}");
    }

    void print_groups() {
        if (!f_.half_complex_only) print_groups_of_layout(real_layout::side_by_side);
        if (!f_.half_complex_only) print_groups_of_layout(real_layout::pairs);
        print_groups_of_layout(real_layout::half_complex);
        const body adjacent = row_body(false);
        out_.line("using namespace ", in_.vocabulary, ";");
        use_pool(adjacent, "");
        out_.line("if (d0 == 1 && d1 == 1) {");
        print_loop_over_groups(adjacent, at_offsets(f_), "4", "4");
        out_.line("} else {");
        print_loop_over_groups(adjacent, at_offsets_apart(f_), "4 * d0", "4 * d1");
        out_.line("}");
    }

    void print_row_alone() {
        if (f_.spectrum == row_spectrum::pairs && has_lanes_of_four(size_)) return print_row_alone_in_lanes();
        const body b = row_body(true);
        out_.line("using namespace ", in_.single, ";");
        use_pool(b, "");
        print_constants(out_, b);
        print_operations(out_, b, in_a_row(f_, size_));
    }

    void print_row_alone_in_lanes() {
        const body b = make_lanes_body(size_, f_.sign);
        const bool forward = f_.sign < 0;
        out_.line("using namespace ", in_.vocabulary, ";");
        use_pool(b, "");
        print_constants(out_, b);
        out_.line(forward ? "const float* const a0 = in;" : "float* const a0 = out;");
        const char* const spectrum = forward ? "float* const " : "const float* const ";
        out_.line(spectrum, "b0 = ", forward ? "out;" : "in;");
        out_.line(spectrum, "b_rising = base(b0 + 2);");
        print_operations(out_, b, in_lanes(real_layout::pairs, size_));
    }

    void print_whole_rows() {
        const body b = make_group_body(f_, size_, real_layout::whole_rows);
        out_.line("using namespace ", in_.vocabulary, ";");
        use_pool(b, "");
        print_loop_over_groups(b, in_groups(f_), "4 * d0", "4 * d1");
    }

    // A loop over groups of four rows, if they lie so. Along a row, vectors take whole fours.
    void print_groups_of_layout(real_layout layout) {
        if (layout != real_layout::side_by_side && size_ % 4 != 0) return;
        const body b = make_group_body(f_, size_, layout);
        open_if(layout);
        out_.line("using namespace ", in_.vocabulary, ";");
        use_pool(b, "");
        print_loop_over_groups(b, in_groups(f_), "4 * d0", "4 * d1");
        out_.line("}");
    }

    text& out_;
    const form& f_;
    int size_;
    bool in_double_;
    const vectors& in_;
};

}  // namespace

void print_real(text& out, const form& f, int size, int) { real_printer(out, f, size).print(); }

}  // namespace generator
