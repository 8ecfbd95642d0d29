// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/passes/passes.h"

#include <algorithm>

namespace generator {

int chain_rotated_pairs(dag& g, std::vector<int>& outputs) {
    if (!g.overwrites()) return 0;
    int count = 0;
    for (size_t first = 0; first < outputs.size(); ++first)
        for (size_t second = first + 1; second < outputs.size(); ++second) {
            const int f = outputs[first];
            const node u = g.nodes()[f], v = g.nodes()[outputs[second]];
            if (u.a != v.a || u.b != v.b || u.k != v.k) continue;
            constant k = u.k.entry == constant::none ? two : u.k;
            if (k != two) ++k.doublings;
            const int before = outputs[second];
            if ((u.what == op::add_i && v.what == op::sub_i) || (u.what == op::fma_i && v.what == op::fms_i))
                outputs[second] = g.fused(op::fms_i, f, u.b, k);
            else if ((u.what == op::sub_i && v.what == op::add_i) || (u.what == op::fms_i && v.what == op::fma_i))
                outputs[second] = g.fused(op::fma_i, f, u.b, k);
            count += outputs[second] != before;
        }
    return count;
}

int choose_overwritten(dag& g, const std::vector<int>& order) {
    if (!g.overwrites()) return 0;
    int count = 0;
    std::vector<int> last_use(g.nodes().size(), none);
    for (int n : order)
        for (int operand : {g.nodes()[n].a, g.nodes()[n].b})
            if (operand != none) last_use[operand] = n;
    for (int n : order) {
        node& v = g.at(n);
        const bool fused = v.what == op::fma || v.what == op::fms;
        if ((!fused && v.what != op::twice_minus) || last_use[v.a] == n || last_use[v.b] != n) continue;
        v.into_b = true;
        if (fused) v.k.everywhere = true;  // there is no such instruction that takes its constant from a lane
        ++count;
    }
    return count;
}

int load_again(dag& g, std::vector<int>& order) {
    if (!g.overwrites()) return 0;
    constexpr size_t many_operations = 8;
    int count = 0;
    for (size_t at = 0; at < order.size(); ++at) {
        const int input = order[at];
        if (g.nodes()[input].what != op::load) continue;
        const auto uses = [&](const node& u) { return u.a == input || u.b == input; };
        bool overwritten = false;
        for (size_t user = at + 1, last = at; user < order.size(); ++user) {
            const node& u = g.nodes()[order[user]];
            if (!uses(u)) continue;
            if (overwritten || user - last > many_operations) {
                const int again = g.again(input);
                for (size_t later = user; later < order.size(); ++later)
                    for (int* operand : {&g.at(order[later]).a, &g.at(order[later]).b})
                        if (*operand == input) *operand = again;
                order.insert(order.begin() + long(user), again);
                ++count;
                break;
            }
            overwritten = operation_of(u.what).overwrites && (u.into_b ? u.b : u.a) == input;
            last = user;
        }
    }
    return count;
}

int reload_overwritten(dag& g, std::vector<int>& order, bool crowded) {
    if (!g.overwrites()) return 0;
    constexpr size_t soon = 16;
    int count = 0;
    for (size_t at = 0; at < order.size(); ++at) {
        const node v = g.nodes()[order[at]];
        if (!operation_of(v.what).overwrites || v.into_b) continue;
        const auto uses = [&](int n) {
            const node& u = g.nodes()[n];
            return u.what != op::reload && (u.a == v.a || u.b == v.a);
        };
        const auto next = std::find_if(order.begin() + long(at) + 1, order.end(), uses);
        if (next == order.end()) continue;
        const int again = g.reload(g.nodes()[v.a].what == op::reload ? g.nodes()[v.a].a : v.a);
        for (auto user = next; user != order.end(); ++user)
            for (int* operand : {&g.at(*user).a, &g.at(*user).b})
                if (*operand == v.a && g.nodes()[*user].what != op::reload) *operand = again;
        order.insert(next, again);
        ++count;
        if (!crowded || g.nodes()[v.a].what == op::reload) continue;
        const auto made = std::find(order.begin(), order.begin() + long(at), v.a);
        const auto touches = [&](int n) { return n == v.a || uses(n); };
        const auto last =
            std::find_if(std::reverse_iterator(order.begin() + long(at)), std::reverse_iterator(made), touches);
        if (size_t(last - std::reverse_iterator(order.begin() + long(at))) < soon) continue;
        g.at(order[at]).a = g.reload(v.a);
        order.insert(order.begin() + long(at), g.nodes()[order[at]].a);
        ++count, ++at;
    }
    return count;
}

}  // namespace generator
