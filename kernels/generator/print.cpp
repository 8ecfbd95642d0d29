// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/print.h"

#include <map>

namespace generator {

namespace {

// The names of the operations, in the order of `op`.
constexpr const char* words[] = {"load", "twiddle", "mul",   "add",   "sub",         "add_i",  "sub_i",  "scale",
                                 "fma",  "fms",     "fma_i", "fms_i", "twice_minus", "zip_lo", "zip_hi", "store"};

std::string name(const dag& g, int n) {
    return (g.nodes()[n].what == op::twiddle ? "w" + std::to_string(g.nodes()[n].slot) : "t" + std::to_string(n));
}

std::string name(const constant& k) {
    if (k == two) return "two";
    std::string s = (k.everywhere ? "u" : "k") + std::to_string(k.entry);
    if (k.everywhere) s += k.lane ? "s" : "c";
    return k.twice ? s + "_twice" : s;
}

std::string expression(const dag& g, int n, const access& a) {
    const node& v = g.nodes()[n];
    if (v.what == op::load) return a.load(v.slot);
    std::string s = words[int(v.what)];
    const bool has_lane = v.what == op::scale || v.what == op::fma || v.what == op::fms;
    if (has_lane) s += v.k.everywhere ? "_all" : "<" + std::to_string(v.k.lane) + ">";
    s += "(" + name(g, v.a);
    if (v.b != none) s += ", " + name(g, v.b);
    if (v.k.entry != constant::none) s += ", " + name(v.k);
    if (v.what == op::twice_minus) s += ", two";
    return s + ")";
}

void print_twiddle(text& out, int slot, const access& a) {
    out.line("const ", a.twiddle_type, " w", slot, " = ", a.twiddle(slot), ";");
}

}  // namespace

void print_constants(text& out, const body& b) {
    std::map<std::string, constant> used;
    for (int n : b.order) {
        const node& v = b.graph.nodes()[n];
        if (v.k.entry != constant::none) used.emplace(name(v.k), v.k);
        if (v.what == op::twice_minus) used.emplace("two", two);
    }
    for (auto [text_name, k] : used) {
        if (k.twice) {
            k.twice = false;
            used.emplace(name(k), k);
        }
    }
    for (const auto& [text_name, k] : used) {
        constant once = k;
        once.twice = false;
        if (k == two)
            out.line("const vec two = same(2.0f);");
        else if (k.twice)
            out.line("const vec ", text_name, " = add(", name(once), ", ", name(once), ");");
        else
            out.line("const vec ", text_name, k.everywhere ? " = same(pool[" : " = constant(pool + ",
                     2 * k.entry + (k.everywhere ? k.lane : 0), k.everywhere ? "]);  // " : ");  // ",
                     b.graph.constants().entries()[k.entry].meaning);
    }
}

void print_twiddles(text& out, const body& b, const access& a) {
    for (const node& v : b.graph.nodes())
        if (v.what == op::twiddle) print_twiddle(out, v.slot, a);
}

void print_operations(text& out, const body& b, const access& a) {
    for (int n : b.order) {
        const node& v = b.graph.nodes()[n];
        if (v.what == op::twiddle) {
            if (!a.twiddles_held) print_twiddle(out, v.slot, a);
        } else if (v.what == op::store)
            out.line(a.store(v.slot, name(b.graph, v.a)), ";");
        else
            out.line("const vec ", name(b.graph, n), " = ", expression(b.graph, n, a), ";");
    }
}

}  // namespace generator
