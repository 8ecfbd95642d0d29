// SPDX-License-Identifier: Apache-2.0
// Every execute function of a batch, multidimensional or reshaping plan that needs scratch, itself or below it: in the
// plans' buffers, on a thread that never planned, and there with every allocation failing in turn, when nothing at all
// may be written.
#include <gtest/gtest.h>

#include "tests/batch/reshape_support.h"
#include "tests/support/scarce_memory.h"
#include "tests/support/signals.h"

namespace {

using namespace scarce_memory;

constexpr float untouched = -3.5f;

struct scratch_case {
    const char* execute_name;
    problem p;
};

// The name is that of the plan's own execute function or of one below it.
const scratch_case cases[] = {
    {"execute_c2c_many_block_row_row", {.dims = {{2048, 1, 1}}, .batch = {{2048, 2048, 2048}}}},
    {"execute_c2c_many_block_col_col_copy", {.dims = {{64, 256, 256}}, .batch = {{256, 1, 1}}}},
    {"execute_c2c_many_block_col_col_copy", {.dims = {{64, 256, 1}}, .batch = {{256, 1, 64}}}},
    {"execute_c2c_many_block_col_col_trans", {.dims = {{4096, 65, 65}}, .batch = {{64, 1, 1}}}},
    {"execute_c2c_many_block_col_col_parallel", {.dims = {{100, 8, 8}}, .batch = {{8, 1, 1}}}},
    {"execute_c2r_multidimension_bufferized", {.kind = kind_c2r, .dims = {{12, 11, 20}, {20, 1, 1}}, .batch = {}}},
    {"execute_c2r_multidimension",
     {.kind = kind_c2r, .dims = {{12, 51, 102}, {100, 1, 1}}, .batch = {}, .in_place = true}},
    {"execute_1d_two_stages_sve", {.dims = {{100, 1, 1}}, .batch = {{3, 100, 110}}}},
    {"execute_1d_two_stages_sve", {.dims = {{100, 4, 4}}, .batch = {{4, 1, 1}}}},
    {"execute_1d_two_stages_sve", {.dims = {{64, 1, 1}}, .batch = {{7, 64, 70}}}},
    {"execute_1d_two_stages_sve", {.dims = {{100, 64, 64}}, .batch = {{64, 1, 1}}, .in_place = true}},
    {"execute_many", {.dims = {{1000, 1, 1}}, .batch = {{3, 1000, 1000}, {2, 3000, 3000}}}},
    {"execute_many", {.dims = {{100, 1, 8}}, .batch = {{8, 100, 1}}}},
    {"execute_many", {.dims = {{128, 8, 1}}, .batch = {{8, 1, 130}}}},
    {"execute_many", {.dims = {{1009, 1, 1}}, .batch = {{3, 1009, 1009}}, .in_place = true}},
    {"execute_c2c_many_parallel", {.dims = {{100, 1, 1}}, .batch = {{7, 100, 100}}}},
    {"execute_c2c_many_parallel", {.dims = {{100, 7, 7}}, .batch = {{7, 1, 1}}, .in_place = true}},
    {"execute_multidimension", {.dims = {{100, 100, 100}, {100, 1, 1}}, .batch = {}}},
    {"execute_multidimension", {.dims = {{16, 100, 100}, {100, 1, 1}}, .batch = {}, .in_place = true}},
    {"execute_multidimension", {.dims = {{100, 16, 16}, {16, 1, 1}}, .batch = {}}},
    {"execute_multidimension", {.dims = {{5, 4100, 4100}, {41, 100, 100}, {100, 1, 1}}, .batch = {}}},
    {"execute_multidimension", {.kind = kind_r2c, .dims = {{100, 100, 51}, {100, 1, 1}}, .batch = {}}},
    {"execute_indirect_before", {.dims = {{256, 256, 1}}, .batch = {{256, 1, 256}}}},
    {"execute_bufferization", {.dims = {{1100, 1100, 1100}}, .batch = {{20, 1, 1}}}},
    {"execute_bufferization2", {.dims = {{1025, 1025, 1025}}, .batch = {{49, 1, 1}}}},
    {"execute_many_transpose", {.dims = {{4096, 64, 64}}, .batch = {{64, 1, 1}}}},
    {"execute_many_transpose_rotate", {.dims = {{65536, 1, 1}}, .batch = {}}},
    {"execute_many_post_transpose", {.dims = {{256, 1, 256}}, .batch = {{256, 256, 1}}, .in_place = true}},
    {"execute_rearrange_inplace", {.dims = {}, .batch = {{7, 9, 1}, {9, 1, 7}}, .in_place = true}},
    {"execute_multithread", {.dims = {{1000, 1, 1}}, .batch = {{8, 1000, 1000}}, .nthreads = 2}},
    {"execute_multithread", {.dims = {{128, 128, 128}, {128, 1, 1}}, .batch = {}, .in_place = true, .nthreads = 2}},
};

// As many transforms as there are points takes a while: one block of rows does.
void shorten(fft_plan* plan, problem& p) {
    if (!has_execute(*plan, "execute_c2c_many_block_row_row")) return;
    plan->howmany[0].n = p.batch[0].n = plan->subplans[0]->howmany[0].n;
}

class Scratch : public ::testing::TestWithParam<scratch_case> {
protected:
    void SetUp() override {
        p = GetParam().p;
        float planned_in[1], planned_out[1];
        plan = p.plan(planned_in, p.in_place ? planned_in : planned_out);
        ASSERT_TRUE(plan);
        ASSERT_TRUE(has_execute(*plan, GetParam().execute_name)) << tree(*plan);
        shorten(plan.get(), p);
        in.resize(2 * std::max(p.reach(true), p.reach(false)));
        uniform_noise noise(7);
        for (float& x : in) x = noise();
        before = p.in_place ? in : floats(2 * p.reach(false), untouched);
    }

    floats output() {
        floats out = before;
        plan->execute(plan.get(), p.in_place ? out.data() : in.data(), out.data());
        return out;
    }

    problem p;
    plan_pointer plan;
    floats in, before;
};

TEST_P(Scratch, BelongsToThePlanOrToTheCallAndWithoutItNothingIsWritten) {
    expect_all_or_nothing([&] { return output(); }, before, tree(*plan), p.nthreads > 1);
}

INSTANTIATE_TEST_SUITE_P(Batch, Scratch, ::testing::ValuesIn(cases), [](const auto& info) {
    return std::string(info.param.execute_name) + "_" + std::to_string(info.index);
});

// Split arrays: single transforms and batches of each kind.
class SplitScratch : public ::testing::TestWithParam<problem> {};

TEST_P(SplitScratch, BelongsToThePlanOrToTheCallAndWithoutItNothingIsWritten) {
    const problem& p = GetParam();
    floats in_re(p.reach(true)), in_im(p.reach(true));
    uniform_noise noise(7);
    for (floats* part : {&in_re, &in_im})
        for (float& x : *part) x = noise();
    const int64_t size = p.reach(false);
    const floats before(2 * size, untouched);  // real parts, then imaginary parts
    floats planned = before;
    fft_plan* record = p.record(in_re.data(), planned.data()).release();
    record->split = split_arrays;
    record->in_imag = p.kind == kind_r2c ? nullptr : in_im.data();
    record->out_imag = p.kind == kind_c2r ? nullptr : planned.data() + size;
    const int result = plan_problem(&record);
    const plan_pointer plan(record);
    ASSERT_EQ(result, accepted);
    ASSERT_TRUE(has_execute(*plan, p.batch.empty() ? "execute_split" : "execute_many_split")) << tree(*plan);
    const auto output = [&] {
        floats out = before;
        plan->execute_split(plan.get(), in_re.data(), plan->in_imag, out.data(),
                            plan->out_imag ? out.data() + size : nullptr);
        return out;
    };
    expect_all_or_nothing(output, before, tree(*plan));
}

const problem split_cases[] = {
    {.dims = {{100, 1, 1}}, .batch = {}},
    {.dims = {{1009, 2, 1}}, .batch = {{3, 2018, 1009}}},
    {.dims = {{12, 10, 10}, {10, 1, 1}}, .batch = {{2, 120, 120}, {2, 240, 240}}},
    {.kind = kind_r2c, .dims = {{100, 1, 1}}, .batch = {}},
    {.kind = kind_r2c, .dims = {{100, 1, 1}}, .batch = {{3, 100, 51}}},
    {.kind = kind_c2r, .dims = {{100, 1, 1}}, .batch = {}},
    {.kind = kind_c2r, .dims = {{100, 1, 1}}, .batch = {{3, 51, 100}}},
};

INSTANTIATE_TEST_SUITE_P(Batch, SplitScratch, ::testing::ValuesIn(split_cases));

}  // namespace
