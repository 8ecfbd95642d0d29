// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/dag.h"

#include <algorithm>
#include <cassert>

namespace generator {

int dag::intern(const node& n) {
    const auto [it, fresh] = known_.try_emplace(n.key(), int(nodes_.size()));
    if (fresh) nodes_.push_back(n);
    return it->second;
}

int dag::sum(int a, int b, int quarters) {
    constexpr op plain[] = {op::add, op::add_i, op::sub, op::sub_i};
    constexpr op with_scale[] = {op::fma, op::fma_i, op::fms, op::fms_i};
    const node nb = nodes_[b], na = nodes_[a];
    const bool conjugates = nb.what == op::scale && nb.k == conjugating;
    assert(!conjugates || quarters % 2 == 0);  // no instruction adds a rotated conjugate
    if (nb.what == op::scale) {
        if (na.what == op::scale && na.k == nb.k) return scale(sum(na.a, nb.a, quarters), na.k);
        if (quarters % 2 == 0) return fused(with_scale[quarters], a, nb.a, nb.k);
        const auto [odd, negative] = pool_.in_odd_lane(nb.k);
        return fused(with_scale[negative ? quarters ^ 2 : quarters], a, nb.a, odd);
    }
    if (na.what == op::scale && quarters == 0) return sum(b, a, 0);
    return binary(plain[quarters], a, b);
}

void dag::choose_overwritten(const std::vector<int>& order) {
    if (!overwrites_) return;
    std::vector<int> last_use(nodes_.size(), none);
    for (int n : order)
        for (int operand : {nodes_[n].a, nodes_[n].b})
            if (operand != none) last_use[operand] = n;
    for (int n : order) {
        node& v = nodes_[n];
        const bool fused = v.what == op::fma || v.what == op::fms;
        if ((!fused && v.what != op::twice_minus) || last_use[v.a] == n || last_use[v.b] != n) continue;
        v.into_b = true;
        if (fused) v.k.everywhere = true;  // there is no such instruction that takes its constant from a lane
    }
}

void dag::reload_overwritten(std::vector<int>& order) {
    if (!overwrites_) return;
    for (size_t at = 0; at < order.size(); ++at) {
        const node v = nodes_[order[at]];
        if (!operation_of(v.what).overwrites || v.into_b) continue;
        const auto uses = [&](int n) {
            return nodes_[n].what != op::reload && (nodes_[n].a == v.a || nodes_[n].b == v.a);
        };
        const auto next = std::find_if(order.begin() + at + 1, order.end(), uses);
        if (next == order.end()) continue;
        const int again = reload(nodes_[v.a].what == op::reload ? nodes_[v.a].a : v.a);
        for (auto user = next; user != order.end(); ++user)
            for (int* operand : {&nodes_[*user].a, &nodes_[*user].b})
                if (*operand == v.a && nodes_[*user].what != op::reload) *operand = again;
        order.insert(next, again);
    }
}

}  // namespace generator
