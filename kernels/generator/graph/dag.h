// SPDX-License-Identifier: Apache-2.0
// The arithmetic of one kernel body as a graph of operations on vectors. Nodes are numbered in the order in which
// they were first asked for; an equal operation on equal operands is one node.
#pragma once
#include <map>
#include <vector>

#include "kernels/generator/graph/operations.h"
#include "kernels/generator/graph/pool.h"

namespace generator {

constexpr int none = -1;

struct node {
    op what;
    int a = none, b = none;
    int slot = none;
    constant k{};
    bool into_b = false;   // the result takes b's register, not a's
    bool at_once = false;  // printed as soon as its operands are there
    auto key() const { return std::tuple(int(what), a, b, slot, k.entry, k.lane, k.everywhere, k.doublings); }
};

class dag {
public:
    // On a machine that overwrites, multiply-adds and rotated additions have no free result register: see
    // passes/overwrite.h. Values may be `set_aside` where the order of operations would keep too many alive.
    dag(pool constants, bool overwrites, bool sets_aside = false)
        : pool_(std::move(constants)), overwrites_(overwrites), sets_aside_(sets_aside) {}

    bool overwrites() const { return overwrites_; }
    bool sets_aside() const { return sets_aside_; }

    int load(int slot) { return intern({op::load, none, none, slot}); }
    int twiddle(int slot) { return intern({op::twiddle, none, none, slot}); }
    void store(int slot, int a) { intern({op::store, a, none, slot}); }
    int binary(op what, int a, int b) { return intern({what, a, b}); }
    int scale(int a, constant k) { return intern({op::scale, a, none, none, k}); }
    int reload(int a) { return intern({op::reload, a, none, int(nodes_.size())}); }
    int again(int n) { return nodes_.push_back(nodes_[n]), int(nodes_.size()) - 1; }  // the same, computed anew
    int fused(op what, int a, int b, constant k) { return intern({what, a, b, none, k}); }

    // What is recorded from here on is printed as soon as its operands are there, if nothing but stores is made of it.
    void record_at_once() { at_once_ = true; }

    // a + b, a - b, a + i b, a - i b (turned by 0, 2, 1 and 3 quarters), taking a scaled b into a fused operation.
    int sum(int a, int b, int quarters);

    const pool& constants() const { return pool_; }
    pool& constants() { return pool_; }
    const std::vector<node>& nodes() const { return nodes_; }
    node& at(int n) { return nodes_[n]; }  // for passes

private:
    int intern(const node& n);

    pool pool_;
    bool overwrites_, sets_aside_, at_once_ = false;
    std::vector<node> nodes_;
    std::map<std::tuple<int, int, int, int, int, int, bool, int>, int> known_;
};

}  // namespace generator
