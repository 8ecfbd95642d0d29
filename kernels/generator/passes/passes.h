// SPDX-License-Identifier: Apache-2.0
// What happens to a recorded graph before it is printed.
#pragma once
#include <functional>
#include <vector>

#include "kernels/generator/graph/dag.h"

namespace generator {

// The order in which a body's operations are printed, which compilers are told to keep.
struct order_wishes {
    bool loads_first = false;  // no load follows a store
    // Where all values don't fit the registers: outputs k are finished by the residue of k modulo this power of two, or
    // inputs j are taken in by the number of their block, j / 4, and all that can be made of them, and both in the
    // order of reversed bits.
    int output_parts = 1;
    int input_blocks = 0;
};
std::vector<int> print_order(const dag& graph, const order_wishes& wishes);

// Passes for machines whose multiply-adds and rotated additions have no free result register: one of the operands gives
// its own, and whoever still needs that operand pays for a copy. They leave the graphs of other machines alone. Each
// returns how often it did so.

// a + i b and a - i b that both end in memory: the second is made from the first, which its store has set free, so that
// a needn't be copied. `outputs` are the nodes that will be stored.
int chain_rotated_pairs(dag& graph, std::vector<int>& outputs);
// Where b isn't needed behind a multiply-add in `order` but a is, the result takes b's register, so that a needn't be
// copied.
int choose_overwritten(dag& graph, const std::vector<int>& order);
// Inputs that were overwritten, or are wanted again much later, are loaded once more. Not for bodies that may run in
// place.
int load_again(dag& graph, std::vector<int>& order);
// Where both are, the later users of a get it from memory: that spares the copy, and the pipes for memory have room. In
// a crowded body the one that overwrites it too, unless it comes soon: a register would be put aside for it.
int reload_overwritten(dag& graph, std::vector<int>& order, bool crowded);

// Stores that wait for a later one beside them: one instruction then stores both. `start` tells at which number a store
// of a whole vector begins, or -1 for one that stays alone. Returns how many wait.
int join_stores(const dag& graph, std::vector<int>& order, const std::function<int(int slot)>& start);

}  // namespace generator
