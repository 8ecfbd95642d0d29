// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/emit/kernel.h"

#include <sstream>

#include "kernels/generator/emit/names.h"
#include "kernels/generator/passes/counts.h"

namespace generator {

namespace {

std::string constant_text(const pool& p, constant k) {
    if (k == conjugating) return "(1, -1)";
    if (is_lanes(k)) return "lanes " + std::to_string(k.entry - first_lanes_entry);
    std::ostringstream s;
    s << double(p.value(k).value());
    return s.str();
}

// As "t9 = fma t0 t7 x 0.309017".
std::string node_text(const body& b, int n, const node& v) {
    std::ostringstream s;
    if (v.what != op::store) s << "t" << n << " = ";
    s << operation_of(v.what).word;
    if (v.into_b) s << "_into_b";
    if (v.what == op::load || v.what == op::twiddle || v.what == op::store) s << " " << v.slot;
    for (int operand : {v.a, v.b})
        if (operand != none) s << " t" << operand;
    if (v.k.entry != constant::none) s << " x " << constant_text(b.graph.constants(), v.k);
    return s.str();
}

void append_nodes(std::ostringstream& out, const std::vector<std::string>& nodes) {
    constexpr size_t in_a_line = 4;
    for (size_t i = 0; i < nodes.size(); ++i) {
        std::string cell = nodes[i];
        const bool ends = i % in_a_line == in_a_line - 1 || i + 1 == nodes.size();
        if (!ends) cell.resize(std::max<size_t>(cell.size() + 2, 28), ' ');
        out << (i % in_a_line == 0 ? "    " : "") << cell << (ends ? "\n" : "");
    }
}

void append_body(std::ostringstream& out, const body& b) {
    std::vector<std::string> recorded, printed;
    for (int n = 0; n < int(b.did.recorded.size()); ++n) recorded.push_back(node_text(b, n, b.did.recorded[n]));
    for (int n : b.order) printed.push_back(node_text(b, n, b.graph.nodes()[n]));
    const operation_counts c = count_operations(b);
    out << "  formula: " << recorded.size() << " nodes";
    if (b.did.chained) out << ", " << b.did.chained << " of them second halves of rotated pairs, made from the first";
    out << "\n";
    append_nodes(out, recorded);
    out << "  order: " << printed.size() << " operations, at most " << c.peak << " values alive; " << b.did.into_second
        << " results take the register of their second operand, " << b.did.loaded_again << " inputs and "
        << b.did.reloaded << " operands are loaded again, " << b.did.joined << " stores wait for their neighbours\n";
    append_nodes(out, printed);
    out << "  counts: " << c.loads << " loads, " << c.stores << " stores, " << c.twiddles << " twiddles, " << c.adds
        << " additions and " << c.turned << " rotated, " << c.scales << " products, " << c.fused
        << " multiply-adds and " << c.turned_fused << " rotated, " << c.products << " by twiddles, " << c.exchanges
        << " exchanges, " << c.pool << " pairs of constants\n";
}

}  // namespace

std::string shown_kernel(const std::string& name) {
    constexpr int largest = 128;
    for (const form& f : forms())
        for (int sign : {-1, 1})
            for (int size = 2; has_direction(f, sign) && size <= largest; ++size) {
                if (kernel_name(f, size, sign) != name) continue;
                std::ostringstream out;
                const bodies all = kernel_bodies(f, size, sign);
                out << name << ", written in " << f.in->vocabulary << ", bodies: " << all.size() << "\n";
                for (size_t i = 0; i < all.size(); ++i) {
                    out << "body " << i + 1 << "\n";
                    append_body(out, *all[i]);
                }
                out << "text\n" << kernel_source(f, size).str();
                return out.str();
            }
    return {};
}

}  // namespace generator
