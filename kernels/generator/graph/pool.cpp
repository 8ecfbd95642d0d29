// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/pool.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace generator {

void pool::add(std::array<exact, 2> pair, std::string meaning) {
    entries_.push_back({{pair[0], pair[1]}, std::move(meaning)});
}

exact pool::value(constant k) const {
    if (k.entry == constant::literal_two) return 2;
    if (k.entry == constant::literal_half) return half;
    return (int64_t{1} << k.doublings) * entries_[k.entry].value[k.lane];
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
    char s[60];
    std::snprintf(s, sizeof s, "the constants of this size lack %.17Lg", value.value());
    throw std::runtime_error(s);
}

found_constant pool::in_odd_lane(constant k) const {
    if (k.everywhere || is_lanes(k) || k.entry < 0) return {k, false};
    const exact &number = entries_[k.entry].value[k.lane], &odd = entries_[k.entry].value[1];
    if (odd == number || odd == -number) return {{k.entry, 1, false, k.doublings}, odd == -number};
    k.everywhere = true;
    return {k, false};
}

}  // namespace generator
