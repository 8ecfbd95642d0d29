// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/passes/passes.h"

#include <algorithm>

namespace generator {

namespace {

// The butterflies ask for their operations sub-transform by sub-transform, which is the order that keeps few values
// alive. What isn't part of it: loads, permutations and twiddle multiplications wait until they are needed, and a
// store follows its value at once.
class printer_order {
public:
    printer_order(const dag& graph, const order_wishes& wishes)
        : nodes_(graph.nodes()),
          done_(nodes_.size()),
          live_(nodes_.size()),
          finishes_(nodes_.size()),
          store_of_(nodes_.size(), none),
          wanted_(nodes_.size()),
          users_(nodes_.size()),
          wishes_(wishes) {
        mark_live();
        for (int n = 0; n < int(nodes_.size()); ++n) {
            const node& v = nodes_[n];
            if (v.a != none) users_[v.a].push_back(n);
            if (v.b != none && v.b != v.a) users_[v.b].push_back(n);
        }
    }

    std::vector<int> run() {
        for (int last = 0; last < wishes_.input_blocks; ++last) visit_made_of(last);
        for (int part = 0; part < wishes_.output_parts; ++part) {
            want(bits_reversed(part, wishes_.output_parts));
            for (int n = 0; n < int(nodes_.size()); ++n) {
                if (!wanted_[n]) continue;
                if (!waits(nodes_[n].what)) visit(n);
                if (nodes_[n].what == op::store) visit(nodes_[n].a);  // a permutation that nothing else asks for
            }
        }
        for (int n : held_back_) order_.push_back(n);
        return order_;
    }

private:
    static bool waits(op what) { return operation_of(what).time != op_time::as_recorded; }

    void mark_live() {
        for (int n = 0; n < int(nodes_.size()); ++n)
            finishes_[n] = operation_of(nodes_[n].what).time == op_time::when_ready || nodes_[n].at_once;
        for (int n = int(nodes_.size()) - 1; n >= 0; --n) {
            const node& v = nodes_[n];
            if (v.what == op::store) {
                live_[n] = true;
                store_of_[v.a] = n;
            }
            if (!live_[n]) continue;
            if (v.what == op::load) ++loads_left_;
            for (int operand : {v.a, v.b})
                if (operand != none) {
                    live_[operand] = true;
                    if (v.what != op::store && !finishes_[n]) finishes_[operand] = false;
                }
        }
    }

    static int bits_reversed(int part, int count) {
        int result = 0;
        for (int bit = 1; bit < count; bit *= 2) result = 2 * result + (part / bit) % 2;
        return result;
    }

    // All that is made of the inputs of the first blocks, in the order in which they pair.
    void visit_made_of(int last) {
        std::vector<bool> made(nodes_.size());
        const auto is_there = [&](int n) { return n == none || made[n]; };
        for (int n = 0; n < int(nodes_.size()); ++n) {
            const node& v = nodes_[n];
            if (v.what == op::load) {
                for (int part = 0; part <= last; ++part)
                    made[n] = made[n] || v.slot / 4 == bits_reversed(part, wishes_.input_blocks);
            } else {
                made[n] = v.what != op::store && is_there(v.a) && is_there(v.b);
            }
        }
        for (int n = 0; n < int(nodes_.size()); ++n)
            if (live_[n] && made[n] && !waits(nodes_[n].what)) visit(n);
    }

    // The outputs of this residue, and all that they are made of.
    void want(int residue) {
        for (int n = int(nodes_.size()) - 1; n >= 0; --n) {
            const node& v = nodes_[n];
            if (v.what == op::store && v.slot % wishes_.output_parts == residue) wanted_[n] = true;
            if (!wanted_[n]) continue;
            for (int operand : {v.a, v.b})
                if (operand != none) wanted_[operand] = true;
        }
    }

    bool is_ready(int n) const {
        return n == none || done_[n] || nodes_[n].what == op::twiddle || nodes_[n].what == op::load;
    }

    // What a value only passes on its way to memory follows it as soon as all of it is there.
    void visit_finishers(int n) {
        bool any = false;
        for (const int user : users_[n]) {
            if (!wanted_[user] || !finishes_[user]) continue;
            any = true;
            if (is_ready(nodes_[user].a) && is_ready(nodes_[user].b)) visit(user);
        }
        if (any) visit_users(n);
    }

    void visit(int n) {
        if (n == none || done_[n]) return;
        done_[n] = true;
        visit(nodes_[n].a);
        visit(nodes_[n].b);
        order_.push_back(n);
        if (nodes_[n].what == op::load) --loads_left_;
        visit_finishers(n);
        if (nodes_[n].what == op::zip_lo || nodes_[n].what == op::zip_hi) visit_other_half(n);
        if (store_of_[n] != none) put_store(store_of_[n]);
    }

    // Of two vectors that are zipped one waits, not both.
    void visit_other_half(int n) {
        const op other = nodes_[n].what == op::zip_lo ? op::zip_hi : op::zip_lo;
        for (const int user : users_[nodes_[n].a]) {
            const node& u = nodes_[user];
            if (live_[user] && u.what == other && u.a == nodes_[n].a && u.b == nodes_[n].b) visit(user);
        }
    }

    void put_store(int n) {
        (wishes_.loads_first && loads_left_ > 0 ? held_back_ : order_).push_back(n);
        visit_users(nodes_[n].a);
    }

    // What is made from a value that went to memory overwrites it.
    void visit_users(int n) {
        for (const int user : users_[n])
            if (wanted_[user] && nodes_[user].a == n && nodes_[user].what != op::store && !finishes_[user]) visit(user);
    }

    const std::vector<node>& nodes_;
    std::vector<bool> done_, live_;
    std::vector<bool> finishes_;  // what is printed as soon as it can be, if nothing but stores is made of it
    std::vector<int> store_of_;
    std::vector<bool> wanted_;
    std::vector<std::vector<int>> users_;  // of each node, in the order in which they were recorded
    order_wishes wishes_;
    int loads_left_ = 0;
    std::vector<int> order_, held_back_;
};

}  // namespace

std::vector<int> print_order(const dag& graph, const order_wishes& wishes) {
    return printer_order(graph, wishes).run();
}

}  // namespace generator
