// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/passes/passes.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace generator {

int join_stores(const dag& g, std::vector<int>& order, const std::function<int(int slot)>& start) {
    constexpr int lanes = 4;
    const auto start_of = [&](int n) { return g.nodes()[n].what == op::store ? start(g.nodes()[n].slot) : -1; };
    std::map<int, int> first_of;  // by the second store of a pair
    std::set<int> waiting;
    for (size_t i = 0; i < order.size(); ++i) {
        const int own = start_of(order[i]);
        if (own < 0 || first_of.contains(order[i])) continue;
        const auto is_beside = [&](int n) {
            const int other = start_of(n);
            return other >= 0 && std::abs(other - own) == lanes && !first_of.contains(n);
        };
        const auto later = std::find_if(order.begin() + long(i) + 1, order.end(), is_beside);
        if (later == order.end()) continue;
        first_of[*later] = order[i];
        waiting.insert(order[i]);
    }
    std::vector<int> joined;
    for (const int n : order) {
        if (waiting.contains(n)) continue;
        if (first_of.contains(n)) joined.push_back(first_of[n]);
        joined.push_back(n);
    }
    order = joined;
    return int(waiting.size());
}

}  // namespace generator
