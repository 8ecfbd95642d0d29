// SPDX-License-Identifier: Apache-2.0
// Interleaved planes in place: their scratch holds every element of the array's complex side, however it is padded.
#include "planner/solvers.h"
#include "tests/batch/reshape_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// One behind the last element that the complex side addresses, and at least a compact copy of the real side.
uint64_t elements_of_scratch(int64_t n0, int64_t n1, int64_t items, int64_t slow, int64_t fast) {
    int64_t elements = n0 * n1 * items;
    for (int64_t i = 0; i < n0; ++i)
        for (int64_t k = 0; k <= n1 / 2; ++k)
            for (int64_t item = 0; item < items; ++item) elements = std::max(elements, 1 + i * slow + k * fast + item);
    return static_cast<uint64_t>(elements);
}

}  // namespace

TEST(PlanesInPlace, ScratchHoldsThePaddedArray) {
    static float array[1];  // which planning by the rules leaves alone
    for (const uint32_t kind : {kind_r2c, kind_c2r})
        for (const int64_t n0 : {1, 2, 3, 6})
            for (const int64_t n1 : {2, 3, 8})
                for (const int64_t items : {1, 2, 5})
                    for (const int64_t slow_padding : {0, 1, 40})
                        for (const int64_t fast_padding : {0, 1, 30}) {
                            const int64_t fast = items + fast_padding, slow = (n1 / 2 + 1) * fast + slow_padding;
                            const fft_dim complex_first = {n0, slow, 2 * slow}, complex_second = {n1, fast, fast};
                            problem p = {.kind = kind,
                                         .dims = {complex_first, complex_second},
                                         .batch = {{items, 1, 1}},
                                         .in_place = true};
                            if (kind == kind_r2c) std::swap(p.dims[0].is, p.dims[0].os);
                            const plan_pointer plan = p.record(array, array);
                            const int taken = kind == kind_r2c ? solve_problem_r2c_multidimension_many(plan.get())
                                                               : solve_problem_c2r_multidimension_many(plan.get());
                            ASSERT_EQ(taken, accepted);
                            EXPECT_EQ(plan->buffer_size, 8 * elements_of_scratch(n0, n1, items, slow, fast))
                                << (kind == kind_r2c ? "r2c " : "c2r ") << n0 << " x " << n1 << " of " << items
                                << " items, complex strides " << slow << " and " << fast;
                        }
}
