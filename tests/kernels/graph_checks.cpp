// SPDX-License-Identifier: Apache-2.0
#include "graph_checks.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace {

using namespace generator;

std::string at(int n, const node& v) {
    return " at t" + std::to_string(n) + " (operation " + std::to_string(int(v.what)) + ")";
}

std::multiset<int> slots(const body& b, op what) {
    const std::vector<int> in_order = slots_of(b, what);
    return {in_order.begin(), in_order.end()};
}

std::multiset<int> range(int first, int end) {
    std::multiset<int> result;
    for (int j = first; j < end; ++j) result.insert(j);
    return result;
}

std::multiset<int> without_repetitions(const std::multiset<int>& numbers) {
    const std::set<int> different(numbers.begin(), numbers.end());
    return {different.begin(), different.end()};
}

// Elements of two rows that vectors of two columns cover. The last vector of an odd row overlaps the one before it.
std::multiset<int> transposed_slots(int size) {
    std::multiset<int> result;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column + 2 <= size; column += 2) result.insert(transposed_slot{row, column}.pack());
        if (size % 2) result.insert(transposed_slot{row, size - 2}.pack());
    }
    return result;
}

// Likewise, but for the elements that come from both rows: 0 and, of even rows, the last. Twiddles begin at element 1.
std::multiset<int> slots_with_rows_twiddles(int size, int first) {
    std::multiset<int> result;
    for (int column = 1; column + 2 <= size; column += 2)
        for (int row = 0; row < 2; ++row) result.insert(transposed_slot{row, column}.pack());
    if (first == 0) result.insert(transposed_slot{transposed_slot::both, 0}.pack());
    if (size % 2 == 0) result.insert(transposed_slot{transposed_slot::both, size - 1}.pack());
    return result;
}

}  // namespace

bool is_transposed(const body& b) { return has(b, op::zip_lo) || has_rows_twiddles(b); }

bool has_rows_twiddles(const body& b) {
    const std::vector<int> loads = slots_of(b, op::load);
    return std::count(loads.begin(), loads.end(), transposed_slot{transposed_slot::both, 0}.pack()) > 0;
}

bool has(const body& b, op what) {
    return std::any_of(b.order.begin(), b.order.end(), [&](int n) { return b.graph.nodes()[n].what == what; });
}

std::vector<int> slots_of(const body& b, op what) {
    std::vector<int> result;
    for (int n : b.order)
        if (b.graph.nodes()[n].what == what) result.push_back(b.graph.nodes()[n].slot);
    return result;
}

const std::vector<int>& sizes_to_try(const form& f) {
    static std::map<const form*, std::vector<int>> known;
    std::vector<int>& sizes = known[&f];
    if (!sizes.empty()) return sizes;
    sizes.assign(f.sizes.begin(), f.sizes.end());
    for (int size = 2; size <= 40; ++size)
        if (!has_size(f, size) && (f.sign != 0 || size == 22 || size == 25) && refusal(f, size).empty())
            sizes.push_back(size);
    return sizes;
}

const bodies& different_bodies(const form& f, int size, int sign) {
    static std::map<std::tuple<const form*, int, int>, bodies> known;
    bodies& result = known[{&f, size, sign}];
    if (!result.empty()) return result;
    for (const auto& b : kernel_bodies(f, size, sign))
        if (std::none_of(result.begin(), result.end(), [&](const auto& known) { return same_graph(*known, *b); }))
            result.push_back(b);
    return result;
}

// Operands are computed before they are used, nothing is computed twice, and everything ends in an output.
complaints order_complaints(const body& b) {
    complaints result;
    const auto& nodes = b.graph.nodes();
    std::vector<int> users(nodes.size()), printed(nodes.size());
    for (int n : b.order) {
        for (int operand : {nodes[n].a, nodes[n].b})
            if (operand != none) {
                ++users[operand];
                if (!printed[operand]) result.push_back("uses what isn't computed yet" + at(n, nodes[n]));
            }
        if (printed[n]++) result.push_back("computes again" + at(n, nodes[n]));
    }
    for (int n : b.order)
        if (nodes[n].what != op::store && users[n] == 0) result.push_back("computes in vain" + at(n, nodes[n]));
    for (int n = 0; n < int(nodes.size()); ++n)
        if (nodes[n].what == op::store && !printed[n]) result.push_back("leaves out" + at(n, nodes[n]));
    return result;
}

complaints load_complaints(const body& b, int size) {
    complaints result;
    const bool rows_twiddles = has_rows_twiddles(b);
    const auto wanted = rows_twiddles      ? slots_with_rows_twiddles(size, 0)
                        : is_transposed(b) ? transposed_slots(size)
                                           : range(0, size);
    const std::multiset<int> loaded = slots(b, op::load), different = without_repetitions(loaded);
    if (different != wanted) result.emplace_back("doesn't load each input");
    if (int(loaded.size() - different.size()) != b.did.loaded_again) result.emplace_back("loads an input again");
    const auto twiddles = slots(b, op::twiddle);
    if (!twiddles.empty() && twiddles != (rows_twiddles ? slots_with_rows_twiddles(size, 1) : range(1, size)))
        result.emplace_back("doesn't load each twiddle once");
    return result;
}

// Rows of a body, by its highest slot.
complaints row_complaints(const body& b, int size) {
    complaints result;
    for (const op what : {op::load, op::store}) {
        const std::multiset<int> used = slots(b, what);
        std::multiset<int> wanted = range(0, size);
        if (row_slot::is_one(*used.rbegin())) {
            wanted.clear();
            for (int row = 0; row <= row_slot::unpack(*used.rbegin()).row; ++row)
                for (int i = 0; i < vectors_of_row(size); ++i) wanted.insert(row_slot{row, i}.pack());
        }
        if (used != wanted) result.emplace_back("doesn't move each vector of its rows once");
    }
    return result;
}

complaints store_complaints(const body& b, int size) {
    if (slots(b, op::store) != range(0, size)) return {"doesn't store each output once"};
    return {};
}

complaints in_place_complaints(const body& b) {
    bool stored = false;
    for (int n : b.order) {
        const op what = b.graph.nodes()[n].what;
        if (what == op::load && stored) return {"loads after a store" + at(n, b.graph.nodes()[n])};
        stored |= what == op::store;
    }
    return {};
}

complaints copy_complaints(const body& b) {
    complaints result;
    for (auto at_node = b.order.begin(); at_node != b.order.end(); ++at_node) {
        const node& v = b.graph.nodes()[*at_node];
        if (!operation_of(v.what).overwrites) continue;
        const int given = v.into_b ? v.b : v.a;
        const auto wants = [&](int n) {
            const node& u = b.graph.nodes()[n];
            return u.what != op::reload && (u.a == given || u.b == given);
        };
        if (std::any_of(at_node + 1, b.order.end(), wants)) result.push_back("takes a register" + at(*at_node, v));
    }
    return result;
}

// Constants lie within the pool, in the forms that the vocabulary has: a lane of a pair for plain products, the odd
// lane or a register that holds the number everywhere for rotated ones; doubled twice at most.
// Real vectors also multiply by numbers that differ from lane to lane, and take any number everywhere.
complaints constant_complaints(const body& b) {
    complaints result;
    const int pairs = int(b.graph.constants().entries().size());
    for (int n : b.order) {
        const node& v = b.graph.nodes()[n];
        const bool takes = constants_of(v.what) != constant_from::nowhere;
        const bool turned = constants_of(v.what) == constant_from::odd_lane;
        if (takes != (v.k.entry != constant::none)) result.push_back("has or lacks a constant" + at(n, v));
        if (!takes || is_literal(v.k)) continue;
        if (is_lanes(v.k)) {
            if (v.k.entry - first_lanes_entry >= int(b.graph.constants().lanes().size()))
                result.push_back("reads outside the pool" + at(n, v));
            continue;
        }
        if (v.k.entry < 0 || v.k.entry >= pairs || v.k.lane < 0 || v.k.lane > 1)
            result.push_back("reads outside the pool" + at(n, v));
        if (turned && !v.k.everywhere && v.k.lane != 1) result.push_back("turns by an even lane" + at(n, v));
        if (v.k.doublings < 0 || v.k.doublings > 2) result.push_back("doubles a number too often" + at(n, v));
        if (v.k.everywhere && v.what == op::scale && !b.graph.constants().grows())
            result.push_back("scales by what is everywhere" + at(n, v));
    }
    return result;
}
