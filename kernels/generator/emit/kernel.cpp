// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/emit/kernel.h"

#include "kernels/generator/emit/names.h"
#include "kernels/generator/forms/signatures.h"
#include "kernels/generator/formulas/sizes.h"
#include "kernels/generator/loops/loops.h"

namespace generator {

namespace {

text lines_of(const form& f, int size, int sign) {
    text lines;
    loop_of(f.loop)(lines, f, size, sign);
    return lines;
}

// First stages of strided data that have unit strides after all are those of the same vectors for contiguous data.
std::string unit_strides_text(const form& f, int size, int sign) {
    if (f.loop != shape::first || f.data != layout::strided) return {};
    for (const form& twin : forms())
        if (twin.loop == f.loop && twin.data == layout::contig && twin.in == f.in && has_size(twin, size))
            return "    if (stage->is == 1 && stage->os == 1) return " + kernel_name(twin, size, sign) + "(" +
                   signature_of(f).shared_arguments + ");\n";
    return {};
}

// Where only the signs of the pool's sines differ, both directions share a function that takes the pool.
void append_both_directions(text& out, const form& f, int size) {
    const signature& s = signature_of(f);
    const text lines[] = {lines_of(f, size, -1), lines_of(f, size, +1)};
    const std::string &forward = lines[0].str(), &backward = lines[1].str();
    const bool shared = forward == backward;
    const auto pool_of = [&](int sign) {
        for (const named_pool& own : lines[sign > 0].pools) return own.name;
        return constants_of(size, sign).empty() ? "nullptr" : pool_name(size, sign);
    };
    for (const text& l : lines)
        for (const named_pool& own : l.pools) out.declare_pool(own);
    const auto run = [&](int sign) {
        return std::string("run_") + f.name + "_" + numbered(size) + (shared ? "" : std::string("_") + direction(sign));
    };
    out.blank();
    for (int sign : {-1, 1})
        if (!shared || sign < 0)
            out.append("static void " + run(sign) + "(" + s.parameters + ", [[maybe_unused]] const float* pool) {\n" +
                       (sign < 0 ? forward : backward) + "}\n\n");
    for (int sign : {-1, 1})
        out.append("void " + kernel_name(f, size, sign) + kernel_parameters(f) + " {\n" +
                   unit_strides_text(f, size, sign) + "    " + run(sign) + "(" + s.shared_arguments + ", " +
                   pool_of(sign) + ");\n}\n");
}

}  // namespace

text kernel_source(const form& f, int size) {
    text out;
    out.line("// ", f.name, ", size ", size, ". Written by kernels/generator.");
    if (signature_of(f).shared_arguments) {
        append_both_directions(out, f, size);
        return out;
    }
    out.blank();
    out.line("void ", kernel_name(f, size, f.sign), kernel_parameters(f), " {");
    loop_of(f.loop)(out, f, size, f.sign);
    out.line("}");
    return out;
}

bodies kernel_bodies(const form& f, int size, int sign) { return lines_of(f, size, sign).printed; }

std::string refusal(const form& f, int size) try {
    kernel_source(f, size);
    return {};
} catch (const std::runtime_error& e) {
    return e.what();
}

std::string kernel_parameters(const form& f) {
    const signature& s = signature_of(f);
    return std::string("(") + s.parameters + s.ignored + ")";
}

}  // namespace generator
