// SPDX-License-Identifier: Apache-2.0
// Packing into groups of four lanes, unpacking, and unpacking with a product, element by element.
#include "kernels/move/move.h"

#include "arrays.h"

#include <cmath>
#include <sstream>

namespace {

struct shape {
    int64_t length, count, group_length, stride;

    int64_t grouped_at(int64_t t, int64_t r) const {
        const int64_t grouped = count / 4 * 4;
        return t < grouped ? 4 * (t / 4 * group_length + r) + t % 4 : t * group_length + r;
    }
    int64_t grouped_span() const { return count ? grouped_at(count - 1, length - 1) + 1 : 0; }
    int64_t strided_span() const { return span(length, count, stride); }
    std::string text() const {
        std::ostringstream s;
        s << "length " << length << " count " << count << " group length " << group_length << " stride " << stride;
        return s.str();
    }
};

template <class check_function>
void for_each_shape(const check_function& check) {
    for (int64_t count = 0; count <= 20; ++count)
        for (int64_t length = 0; length <= 40; ++length) {
            check(shape{length, count, length, count + 1});
            check(shape{length, count, length + 3, count + 6});
        }
    for (int64_t count = 21; count <= 40; ++count)
        for (int64_t length : {1, 4, 16, 17, 40}) check(shape{length, count, length, count});
    for (int64_t count : {63, 64, 65, 66, 67, 127, 128, 129, 131})
        for (int64_t length : {16, 17, 40, 63, 64, 65, 127, 128, 129}) check(shape{length, count, length, count + 2});
}

void expect_copy(const shape& s, bool pack) {
    const std::vector<float> source = numbered(pack ? s.strided_span() : s.grouped_span(), 2);
    guarded result(pack ? s.grouped_span() : s.strided_span(), 2), expected = result;
    for (int64_t t = 0; t < s.count; ++t)
        for (int64_t r = 0; r < s.length; ++r) {
            const int64_t grouped = s.grouped_at(t, r), strided = r * s.stride + t;
            expected.put(pack ? grouped : strided, &source[2 * (pack ? strided : grouped)]);
        }
    (pack ? pack_lanes4 : unpack_lanes4)(source.data(), result.data(), s.length, s.count, s.group_length, s.stride);
    ASSERT_EQ(result.difference(expected), "") << s.text();
}

}  // namespace

TEST(Lanes4, ArePacked) {
    for_each_shape([](const shape& s) { expect_copy(s, true); });
}

TEST(Lanes4, AreUnpacked) {
    for_each_shape([](const shape& s) { expect_copy(s, false); });
}

TEST(Lanes4, FiveTransformsAreOneGroupAndOneRow) {
    const std::vector<float> source = numbered(3 * 5, 2);
    std::vector<float> grouped(2 * 15);
    pack_lanes4(source.data(), grouped.data(), 3, 5, 3, 5);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) EXPECT_EQ(grouped[2 * (4 * r + c)], source[2 * (5 * r + c)]);
        EXPECT_EQ(grouped[2 * (12 + r)], source[2 * (5 * r + 4)]);
    }
}

// Each part of a product is two fused multiply-adds that start from +0: equal in every bit on every machine.
TEST(Lanes4, AreUnpackedTimesTwiddles) {
    for_each_shape([](const shape& s) {
        std::vector<float> source(2 * s.grouped_span()), table(source.size());
        for (size_t i = 0; i < source.size(); ++i) {
            source[i] = i % 7 == 0 ? -0.0f : std::sin(0.37f * static_cast<float>(i + 1));
            table[i] = std::cos(0.91f * static_cast<float>(i + 1));
        }
        guarded result(s.strided_span(), 2), expected = result;
        for (int64_t t = 0; t < s.count; ++t)
            for (int64_t r = 0; r < s.length; ++r) {
                const float *x = &source[2 * s.grouped_at(t, r)], *w = &table[2 * s.grouped_at(t, r)];
                const float product[2] = {std::fma(-x[1], w[1], std::fma(x[0], w[0], 0.0f)),
                                          std::fma(x[1], w[0], std::fma(x[0], w[1], 0.0f))};
                const double re = double(x[0]) * w[0] - double(x[1]) * w[1],
                             im = double(x[0]) * w[1] + double(x[1]) * w[0];
                ASSERT_NEAR(product[0], re, 1.2e-7);
                ASSERT_NEAR(product[1], im, 1.2e-7);
                expected.put(r * s.stride + t, product);
            }
        unpack_lanes4_twiddle(source.data(), table.data(), result.data(), s.length, s.count, s.group_length, s.stride);
        ASSERT_EQ(result.difference(expected), "") << s.text();
    });
}
