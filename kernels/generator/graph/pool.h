// SPDX-License-Identifier: Apache-2.0
// The constants of a kernel: pairs (cosine, sine), sines negated in forward kernels; single numbers for real data. A
// formula asks for an exact number and gets the place where the pool keeps it, up to sign.
#pragma once
#include <array>
#include <string>
#include <vector>

#include "kernels/generator/graph/turn.h"

namespace generator {

// Where a kernel finds a real number: in one lane of a pair of the pool, or in a register that holds it everywhere.
struct constant {
    static constexpr int none = -1, literal_two = -2, literal_signs = -3, literal_half = -4;
    int entry = none;
    int lane = 0;
    bool everywhere = false;
    int doublings = 0;  // the number is the pool's times two to this power
    bool operator==(const constant&) const = default;
};
constexpr constant two{constant::literal_two, 0, true};
constexpr constant one_half{constant::literal_half, 0, true};
constexpr constant conjugating{constant::literal_signs, 0, true};  // 1 and -1 in turn: the factor that conjugates
// Four different numbers in the lanes of a real vector.
constexpr int first_lanes_entry = 1000;
inline bool is_literal(constant k) { return k.entry < constant::none; }
inline bool is_lanes(constant k) { return k.entry >= first_lanes_entry; }

struct pool_entry {
    exact value[2];
    std::string meaning;  // what the pair is, for the comment in the generated text
};

struct found_constant {
    constant where;
    bool negative;  // the pool holds the negated value
};

class pool {
public:
    pool() = default;
    void add(std::array<exact, 2> pair, std::string meaning);
    // A pool that takes up what it is asked for, number by number. Whether its numbers are taken by lane or each from a
    // register of its own is the vector's business.
    static pool growing(bool everywhere);

    const std::vector<pool_entry>& entries() const { return entries_; }
    exact value(constant k) const;
    found_constant find(const exact& value);
    // The same number for a product turned by a quarter, which reads the odd lane of a pair or a number everywhere.
    found_constant in_odd_lane(constant k) const;
    bool grows() const { return grows_; }

    using lane_numbers = std::array<exact, 4>;
    constant add_lanes(const lane_numbers& k);
    const std::vector<lane_numbers>& lanes() const { return lanes_; }
    // They stand behind the single numbers, which fill whole vectors.
    int lanes_offset(constant k) const { return int(entries_.size() + 1) / 2 * 4 + 4 * (k.entry - first_lanes_entry); }
    bool empty() const { return entries_.empty() && lanes_.empty(); }

private:
    constant add_number(const exact& value);

    bool grows_ = false, everywhere_ = false;
    int numbers_ = 0;  // in a growing pool
    std::vector<pool_entry> entries_;
    std::vector<lane_numbers> lanes_;
};

}  // namespace generator
