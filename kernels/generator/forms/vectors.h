// SPDX-License-Identifier: Apache-2.0
// The kinds of vectors that loops are written over. A vocabulary of kernels/ops is a namespace of one of them.
#pragma once

namespace generator {

struct vectors {
    const char* vocabulary;
    const char* single;    // the vocabulary for what is left over, one number at a time
    int lanes;             // numbers in a vector: complex ones, or real ones of real data
    bool masked;           // loads and stores take a mask: nothing is left over
    bool overwrites;       // multiply-adds and rotated additions take the register of an operand
    bool gathers;          // loads and stores reach lanes at equal distances; else two rows are transposed
    const vectors* reals;  // real numbers in the same registers
};

// clang-format off
//                                             vocabulary          single         lanes  masked overwrites gathers reals
inline constexpr vectors real_quad        = {"real_quad",        "real_one",    4,     false, false,     true,   nullptr};
inline constexpr vectors real_quad_double = {"real_quad_double", "real_double", 4,     false, false,     true,   nullptr};
inline constexpr vectors real_oct         = {"real_oct",         "real_one",    8,     true,  true,      false,  nullptr};
inline constexpr vectors scalar           = {"scalar",           nullptr,       1,     false, false,     false,  nullptr};
inline constexpr vectors neon_one         = {"neon_one",         nullptr,       1,     false, false,     false,  nullptr};
inline constexpr vectors neon_pair        = {"neon_pair",        "neon_one",    2,     false, false,     false,  &real_quad};
inline constexpr vectors sve_one          = {"sve_one",          nullptr,       1,     false, true,      false,  nullptr};
inline constexpr vectors sve_quad         = {"sve_quad",         "neon_one",    4,     true,  true,      true,   &real_oct};
// clang-format on

}  // namespace generator
