// SPDX-License-Identifier: Apache-2.0
// THE OPERATIONS of a graph: what each is called in the text, what it takes, and what passes must know of it. Vectors
// hold complex numbers for the complex families and plain numbers for the real ones: a quarter turn (_i) exists for
// complex vectors only.
#pragma once

namespace generator {

enum class op {
    load,         // input `slot`
    twiddle,      // twiddle `slot`, from the table of the stage
    mul,          // a b, complex
    add,          // a + b
    sub,          // a - b
    add_i,        // a + i b
    sub_i,        // a - i b
    scale,        // k a
    fma,          // a + k b
    fms,          // a - k b
    fma_i,        // a + i k b
    fms_i,        // a - i k b
    twice_minus,  // 2 a - b
    neg,          // -a
    reload,       // a again, from memory, where it was put when it was computed: a register of its own
    zip_lo,       // complex numbers of a and b in turn, from their lower halves
    zip_hi,       // from their upper halves
    store,        // a to output `slot`

    // Exchanges of the four lanes of real vectors.
    interleave_lo,  // a0 b0 a1 b1
    interleave_hi,  // a2 b2 a3 b3
    evens,          // a0 a2 b0 b2
    odds,           // a1 a3 b1 b3
    swap_halves,    // a2 a3 a0 a1
    swap_pairs,     // a1 a0 a3 a2
};

// The kinds that tests and counts tell apart.
enum class op_class { input, output, sum, turned_sum, scaled, fused, turned_fused, product, exchange, memory };

// Where an operation finds its constant. A product turned by a quarter reads the odd lane of every pair: no instruction
// lets it choose.
enum class constant_from { nowhere, any_lane, odd_lane };

// When an operation is printed: where it was asked for, or where a user needs it, or, if nothing but stores is made of
// it, as soon as its operands are there.
enum class op_time { as_recorded, when_used, when_ready };

struct operation {
    op what;
    const char* word;
    int operands;
    op_class kind;
    constant_from constants;
    bool overwrites;  // has no result register of its own where a machine's instructions have none to spare
    op_time time;
};

const operation& operation_of(op what);

inline constant_from constants_of(op what) { return operation_of(what).constants; }
inline bool is_of(op what, op_class kind) { return operation_of(what).kind == kind; }

}  // namespace generator
