// SPDX-License-Identifier: Apache-2.0
// Which kernels a batch plan keeps, and where: c2c_many_direct_assemble_neon keeps the kernel of its own form in `aux`,
// a loop over single kernels owns nothing, and whatever planning has found is never looked up again.
#include <gtest/gtest.h>

#include "kernels/lookup.h"
#include "planner/solvers.h"
#include "tests/batch/reshape_columns.h"
#include "tests/support/guarded_floats.h"

namespace {

int lookups = 0;

constexpr int64_t array_floats = 2 * 8 * 66 * 2;
float in_array[array_floats], out_array[array_floats];  // rows of 64 may be measured on them

plan_pointer planned(const problem& p) { return p.plan(in_array, p.in_place ? in_array : out_array); }

}  // namespace

// The look-ups of kernels that whole transforms or batches run by. Calls from the library come here.
#define COUNTED_LOOKUP(kernel, name, mangled)                                 \
    extern "C" kernel __real_##mangled(const fft_plan* plan, uint64_t size);  \
    extern "C" kernel __wrap_##mangled(const fft_plan* plan, uint64_t size) { \
        ++lookups;                                                            \
        return __real_##mangled(plan, size);                                  \
    }
COUNTED_LOOKUP(many_kernel, straight_quad, _Z24lookup_straight_quad_svePK8fft_planm)
COUNTED_LOOKUP(many_rows_kernel, straight_rows, _Z25lookup_straight_rows_neonPK8fft_planm)
COUNTED_LOOKUP(many_kernel, many_quad, _Z20lookup_many_quad_svePK8fft_planm)
COUNTED_LOOKUP(many_rows_kernel, many_rows, _Z21lookup_many_rows_neonPK8fft_planm)
COUNTED_LOOKUP(many_assemble_kernel, assemble, _Z25lookup_many_assemble_neonPK8fft_planm)
COUNTED_LOOKUP(direct_strided_kernel, strided, _Z27lookup_direct_discrete_neonPK8fft_planm)
#undef COUNTED_LOOKUP

TEST(BatchKernels, ExecutionLooksNothingUp) {
    const problem problems[] = {
        batch_of({64, 8, 8}, {8, 1, 1}),        // groups of four by a straight kernel
        batch_of({128, 8, 8}, {8, 1, 1}),       //
        batch_of({128, 4, 4}, {4, 1, 1}),       // one group
        batch_of({64, 1, 1}, {7, 64, 70}),      // contiguous rows by a straight kernel
        batch_of({128, 1, 1}, {9, 128, 128}),   //
        batch_of({64, 1, 9}, {9, 64, 1}),       // rows to columns
        batch_of({128, 1, 9}, {9, 128, 1}),     //
        batch_of({64, 9, 1}, {9, 1, 64}),       // and back
        batch_of({64, 256, 256}, {256, 1, 1}),  // gathered blocks
        batch_of({16, 1, 1}, {8, 16, 16}),      // rows by c2c_many_direct_assemble_neon
        batch_of({16, 2, 1}, {8, 32, 16}),      //
        batch_of({37, 1, 1}, {6, 37, 40}),
    };
    for (const problem& p : problems) {
        lookups = 0;
        const plan_pointer plan = planned(p);
        ASSERT_TRUE(plan) << p.text();
        EXPECT_GT(lookups, 0) << "planning finds the kernels: " << p.text();
        std::vector<float> in(2 * p.reach(true)), out(2 * p.reach(false));
        lookups = 0;
        plan->execute(plan.get(), in.data(), out.data());
        EXPECT_EQ(lookups, 0) << p.text() << "\n" << tree(*plan);
    }
}

// The kernel is called as any caller of c2c_many_direct_assemble_neon would: with the distances of both batches.
TEST(BatchKernels, OfTheAssembleFormStandInAux) {
    for (int64_t n = 2; n <= 64; ++n)
        for (const int64_t sign : {sign_forward, sign_backward})
            for (const int64_t count : {2, 4, 5, 8}) {
                problem p = batch_of({n, 1, 1}, {count, n + 1, n + 2});
                p.sign = sign;
                p.flags = plan_flag_measured;  // 64 too
                const plan_pointer plan = p.record(in_array, out_array);
                if (solve_problem_c2c_many_direct_assemble_neon(plan.get()) != accepted) {
                    EXPECT_EQ(lookup_many_assemble_neon(plan.get(), n), nullptr) << p.text();
                    continue;
                }
                ASSERT_EQ(plan->aux_size, sizeof(many_assemble_kernel)) << p.text();
                ASSERT_EQ(plan->aux_owned, 1u) << p.text();
                const auto kernel = *static_cast<const many_assemble_kernel*>(plan->aux);
                ASSERT_EQ(kernel, lookup_many_assemble_neon(plan.get(), n)) << p.text();

                guarded_floats in(2 * (2 * n + 1)), out(2 * (2 * n + 2));
                const complex_array signal = complex_noise(2 * n, n);
                for (int64_t c = 0; c < 2; ++c)
                    for (int64_t j = 0; j < n; ++j) in.set_complex(j + c * (n + 1), signal[c * n + j]);
                kernel(out.data(), in.data(), 1, 1, n + 1, n + 2);
                for (int64_t c = 0; c < 2; ++c) {
                    complex_array row(n), result(n);
                    for (int64_t j = 0; j < n; ++j) row[j] = signal[c * n + j];
                    for (int64_t k = 0; k < n; ++k) result[k] = out.complex_at(k + c * (n + 2));
                    EXPECT_LT(relative_error(result, reference::dft(widened(row), sign)), 3e-7) << p.text();
                }
            }
}

TEST(BatchKernels, ALoopOverOneKernelOwnsNothing) {
    for (const problem& p : {batch_of({64, 1, 9}, {9, 64, 1}), batch_of({64, 9, 1}, {9, 1, 64}),
                             batch_of({64, 3, 5}, {4, 300, 500}), batch_of({16, 4, 1}, {3, 1, 16})}) {
        const plan_pointer plan = p.record(in_array, out_array);
        ASSERT_EQ(solve_problem_dft_many(plan.get()), accepted) << p.text();
        ASSERT_EQ(plan->subplans[0]->subplan_count, 0) << p.text();
        ASSERT_EQ(plan->subplans[0]->aux_size, sizeof(direct_strided_kernel)) << p.text();
        EXPECT_EQ(plan->buffer, nullptr) << p.text();
        EXPECT_EQ(plan->aux, nullptr) << p.text();
        EXPECT_EQ(plan->buffer_size, 0u) << p.text();
        EXPECT_EQ(plan->aux_size, 0u) << p.text();
    }
}
