// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/dag.h"

#include <cassert>

namespace generator {

int dag::intern(const node& n) {
    const auto [it, fresh] = known_.try_emplace(n.key(), int(nodes_.size()));
    if (fresh) nodes_.push_back(n), nodes_.back().at_once = at_once_ && n.what != op::store;
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

}  // namespace generator
