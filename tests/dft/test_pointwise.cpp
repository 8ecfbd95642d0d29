// SPDX-License-Identifier: Apache-2.0
#include "dft/pointwise.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

namespace {

using complex = std::complex<double>;

complex exchanged(complex z) { return {z.imag(), z.real()}; }

struct operation {
    const char* name;
    void (*run)(const float*, const float*, float*, uint64_t, int64_t, int64_t, int64_t);
    complex (*expected)(complex a, complex b);
};
const operation operations[] = {
    {"multiply", pointwise_multiply, [](complex a, complex b) { return a * b; }},
    {"multiply_swap", pointwise_multiply_swap, [](complex a, complex b) { return exchanged(a * b); }},
    {"swap_multiply", pointwise_swap_multiply, [](complex a, complex b) { return exchanged(a) * b; }},
    {"multiply_conj", pointwise_multiply_conj, [](complex a, complex b) { return std::conj(a * b); }},
};

guarded_floats spread(const std::vector<std::complex<float>>& values, int64_t stride) {
    guarded_floats array(2 * (values.empty() ? 0 : (values.size() - 1) * stride + 1));
    for (size_t i = 0; i < values.size(); ++i) array.set_complex(i * stride, values[i]);
    return array;
}

void check(const operation& op, uint64_t count, int64_t a_stride, int64_t b_stride, int64_t out_stride) {
    SCOPED_TRACE(testing::Message() << op.name << " count " << count << " strides " << a_stride << " " << b_stride
                                    << " " << out_stride);
    const auto x = complex_noise(count, 1), y = complex_noise(count, 2);
    guarded_floats a = spread(x, a_stride), b = spread(y, b_stride);
    guarded_floats out(2 * (count ? (count - 1) * out_stride + 1 : 0));
    op.run(a.data(), b.data(), out.data(), count, a_stride, b_stride, out_stride);
    EXPECT_TRUE(out.zones_are_intact());
    for (uint64_t i = 0; i < out.size() / 2; ++i) {
        if (i % out_stride) {
            EXPECT_TRUE(out.complex_is_untouched(i)) << i;
            continue;
        }
        const complex expected = op.expected(complex(x[i / out_stride]), complex(y[i / out_stride]));
        EXPECT_LT(std::abs(complex(out.complex_at(i)) - expected), 1e-7) << i;
    }
}

}  // namespace

TEST(Pointwise, IsRightForEveryCountAndStride) {
    for (const operation& op : operations)
        for (uint64_t count = 0; count <= 21; ++count)
            for (int64_t a : {1, 3})
                for (int64_t b : {1, 2})
                    for (int64_t out : {1, 5}) check(op, count, a, b, out);
}

TEST(Pointwise, TheResultMayReplaceTheFirstFactor) {
    for (const operation& op : operations)
        for (uint64_t count : {1, 4, 19}) {
            const auto x = complex_noise(count, 1), y = complex_noise(count, 2);
            guarded_floats a = spread(x, 1), b = spread(y, 1);
            op.run(a.data(), b.data(), a.data(), count, 1, 1, 1);
            for (uint64_t i = 0; i < count; ++i)
                EXPECT_LT(std::abs(complex(a.complex_at(i)) - op.expected(complex(x[i]), complex(y[i]))), 1e-7) << i;
        }
}
