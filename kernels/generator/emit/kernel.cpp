// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/emit/kernel.h"

#include <cstdlib>

#include "kernels/generator/loops/loop_shapes.h"
#include "kernels/generator/loops/real_loops.h"
#include "kernels/generator/loops/sorensen_loops.h"

namespace generator {

namespace {

const char* direction(int sign) { return sign < 0 ? "fwd" : "bwd"; }

std::string two_digits(int size) { return (size < 10 ? "n0" : "n") + std::to_string(size); }

bool is_stage(const form& f) { return f.loop == shape::first || f.loop == shape::other || f.loop == shape::last; }

std::string arguments(const form& f) {
    if (is_stage(f)) return "stage, in, out";
    if (f.loop == shape::assemble) return "out, in, is, os, idist, odist";
    if (f.loop == shape::rows) return "out, in, idist, odist, count";
    return f.loop == shape::many || f.data == layout::strided ? "out, in, is, os" : "out, in";
}

std::string run_parameters(const form& f) {
    if (is_stage(f)) return "const stage_record* stage, const float* in, float* out";
    if (f.loop == shape::assemble)
        return "float* out, const float* in, int64_t is, int64_t os, int64_t idist, int64_t odist";
    if (f.loop == shape::rows) return "float* out, const float* in, int64_t idist, int64_t odist, int64_t count";
    if (f.loop == shape::many || f.data == layout::strided)
        return "float* out, const float* in, int64_t is, int64_t os";
    return "float* out, const float* in";
}

text run_text(const form& f, int size, int sign) {
    text out;
    switch (f.loop) {
        case shape::direct:
        case shape::many:
        case shape::assemble:
            print_direct(out, f, size, sign);
            break;
        case shape::rows:
            print_rows(out, f, size, sign);
            break;
        case shape::first:
            print_first_stage(out, f, size, sign);
            break;
        case shape::other:
            print_other_stage(out, f, size, sign);
            break;
        case shape::last:
            print_last_stage(out, f, size, sign);
            break;
        default:
            std::abort();  // real data has real_kernel_text
    }
    return out;
}

void print_run(text& out, const form& f, const std::string& name, const std::string& lines) {
    out.append("static void " + name + "(" + run_parameters(f) + ", [[maybe_unused]] const float* pool) {\n");
    out.append(lines);
    out.append("}\n\n");
}

void print_entry(text& out, const form& f, int size, int sign, const std::string& run) {
    out.append("void " + kernel_name(f, size, sign) + kernel_parameters(f) + " {\n");
    const std::string pool_name =
        size == 2 || size == 4 ? "nullptr" : std::string("pool_") + direction(sign) + "_" + two_digits(size);
    out.append("    " + run + "(" + arguments(f) + ", " + pool_name + ");\n}\n");
}

}  // namespace

std::string kernel_name(const form& f, int size, int sign) {
    return std::string(f.name) + "_" + direction(sign) + "_" + two_digits(size);
}

std::string kernel_parameters(const form& f) {
    if (is_real(f)) return real_kernel_parameters(f);
    if (is_sorensen(f)) return sorensen_kernel_parameters();
    if (is_stage(f)) return "(const stage_record* stage, const float* in, float* out)";
    if (f.loop == shape::assemble || f.loop == shape::many || f.loop == shape::rows)
        return "(" + run_parameters(f) + ")";
    return "(" + run_parameters(f) + (f.data == layout::strided ? ", const void*)" : ", const void*, const void*)");
}

std::string kernel_source(const form& f, int size) {
    if (is_real(f)) return real_kernel_text(f, size).str();
    if (is_sorensen(f)) return sorensen_kernel_text(f, size).str();
    text out;
    out.append("// " + std::string(f.name) + ", size " + std::to_string(size) + ". Written by kernels/generator.\n\n");
    const std::string forward = run_text(f, size, -1).str(), backward = run_text(f, size, +1).str();
    const std::string run = std::string("run_") + f.name + "_" + two_digits(size);
    // Where only the signs of the pool's sines differ, both directions share the code.
    const bool shared = forward == backward;
    print_run(out, f, shared ? run : run + "_fwd", forward);
    if (!shared) print_run(out, f, run + "_bwd", backward);
    print_entry(out, f, size, -1, shared ? run : run + "_fwd");
    print_entry(out, f, size, +1, shared ? run : run + "_bwd");
    return out.str();
}

bodies kernel_bodies(const form& f, int size, int sign) {
    if (is_sorensen(f)) return sorensen_kernel_text(f, size).printed_bodies();
    return (is_real(f) ? real_kernel_text(f, size) : run_text(f, size, sign)).printed_bodies();
}

}  // namespace generator
