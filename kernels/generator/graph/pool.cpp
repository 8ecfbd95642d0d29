// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/pool.h"

#include <cstdio>
#include <cstdlib>

namespace generator {

namespace {

// Which angles k / n the pool of a size holds: k from 1 to `count`, n as given. Sizes 15, 21 and 24 are told below.
struct angle_range {
    int size, count, den;
};
constexpr angle_range ranges[] = {
    {3, 1, 3},    {5, 2, 5},    {6, 1, 6},    {7, 3, 7},   {8, 1, 8},    {9, 4, 9},   {10, 2, 10},    {11, 5, 11},
    {12, 1, 12},  {13, 6, 13},  {14, 3, 14},  {16, 2, 16}, {17, 8, 17},  {18, 4, 18}, {19, 9, 19},    {20, 2, 20},
    {23, 11, 23}, {29, 14, 29}, {31, 15, 31}, {32, 4, 32}, {37, 18, 37}, {64, 8, 64}, {128, 16, 128},
};

}  // namespace

pool::pool(int size, int sign) : sign_(sign) {
    for (const angle_range& r : ranges)
        if (r.size == size)
            for (int k = 1; k <= r.count; ++k) add_angle({k, r.den});
    // Composite sizes with a factor 3: the sine of 60 degrees is folded into the constants of the other factor.
    const exact s3 = sine({1, 6});
    if (size == 15) {
        for (turn a : {turn{1, 6}, turn{1, 5}, turn{1, 10}}) add_angle(a);
        add_pair(sine({1, 5}) * s3, sign * cosine({1, 10}) * s3, "(sin 2/10, cos 1/10) sin 1/6");
        add_pair(sine({1, 10}) * s3, sign * cosine({1, 5}) * s3, "(sin 1/10, cos 2/10) sin 1/6");
    }
    if (size == 21) {
        const turn sevenths[] = {{1, 7}, {3, 14}, {1, 14}};
        add_angle({1, 6});
        for (turn a : sevenths) add_angle(a);
        for (turn a : sevenths)
            add_pair(sine(a) * s3, sign * cosine(a) * s3,
                     "(sin, cos) " + std::to_string(a.num) + "/" + std::to_string(a.den) + " sin 1/6");
    }
    if (size == 24) {
        add_angle({1, 6});
        add_pair(cosine({1, 8}), sign * cosine({1, 8}) * s3, "cos 1/8 (1, sin 1/6)");
    }
}

void pool::add_angle(turn angle) {
    add_pair(cosine(angle), sign_ * sine(angle), std::to_string(angle.num) + "/" + std::to_string(angle.den));
}

void pool::add_pair(const exact& c, const exact& s, std::string meaning) {
    entries_.push_back({{c, s}, std::move(meaning)});
}

exact pool::value(constant k) const {
    if (k.entry == constant::literal_two) return 2;
    return (k.twice ? 2 : 1) * entries_[k.entry].value[k.lane];
}

pool pool::growing(bool everywhere) {
    pool p;
    p.grows_ = true;
    p.everywhere_ = everywhere;
    return p;
}

constant pool::add_number(const exact& value) {
    if (numbers_ % 2 == 0) entries_.push_back({{0, 0}, {}});
    pool_entry& e = entries_.back();
    e.value[numbers_ % 2] = value;
    char s[40];
    std::snprintf(s, sizeof s, "%s%.6Lg", numbers_ % 2 ? ", " : "", value.value());
    e.meaning += s;
    return {int(entries_.size()) - 1, numbers_++ % 2, everywhere_};
}

constant pool::add_lanes(const lane_numbers& k) {
    size_t i = 0;
    while (i < lanes_.size() && lanes_[i] != k) ++i;
    if (i == lanes_.size()) lanes_.push_back(k);
    return {first_lanes_entry + int(i), 0, true};
}

found_constant pool::find(const exact& value) {
    for (size_t e = 0; e < entries_.size(); ++e)
        for (int lane = 0; lane < 2; ++lane) {
            const exact& v = entries_[e].value[lane];
            if (v == value || v == -value) return {{int(e), lane, everywhere_}, v == -value};
        }
    if (grows_) return {add_number(value.magnitude()), value.is_negative()};
    std::fprintf(stderr, "generator: the pool holds no %.17Lg\n", value.value());
    std::abort();
}

found_constant pool::in_odd_lane(constant k) const {
    if (k.everywhere || is_lanes(k) || k.entry < 0) return {k, false};
    const exact &number = entries_[k.entry].value[k.lane], &odd = entries_[k.entry].value[1];
    if (odd == number || odd == -number) return {{k.entry, 1, false, k.twice}, odd == -number};
    k.everywhere = true;
    return {k, false};
}

}  // namespace generator
