// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/passes/counts.h"

#include <algorithm>
#include <map>
#include <set>

namespace generator {

bool same_graph(const body& a, const body& b) {
    const auto key_equal = [](const node& x, const node& y) { return x.key() == y.key(); };
    return a.order == b.order && std::equal(a.graph.nodes().begin(), a.graph.nodes().end(), b.graph.nodes().begin(),
                                            b.graph.nodes().end(), key_equal);
}

namespace {

int peak_of_live_values(const body& b) {
    const auto& nodes = b.graph.nodes();
    std::map<int, int> last_use;
    for (int n : b.order)
        for (int operand : {nodes[n].a, nodes[n].b})
            if (operand != none) last_use[operand] = n;
    std::set<int> alive;
    size_t peak = 0;
    for (int n : b.order) {
        if (nodes[n].what != op::store) alive.insert(n);
        peak = std::max(peak, alive.size());
        for (int operand : {nodes[n].a, nodes[n].b})
            if (operand != none && last_use[operand] == n) alive.erase(operand);
    }
    return int(peak);
}

}  // namespace

operation_counts count_operations(const body& b) {
    std::map<op_class, int> of;
    int twiddles = 0;
    for (int n : b.order) {
        const op what = b.graph.nodes()[n].what;
        ++of[operation_of(what).kind];
        twiddles += what == op::twiddle;
    }
    return {.loads = of[op_class::input] - twiddles,
            .twiddles = twiddles,
            .adds = of[op_class::sum],
            .turned = of[op_class::turned_sum],
            .scales = of[op_class::scaled],
            .fused = of[op_class::fused],
            .turned_fused = of[op_class::turned_fused],
            .products = of[op_class::product],
            .exchanges = of[op_class::exchange],
            .stores = of[op_class::output],
            .pool = int(b.graph.constants().entries().size() + b.graph.constants().lanes().size()),
            .peak = peak_of_live_values(b)};
}

}  // namespace generator
