// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/print.h"

#include <set>

namespace generator {

namespace {

const char* word(op what) {
    switch (what) {
        case op::mul:
            return "mul";
        case op::add:
            return "add";
        case op::sub:
            return "sub";
        case op::add_i:
            return "add_i";
        case op::sub_i:
            return "sub_i";
        case op::scale:
            return "scale";
        case op::fma:
            return "fma";
        case op::fms:
            return "fms";
        case op::fma_i:
            return "fma_i";
        case op::fms_i:
            return "fms_i";
        case op::zip_lo:
            return "zip_lo";
        case op::zip_hi:
            return "zip_hi";
        case op::unzip_even:
            return "unzip_even";
        case op::unzip_odd:
            return "unzip_odd";
        default:
            return "";
    }
}

std::string name(const dag& g, int n) {
    return (g.nodes()[n].what == op::twiddle ? "w" + std::to_string(g.nodes()[n].slot) : "t" + std::to_string(n));
}

std::string expression(const dag& g, int n, const access& a) {
    const node& v = g.nodes()[n];
    if (v.what == op::load) return a.load(v.slot);
    std::string s = word(v.what);
    const bool has_lane = v.what == op::scale || v.what == op::fma || v.what == op::fms;
    if (has_lane) s += "<" + std::to_string(v.k.lane) + ">";
    s += "(" + name(g, v.a);
    if (v.b != none) s += ", " + name(g, v.b);
    if (v.k.entry != none) s += ", k" + std::to_string(v.k.entry);
    return s + ")";
}

}  // namespace

void print_constants(text& out, const body& b) {
    std::set<int> entries;
    for (int n : b.order)
        if (b.graph.nodes()[n].k.entry != none) entries.insert(b.graph.nodes()[n].k.entry);
    for (int e : entries)
        out.line("const vec k", e, " = constant(pool + ", 2 * e, ");  // ", b.graph.constants().entries()[e].meaning);
}

void print_twiddles(text& out, const body& b, const access& a) {
    for (const node& v : b.graph.nodes())
        if (v.what == op::twiddle) out.line("const ", a.twiddle_type, " w", v.slot, " = ", a.twiddle(v.slot), ";");
}

void print_operations(text& out, const body& b, const access& a) {
    for (int n : b.order) {
        const node& v = b.graph.nodes()[n];
        if (v.what == op::store)
            out.line(a.store(v.slot, name(b.graph, v.a)), ";");
        else
            out.line("const vec ", name(b.graph, n), " = ", expression(b.graph, n, a), ";");
    }
}

}  // namespace generator
