// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/operations.h"

namespace generator {

namespace {

using enum op_class;
using enum constant_from;
using enum op_time;

// clang-format off
constexpr operation table[] = {
    // operation         word            operands  class         constant  overwrites  time
    {op::load,          "load",          0,        input,        nowhere,  false,      when_used},
    {op::twiddle,       "twiddle",       0,        input,        nowhere,  false,      when_used},
    {op::mul,           "mul",           2,        product,      nowhere,  false,      when_ready},
    {op::add,           "add",           2,        sum,          nowhere,  false,      as_recorded},
    {op::sub,           "sub",           2,        sum,          nowhere,  false,      as_recorded},
    {op::add_i,         "add_i",         2,        turned_sum,   nowhere,  true,       as_recorded},
    {op::sub_i,         "sub_i",         2,        turned_sum,   nowhere,  true,       as_recorded},
    {op::scale,         "scale",         1,        scaled,       any_lane, false,      as_recorded},
    {op::fma,           "fma",           2,        fused,        any_lane, true,       as_recorded},
    {op::fms,           "fms",           2,        fused,        any_lane, true,       as_recorded},
    {op::fma_i,         "fma_i",         2,        turned_fused, odd_lane, true,       as_recorded},
    {op::fms_i,         "fms_i",         2,        turned_fused, odd_lane, true,       as_recorded},
    {op::twice_minus,   "twice_minus",   2,        fused,        nowhere,  true,       as_recorded},
    {op::neg,           "neg",           1,        sum,          nowhere,  false,      as_recorded},
    {op::reload,        "reload",        1,        memory,       nowhere,  false,      when_used},
    {op::zip_lo,        "zip_lo",        2,        exchange,     nowhere,  false,      when_ready},
    {op::zip_hi,        "zip_hi",        2,        exchange,     nowhere,  false,      when_ready},
    {op::store,         "store",         1,        output,       nowhere,  false,      when_used},
    {op::interleave_lo, "interleave_lo", 2,        exchange,     nowhere,  false,      when_used},
    {op::interleave_hi, "interleave_hi", 2,        exchange,     nowhere,  false,      when_used},
    {op::evens,         "evens",         2,        exchange,     nowhere,  false,      when_used},
    {op::odds,          "odds",          2,        exchange,     nowhere,  false,      when_used},
    {op::swap_halves,   "swap_halves",   1,        exchange,     nowhere,  false,      when_used},
    {op::swap_pairs,    "swap_pairs",    1,        exchange,     nowhere,  false,      when_used},
};
// clang-format on

consteval bool is_in_the_order_of_the_enumeration() {
    int place = 0;
    for (const operation& o : table)
        if (o.what != op(place++)) return false;
    return true;
}
static_assert(is_in_the_order_of_the_enumeration());

}  // namespace

const operation& operation_of(op what) { return table[int(what)]; }

}  // namespace generator
