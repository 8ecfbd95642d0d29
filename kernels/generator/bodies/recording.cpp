// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/recording.h"

#include <cassert>

#include "kernels/generator/passes/passes.h"

namespace generator {

body record(pool constants, const surroundings& where, const std::function<void(body&)>& formula) {
    const bool overwrites = where.in && where.in->overwrites;
    const order_wishes wishes = {where.loads_first, where.output_parts, where.input_blocks};
    const bool sets_aside = overwrites && wishes.output_parts == 1 && wishes.input_blocks == 0;
    const bool crowded = overwrites && wishes.input_blocks > 0;
    body b{dag(std::move(constants), overwrites, sets_aside), {}, where.once && overwrites, crowded, where.loads_first};
    formula(b);
    b.did.recorded = b.graph.nodes();
    b.order = print_order(b.graph, wishes);
    b.did.into_second = choose_overwritten(b.graph, b.order);
    if (where.loads_again) b.did.loaded_again = load_again(b.graph, b.order);
    if (!where.alone) b.did.reloaded = reload_overwritten(b.graph, b.order, crowded);
    return b;
}

values load_all(dag& g, int count) {
    values x;
    for (int j = 0; j < count; ++j) x.push_back({&g, g.load(j)});
    return x;
}

void store_real(dag& g, int slot, value v) { g.store(slot, plain(v).n); }

values ready(body& b, values outputs) {
    std::vector<int> nodes;
    for (const value& v : outputs) {
        assert(v.quarters == 0);
        nodes.push_back(v.n);
    }
    b.did.chained = chain_rotated_pairs(b.graph, nodes);
    for (size_t k = 0; k < outputs.size(); ++k) outputs[k].n = nodes[k];
    return outputs;
}

}  // namespace generator
