// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/real_loops.h"

#include "kernels/generator/loops.h"
#include "kernels/generator/print.h"
#include "kernels/generator/real_body.h"

namespace generator {

namespace {

std::string pool_name(const form& f, int size) {
    return std::string("pool_") + f.name + (size < 10 ? "_n0" : "_n") + std::to_string(size);
}

std::string element(int j) { return "a" + std::to_string(j % 2) + " + s0[" + std::to_string(j / 2) + "]"; }

std::string coefficient_part(int slot) {
    const std::string k = std::to_string(slot / 2);
    return slot % 2 ? "b1 + s2[" + k + "]" : "b0 + s1[" + k + "]";
}

access row_access(const form& f) {
    const auto from = f.sign < 0 ? element : coefficient_part, to = f.sign < 0 ? coefficient_part : element;
    access a;
    a.load = [from](int slot) { return "load(" + from(slot) + ")"; };
    a.store = [to](int slot, std::string v) { return "store(" + to(slot) + ", " + v + ")"; };
    return a;
}

void print_rows(text& out, const form& f, const body& b, const char* loop, const std::string& a_step,
                const std::string& b_step) {
    print_constants(out, b);
    out.line("for (; ", loop, ", a0 += ", a_step, ", a1 += ", a_step, ", b0 += ", b_step, ", b1 += ", b_step, ") {");
    print_operations(out, b, row_access(f));
    out.line("}");
}

// Adjacent rows go four at a time; what is left over and rows at any other distance go one by one.
void print_any_count(text& out, const form& f, int size) {
    out.line("if (d0 == 1 && d1 == 1) {");
    out.line("using namespace real_quad;");
    print_rows(out, f, make_real_body(f, size, false), "count >= 4; count -= 4", "4", "4");
    out.line("}");
    out.line("using namespace real_one;");
    const char* real_side = f.sign < 0 ? "d0" : "d1";
    const char* spectrum_side = f.sign < 0 ? "d1" : "d0";
    print_rows(out, f, make_real_body(f, size, true), "count > 0; --count", real_side, spectrum_side);
}

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

std::string real_kernel_source(const form& f, int size) {
    text out;
    out.line("// ", f.name, ", size ", size, ". Written by kernels/generator.");
    out.blank();
    out.line("void ", kernel_name(f, size, f.sign), real_kernel_parameters(f), " {");
    if (!make_real_body(f, size, true).graph.constants().entries().empty())
        out.line("const auto* const pool = ", pool_name(f, size), ";");
    if (f.loop == shape::real_rows) print_any_count(out, f, size);
    out.line("}");
    return out.str();
}

std::vector<named_pool> real_pools(const form& f, int size) {
    const body b = make_real_body(f, size, true);
    if (b.graph.constants().entries().empty()) return {};
    return {{pool_name(f, size), false, b.graph.constants()}};
}

}  // namespace generator
