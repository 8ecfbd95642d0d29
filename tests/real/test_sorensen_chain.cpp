// SPDX-License-Identifier: Apache-2.0
// The chain of Hermitian stages around its kernels: acceptance, records and tables word by word, storage, and the chain
// itself, run with a stage function that is written for clarity in place of the kernels.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "dft/sizes.h"
#include "dft/twiddles.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "real/sorensen_stages.h"
#include "tests/real/sorensen_problem.h"
#include "tests/support/signals.h"

namespace {

using solve_function = int (*)(fft_plan*);

struct chain_row {
    solve_function solve;
    int group;       // rows whose entries stand side by side in the first table
    int group_from;  // the first row of the first group
    std::string suffix;
};
const chain_row chain_rows[] = {
    {solve_problem_c2r_1d_sorensen_sve, 4, 0, "sve"},
    {solve_problem_c2r_1d_sorensen_neon, 2, 1, "neon"},
};

fft_plan record_of(int64_t n) {
    fft_plan p{};
    p.kind = kind_c2r;
    p.sign = sign_backward;
    p.split = interleaved_arrays;
    p.rank = 1;
    p.dims[0] = {n, 1, 1};
    p.nthreads = 1;
    return p;
}

struct free_plan {
    void operator()(fft_plan* p) const { fft_plan_free(p); }
};
using plan_handle = std::unique_ptr<fft_plan, free_plan>;

plan_handle planned(const fft_plan& problem, solve_function solve) {
    plan_handle plan(fft_plan_clone(&problem));
    if (solve(plan.get()) != accepted) return nullptr;
    return plan;
}

std::vector<uint64_t> schedule_of(int64_t n) {
    uint64_t list[radix_list_words] = {};
    radix_schedule_result result = {};
    sorensen_radix_schedule(&result, n, list);
    return {list, list + result.stage_count};
}

bool is_smooth(int64_t n) { return factor_list_strip(n, radix_order_sorensen, radix_order_sorensen_count) == 1; }

// Entry of w(k, j) in a table of `rows` rows in groups.
uint64_t entry_of(uint64_t k, uint64_t j, uint64_t r, uint64_t rows, int group, int from) {
    if (k >= uint64_t(from)) {
        const uint64_t first = (k - from) / group * group + from;
        if (first + group <= rows) return first * (r - 1) + group * (j - 1) + (k - first);
    }
    return k * (r - 1) + j - 1;
}

}  // namespace

TEST(SorensenChain, TakesSmoothContiguousLengths) {
    for (const chain_row& row : chain_rows) {
        for (int64_t n = 1; n <= 33000; ++n) {
            const bool taken = planned(record_of(n), row.solve) != nullptr;
            ASSERT_EQ(taken, n > 1 && n <= 32768 && is_smooth(n)) << n << " " << row.suffix;
            if (n == 256 && is_emulated) n = 32700;
        }
        EXPECT_EQ(planned(record_of(0), row.solve), nullptr);
        EXPECT_EQ(planned(record_of(65536), row.solve), nullptr);
        std::vector<fft_plan> others(9, record_of(1024));
        others[0].split = split_arrays;
        others[1].kind = kind_r2c;
        others[2].kind = kind_c2c;
        others[3].nthreads = 2;
        others[4].howmany_rank = 1;
        others[4].howmany[0] = {1, 513, 1024};
        others[5].rank = 2;
        others[5].dims[1] = {4, 1, 1};
        others[6].dims[0].is = 2;
        others[7].dims[0].os = 3;
        others[8].sign = sign_forward;  // no kernels
        for (size_t i = 0; i < others.size(); ++i) EXPECT_EQ(planned(others[i], row.solve), nullptr) << i;
        fft_plan no_threads = record_of(1024);
        no_threads.nthreads = 0;
        EXPECT_NE(planned(no_threads, row.solve), nullptr);
    }
}

TEST(SorensenChain, HasItsToldStorageAndNames) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : {2, 12, 24, 60, 256, 320, 1024, 8192, 32768, 2401}) {
            const plan_handle plan = planned(record_of(n), row.solve);
            ASSERT_NE(plan, nullptr) << n;
            const uint64_t s = schedule_of(n).size();
            EXPECT_EQ(plan->aux_size, (n + 1 + 12 * s) * 8) << n;
            EXPECT_EQ(plan->aux_owned, 1u);
            EXPECT_EQ(plan->buffer_size, uint64_t(n) * (s == 2 ? 8 : 16)) << n;
            EXPECT_EQ(plan->subplan_count, n == 24 ? 1 : 0) << n;
            const std::string form = s == 1 ? "one_stage_" : s == 2 ? "two_stages_" : "";
            EXPECT_EQ(std::string(plan->execute_name), "execute_c2r_1d_sorensen_" + form + row.suffix) << n;
        }
}

TEST(SorensenChain, LaysItsRecordsAndTablesOutWordByWord) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : {12, 24, 45, 60, 96, 105, 256, 1024, 2401, 3072, 32768}) {
            SCOPED_TRACE(testing::Message() << n << " " << row.suffix);
            const plan_handle plan = planned(record_of(n), row.solve);
            std::vector<uint64_t> radices = schedule_of(n);
            std::reverse(radices.begin(), radices.end());
            const auto* words = static_cast<const uint64_t*>(plan->aux);
            ASSERT_EQ(words[0], radices.size());
            const auto* tables = reinterpret_cast<const std::complex<float>*>(words + 1 + 12 * radices.size());
            uint64_t m = 1, L = n;
            for (size_t q = 0; q < radices.size(); ++q) {
                const uint64_t* w = words + 1 + 12 * q;
                const uint64_t r = radices[q];
                L /= r;
                const bool last = q + 1 == radices.size();
                EXPECT_NE(w[0], 0u);
                EXPECT_EQ(w[1], m);
                EXPECT_EQ(w[2], L);
                EXPECT_EQ(w[3], L % 2 ? (L >> 1) + 1 : L >> 1);
                EXPECT_EQ(w[4], L % 2 ? 0u : 1u);
                EXPECT_EQ(w[5], 1u);
                EXPECT_EQ(w[6], 1u);
                EXPECT_EQ(w[7], last ? 0 : reinterpret_cast<uint64_t>(tables));
                EXPECT_EQ(w[8], 0u);
                EXPECT_EQ(w[9], 0u);
                EXPECT_EQ(w[10], r);
                EXPECT_EQ(w[11], 1u);
                const uint64_t rows = q == 0 ? w[3] : L;
                for (uint64_t k = q == 0 ? row.group_from : 0; k < rows && !last; ++k)
                    for (uint64_t j = 1; j < r; ++j) {
                        float unit[2];
                        twiddle_unit(k * j * m, n, unit);
                        const uint64_t e =
                            q == 0 ? entry_of(k, j, r, rows, row.group, row.group_from) : k * (r - 1) + j - 1;
                        ASSERT_EQ(tables[e], std::complex<float>(unit[0], unit[1])) << "stage " << q << " w" << k << j;
                    }
                tables += (r - 1) * L;
                m *= r;
            }
        }
}

// Any kernels fit the chain, such as these, which compute a stage by its formula.
TEST(SorensenChain, IsTheInverseByTheFormulaOfItsStages) {
    for (const chain_row& row : chain_rows)
        for (int64_t n = 2; n <= 32768; ++n) {
            if (!is_smooth(n) || (is_emulated && n > 100 && n % 2048)) continue;
            const plan_handle plan = planned(record_of(n), row.solve);
            ASSERT_NE(plan, nullptr) << n;
            const sorensen_stage_list list = sorensen_stages(plan->aux);
            for (uint64_t q = 0; q < *list.count; ++q) list.stages[q].kernel = stage_by_formula;
            ASSERT_LT(error_of(plan.get(), n, false, run_stages), 2 * error_unit(n)) << n << " " << row.suffix;
            ASSERT_LT(error_of(plan.get(), n), 2 * error_unit(n)) << n << " " << row.suffix;
        }
}

// Where the first stage makes few branches, the record keeps the chain, and half a length's transform is executed.
TEST(SorensenChain, RunsHalfALengthWhereTheChainLeavesLanesEmpty) {
    for (const chain_row& row : chain_rows)
        for (const auto& [n, by_half] : {std::pair(6, true),
                                         {24, true},
                                         {45, false},
                                         {60, false},
                                         {80, false},
                                         {96, false},
                                         {140, false},
                                         {300, true},
                                         {512, false},
                                         {768, true},
                                         {960, true},
                                         {1000, true},
                                         {1024, false},
                                         {1536, true},
                                         {2401, false},
                                         {4000, true},
                                         {4096, false}}) {
            const plan_handle plan = planned(record_of(n), row.solve);
            ASSERT_EQ(plan->subplan_count, by_half) << n;
            if (by_half) {
                EXPECT_STREQ(plan->subplans[0]->execute_name, "execute_1d_c2r") << n;
            }
            for (const bool in_place : {false, true})
                EXPECT_LT(error_of(plan.get(), n, in_place), 1.4 * error_unit(n < 8 ? 8 : n)) << n << " " << in_place;
        }
}

TEST(SorensenChain, IsRightByItsKernels) {
    for (const chain_row& row : chain_rows)
        for (int64_t n = 2; n <= 32768; ++n) {
            if (!is_smooth(n) || (is_emulated && n > 128 && n % (n > 1024 ? 4096 : 48))) continue;
            const plan_handle plan = planned(record_of(n), row.solve);
            ASSERT_NE(plan, nullptr) << n;
            const double bound = 1.4 * error_unit(n < 8 ? 8 : n);
            ASSERT_LT(error_of(plan.get(), n), bound) << n << " " << row.suffix;
            ASSERT_LT(error_of(plan.get(), n, false, run_stages), bound) << n << " " << row.suffix;
        }
}
