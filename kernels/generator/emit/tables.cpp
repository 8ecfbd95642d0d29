// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/emit/tables.h"

#include <cstdio>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "kernels/generator/emit/kernel.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/forms/signatures.h"
#include "kernels/generator/formulas/sizes.h"

namespace generator {

namespace {

constexpr int table_slots = 64, long_table_slots = 128, longest_table_slots = 256;
constexpr int signs[] = {-1, 1};

int slots(const form& f) {
    if (f.sizes.back() > long_table_slots) return longest_table_slots;
    return is_real(f) || f.sizes.back() > table_slots ? long_table_slots : table_slots;
}

// The sizes whose pools complex kernels share.
std::vector<int> sizes_with_pools() {
    std::vector<int> sizes;
    for (int size = 2; size <= long_table_slots; ++size) {
        const auto needs = [&](const form& f) { return !is_real(f) && has_size(f, size); };
        if (std::ranges::any_of(forms(), needs) && !constants_of(size, -1).empty()) sizes.push_back(size);
    }
    return sizes;
}

// The pools of a kernel's own.
std::vector<named_pool> pools_of(const form& f, int size) { return kernel_source(f, size).pools; }

std::string double_text(long double v) {
    char s[40];
    std::snprintf(s, sizeof s, "%.17g", double(v));
    return s;
}

std::string table_declaration(const form& f, int sign) {
    return std::string("extern const ") + signature_of(f).type + " " + table_name(f, sign) + "[" +
           std::to_string(slots(f)) + "]";
}

// Enough digits for the float nearest to the exact number to be read back.
std::string float_text(long double v) {
    char s[40];
    std::snprintf(s, sizeof s, "%.9gf", double(float(v)));
    std::string t = s;
    if (t.find_first_of(".e") == std::string::npos) t.insert(t.size() - 1, ".0");
    return t;
}

constexpr const char* head =
    "// Written by kernels/generator.\n#pragma once\n#include \"kernels/kernel_types.h\"\n"
    "#include \"kernels/real_kernels.h\"\n#pragma GCC visibility push(hidden)\n";

std::string array_of(const named_pool& p) { return (p.in_double ? "double " : "float ") + p.name + "[]"; }

// In whole vectors.
std::string pool_text(const named_pool& p) {
    std::string s = "\nalignas(16) const " + array_of(p) + " = {\n";
    for (const pool_entry& e : p.numbers.entries())
        for (const exact& v : e.value)
            s += "    " + (p.in_double ? double_text(v.value()) : float_text(v.value())) + ",\n";
    if (p.numbers.entries().size() % 2) s += "    0, 0,  // pairs are loaded by twos\n";
    for (const pool::lane_numbers& k : p.numbers.lanes()) {
        s += "   ";
        for (const exact& v : k) s += " " + (p.in_double ? double_text(v.value()) : float_text(v.value())) + ",";
        s += "\n";
    }
    return s + "};\n";
}

}  // namespace

std::string declarations_text() {
    std::string s = head;
    for (int size : sizes_with_pools())
        for (int sign : signs) s += "extern const float " + pool_name(size, sign) + "[];\n";
    for (const form& f : forms())
        for (int size : f.sizes) {
            for (const named_pool& p : pools_of(f, size)) s += "extern const " + array_of(p) + ";\n";
            for (int sign : signs)
                if (has_direction(f, sign)) s += "void " + kernel_name(f, size, sign) + kernel_parameters(f) + ";\n";
        }
    return s + "#pragma GCC visibility pop\n";
}

std::string tables_header_text() {
    std::string s = head;
    for (const form& f : forms())
        for (int sign : signs)
            if (has_direction(f, sign)) s += table_declaration(f, sign) + ";\n";
    return s + "#pragma GCC visibility pop\n";
}

std::string tables_text() {
    std::string s =
        "// Written by kernels/generator. Slot s - 1 holds the kernel of size s.\n"
        "#include \"tables.h\"\n#include \"declarations.h\"\n";
    for (const form& f : forms())
        for (int sign : signs) {
            if (!has_direction(f, sign)) continue;
            s += "\n" + table_declaration(f, sign) + " = {\n";
            for (int size = 1; size <= slots(f); ++size)
                s += "    " + (has_size(f, size) ? kernel_name(f, size, sign) : "nullptr") + ",\n";
            s += "};\n";
        }
    return s;
}

namespace {

// The first of a list's families that has a size.
const form& family_of(const short_list& list, int size) {
    for (const char* name : list.families)
        for (const form& f : forms())
            if (name && std::string_view(name) == f.name && has_size(f, size)) return f;
    throw std::runtime_error(std::string(list.name) + ", size " + std::to_string(size) +
                             ": no family of the list has it");
}

}  // namespace

// Each list ends with a row without a kernel.
std::string lists_text() {
    std::string s = "// Written by kernels/generator.\n#include \"declarations.h\"\n";
    for (const short_list& list : short_lists()) {
        const std::string type = signature_of(family_of(list, list.sizes.front())).type;
        s += "\nconst " + type + "_row " + list.name + "[] = {\n";
        for (int size : list.sizes) {
            const form& f = family_of(list, size);
            s += "    {" + std::to_string(size) + ", " + kernel_name(f, size, f.sign) + "},\n";
        }
        s += "    {0, nullptr},\n};\n";
    }
    return s;
}

namespace {

std::string pool_registry_text() {
    std::string s = "\nconst kernel_pool kernel_pools[] = {\n";
    int count = 0;
    for (int size : sizes_with_pools()) {
        const size_t pairs = constants_of(size, -1).entries().size();
        s += "    {" + std::to_string(size) + ", " + std::to_string(pairs) + ", {" + pool_name(size, -1) + ", " +
             pool_name(size, +1) + "}},\n";
        ++count;
    }
    return s + "};\nconst int kernel_pool_count = " + std::to_string(count) + ";\n";
}

}  // namespace

std::string registry_text() {
    std::string s =
        "// Written by kernels/generator.\n#include \"kernels/registry.h\"\n\n#include \"declarations.h\"\n#include "
        "\"tables.h\"\n\n"
        "const kernel_family kernel_families[] = {\n";
    const auto pointer = [](const form& f, int sign) {
        if (!has_direction(f, sign)) return std::string("nullptr");
        return "reinterpret_cast<const any_kernel*>(" + table_name(f, sign) + ")";
    };
    for (const form& f : forms())
        s += std::string("    {\"") + f.name + "\", {" + pointer(f, -1) + ", " + pointer(f, 1) + "}},\n";
    s += "};\nconst int kernel_family_count = " + std::to_string(forms().size()) + ";\n";
    return s + pool_registry_text();
}

std::string pools_text() {
    std::string s =
        "// Written by kernels/generator. Pairs (cos, sin) of 2 pi k / n; sines negated in forward pools.\n"
        "// In a unit of their own, so that kernels load them as vectors, not each number by itself.\n"
        "#include \"declarations.h\"\n";
    for (int size : sizes_with_pools())
        for (int sign : signs) {
            const pool p = constants_of(size, sign);
            s += "\nalignas(16) const float " + pool_name(size, sign) + "[] = {\n";
            for (const pool_entry& e : p.entries())
                s += "    " + float_text(e.value[0].value()) + ", " + float_text(e.value[1].value()) + ",  // " +
                     e.meaning + "\n";
            if (p.entries().size() % 2) s += "    0, 0,  // pairs are loaded by twos\n";
            s += "};\n";
        }
    for (const form& f : forms())
        for (int size : f.sizes)
            for (const named_pool& p : pools_of(f, size)) s += pool_text(p);
    return s;
}

}  // namespace generator
