// SPDX-License-Identifier: Apache-2.0
// Every execute function of real data that needs scratch, itself or below it: in the plan's buffer, on a thread that
// never planned, and there with too little memory, when nothing at all may be written.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "problems/plan_tree.h"
#include "problems/planned_problem.h"
#include "record/fft_plan.h"
#include "tests/support/scarce_memory.h"
#include "tests/support/signals.h"

namespace {

using namespace scarce_memory;

struct scratch_case {
    const char* execute_name;
    const char* problem;
};

void PrintTo(const scratch_case& c, std::ostream* out) { *out << c.problem; }

const scratch_case cases[] = {
    {"execute_1d_r2c", "r2c 1024"},
    {"execute_1d_r2c", "r2c 1024 inplace"},
    {"execute_1d_r2c_discrete", "r2c 100 istride=2"},
    {"execute_1d_r2c_odd", "r2c 1001"},
    {"execute_1d_c2r", "c2r 2002"},
    {"execute_1d_c2r", "c2r 2002 inplace"},
    {"execute_1d_c2r_discrete", "c2r 2002 ostride=3"},
    {"execute_1d_c2r_odd", "c2r 1001"},
    {"execute_r2c_many", "r2c 80 batch=7"},
    {"execute_r2c_many_1d_direct", "r2c 1000 batch=3"},
    {"execute_r2c_many_bufferized", "r2c 80 batch=7 inplace idist=80 odist=41"},
    {"execute_c2r_many", "c2r 80 batch=7"},
    {"execute_c2r_many_1d_direct", "c2r 2002 batch=3"},
    {"execute_c2r_many_bufferized", "c2r 80 batch=7 inplace idist=41 odist=80"},
    {"execute_multidimension", "r2c 12x100"},
    {"execute_c2r_multidimension_bufferized", "c2r 100x12"},
    {"execute_r2hc_1d", "r2hc 100"},
    {"execute_r2hc_1d_discrete", "r2hc 100 istride=2"},
    {"execute_1d_r2hc_odd", "r2hc 99"},
    {"execute_r2hc_many", "r2hc 100 batch=5"},
    {"execute_hc2r_1d", "hc2r 100"},
    {"execute_hc2r_1d", "hc2r 100 ostride=2"},
    {"execute_1d_hc2r_odd", "hc2r 99"},
    {"execute_dht_1d", "dht 100"},
    {"execute_dht_1d_discrete", "dht 100 istride=2"},
    {"execute_1d_dht_odd", "dht 99"},
    {"execute_redft00_1d", "redft00 101"},
    {"execute_redft00_1d_discrete", "redft00 101 istride=3"},
    {"r2r_plan_solver_func[k]", "rodft00 99"},
    {"execute_redft01_1d", "redft01 100 inplace"},
    {"execute_redft01_1d_odd", "redft01 99"},
    {"execute_rodft01_1d", "rodft01 100 ostride=2"},
    {"execute_rodft01_1d_odd", "rodft01 99"},
    {"execute_redft10_1d", "redft10 100 inplace"},
    {"execute_redft10_1d_odd", "redft10 99"},
    {"execute_rodft10_1d", "rodft10 100 istride=2"},
    {"execute_rodft10_1d_odd", "rodft10 99"},
    {"execute_redft11_1d", "redft11 200 inplace"},
    {"execute_redft11_1d_even", "redft11 102"},
    {"execute_redft11_1d_odd", "redft11 99"},
    {"execute_rodft11_1d", "rodft11 200 ostride=2"},
    {"execute_rodft11_1d_even", "rodft11 102"},
    {"execute_rodft11_1d_odd", "rodft11 99"},
    {"execute_r2r_many_block_col_col_trans", "redft10 100 batch=32 interleaved inplace"},
    {"execute_multidimension", "redft10/rodft11 20x100 inplace"},
};

class RealScratch : public ::testing::TestWithParam<scratch_case> {};

TEST_P(RealScratch, BelongsToThePlanOrToTheCallAndWithoutItNothingIsWritten) {
    const problems::problem p = problems::parse_problem(GetParam().problem);
    const size_t in_floats = problems::span_floats(p, p.in), out_floats = problems::span_floats(p, p.out);
    floats in(std::max(in_floats, out_floats)), before(in.size(), -3.5f);
    uniform_noise noise(7);
    for (float& x : in) x = noise();
    if (p.in_place) before = in;
    const std::unique_ptr<fft_plan, void (*)(fft_plan*)> plan(
        plan_problem_text(p, in.data(), p.in_place ? in.data() : before.data()), qsl_fftf_destroy_plan);
    ASSERT_TRUE(plan);
    ASSERT_TRUE(has_execute(*plan, GetParam().execute_name)) << plan_tree_line(*plan);
    const auto output = [&] {
        floats out = before;
        plan->execute(plan.get(), p.in_place ? out.data() : in.data(), out.data());
        return out;
    };
    expect_all_or_nothing(output, before, plan_tree_line(*plan));
}

INSTANTIATE_TEST_SUITE_P(Real, RealScratch, ::testing::ValuesIn(cases));

}  // namespace
