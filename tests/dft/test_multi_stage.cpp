// SPDX-License-Identifier: Apache-2.0
// The chain of stages: acceptance, the layout of aux and buffer, the three execute functions, both instruction sets.
#include "dft/sizes.h"
#include "dft/stage_list.h"
#include "dft/stage_lookup.h"
#include "dft/twiddles.h"
#include "kernels/lookup.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "tests/dft/problems.h"

#include <cstring>

namespace {

struct chain_row {
    planned::solve_function solve;
    const stage_isa& isa;
    std::string suffix;
};
const chain_row chain_rows[] = {
    {solve_problem_c2c_1d_sve, stages_sve, "sve"},
    {solve_problem_c2c_1d_neon, stages_neon, "neon"},
};

// The lists of both plans of a problem differ in place and kernels only.
std::vector<stage_record> stages_of_plan(const planned& plan, uint64_t count) {
    const char* start = static_cast<char*>(plan->aux) + (count == 2 ? 0 : 8);
    std::vector<stage_record> stages(count);
    memcpy(stages.data(), start, count * sizeof(stage_record));
    return stages;
}

std::vector<uint64_t> schedule_of(const fft_plan& record) {
    uint64_t list[radix_list_words] = {};
    radix_schedule_result result = {};
    radix_schedule(&record, &result, record.dims[0].n, list);
    return {list, list + result.stage_count};
}

std::string expected_execution(const complex_problem& p, size_t stages, const std::string& suffix) {
    if (stages == 2) return "execute_1d_two_stages_" + suffix;
    return (p.is == 1 && p.os == 1 ? "execute_1d_" : "execute_1d_discrete_") + suffix;
}

std::vector<complex_problem> layouts(int64_t n, int64_t lanes) {
    std::vector<complex_problem> problems;
    for (int64_t sign : {-1, 1}) {
        problems.push_back({n, sign, 1, 1});
        problems.push_back({n, sign, 3, 1});
        problems.push_back({n, sign, 1, 2});
        problems.push_back({n, sign, lanes, lanes, false, 0, lanes});
        problems.push_back({n, sign, lanes + 1, lanes + 3, false, 0, lanes});
    }
    return problems;
}

const int64_t chain_lengths[] = {2, 7, 22, 36, 64, 128, 210, 1000, 1024, 2048, 4096, 5 * 7 * 11 * 13};

}  // namespace

TEST(MultiStage, TakesSmoothLengthsSinglyAndFourSideBySide) {
    for (const chain_row& row : chain_rows) {
        const int64_t lanes = row.isa.lanes;
        for (int64_t n : {2, 22, 32, 64, 4096}) {
            EXPECT_TRUE(bool(planned(record_of({n}), row.solve))) << n;
            EXPECT_TRUE(bool(planned(record_of({n, 1, 5, 2}), row.solve))) << n;
            EXPECT_TRUE(bool(planned(record_of({n, 1, lanes, lanes, false, 0, lanes}), row.solve))) << n;
            EXPECT_FALSE(bool(planned(record_of({n, 1, 3, 3, false, 0, 3}), row.solve))) << n;
            EXPECT_FALSE(bool(planned(record_of({n, 1, 6 - lanes, 6 - lanes, false, 0, 6 - lanes}), row.solve))) << n;
        }
        for (int64_t n : {0, 1, 41, 82}) {
            EXPECT_FALSE(bool(planned(record_of({n}), row.solve))) << n;
            EXPECT_FALSE(bool(planned(record_of({n, 1, lanes, lanes, false, 0, lanes}), row.solve))) << n;
        }
        std::vector<fft_plan> others(6, record_of({64}));
        others[0].kind = kind_c2c_large_piece;
        others[1].split = split_arrays;
        others[2].rank = 2;
        others[2].dims[1] = {4, 1, 1};
        others[3].howmany_rank = 2;
        others[4] = record_of({64, 1, lanes, lanes, false, 0, lanes});
        others[4].howmany[0].is = 2;
        others[5] = record_of({64, 1, lanes, lanes, false, 0, lanes});
        others[5].howmany[0].os = 2;
        for (size_t i = 0; i < others.size(); ++i) EXPECT_FALSE(bool(planned(others[i], row.solve))) << i;
    }
}

TEST(MultiStage, HasItsToldStorageAndNames) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : chain_lengths)
            for (const complex_problem& p : layouts(n, row.isa.lanes)) {
                const fft_plan record = record_of(p);
                const planned plan(record, row.solve);
                ASSERT_TRUE(bool(plan)) << description(p, nullptr);
                const size_t s = schedule_of(record).size();
                EXPECT_EQ(plan.execution(), expected_execution(p, s, row.suffix));
                EXPECT_EQ(plan->aux_size, (n + 9 + 16 * s) * 8) << description(p, plan.get());
                EXPECT_EQ(plan->aux_owned, 1u);
                const uint64_t arrays = p.is == 1 && p.os == 1 ? 1 : 2;
                EXPECT_EQ(plan->buffer_size, 8 * n * arrays * (p.lanes ? p.lanes : 1)) << description(p, plan.get());
                EXPECT_EQ(plan->subplan_count, 0);
            }
}

// Transforms that stand in lanes with unit strides overlap: what they share holds no working array.
TEST(MultiStage, SharedOutputsAreNoWorkingArray) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : chain_lengths) {
            const complex_problem p = {n, -1, 1, 1, false, 0, row.isa.lanes};
            const planned plan(record_of(p), row.solve);
            EXPECT_EQ(plan->buffer_size, uint64_t(16 * n * row.isa.lanes)) << description(p, plan.get());
        }
}

// No NEON stages; registers of four lanes, a last radix of 4, 8, 12, 16, 20 or 32, and rows of the stage in front of it
// that fill groups of four.
static bool passes_blocks(const stage_isa& isa, const std::vector<uint64_t>& radices) {
    const size_t s = radices.size();
    if (&isa == &stages_neon || !isa.passes_blocks || s < 2) return false;
    uint64_t done = 1;
    for (size_t q = 0; q + 2 < s; ++q) done *= radices[q];
    const uint64_t rows = s == 2 ? radices[0] : done, last = radices[s - 1];
    const auto listed = {4, 8, 12, 16, 20, 32};
    return rows % 4 == 0 && std::find(listed.begin(), listed.end(), last) != listed.end();
}

TEST(MultiStage, LaysItsRecordsOutWordByWord) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : chain_lengths)
            for (const complex_problem& p : layouts(n, row.isa.lanes)) {
                SCOPED_TRACE(description(p, nullptr) + " " + row.suffix);
                const fft_plan record = record_of(p);
                const planned plan(record, row.solve);
                const std::vector<uint64_t> radices = schedule_of(record);
                const size_t s = radices.size();
                const char* aux = static_cast<char*>(plan->aux);
                if (s != 2) {
                    EXPECT_EQ(*static_cast<uint64_t*>(plan->aux), s);
                }
                const char* tables = s == 2 ? aux + 256 : aux + (8 + 128 * s + 63) / 64 * 64;
                uint64_t done = 1;
                const std::vector<stage_record> stages = stages_of_plan(plan, s);
                for (size_t q = 0; q < s; ++q) {
                    const stage_record& stage = stages[q];
                    EXPECT_EQ(stage.radix, radices[q]) << q;
                    EXPECT_EQ(stage.done, done) << q;
                    EXPECT_EQ(stage.rest, n / done / radices[q]) << q;
                    EXPECT_EQ(stage.sign, p.sign) << q;
                    const int64_t between = p.lanes ? p.lanes : 1;
                    EXPECT_EQ(stage.is, q == 0 ? p.is : between) << q;
                    EXPECT_EQ(stage.os, q + 1 == s ? p.os : between) << q;
                    EXPECT_EQ(reinterpret_cast<const char*>(stage.twiddles), tables) << q;
                    if (q > 0) tables += 8 * (stage.radix - 1) * stage.done;
                    done *= radices[q];
                    const straight_kernels kernels = straight_kernels_of(stage);
                    const bool four_lanes = q == 0 && p.lanes == 4, contiguous = p.lanes == 0 && p.is == 1 && p.os == 1;
                    EXPECT_EQ(kernels.quad, four_lanes ? lookup_straight_quad_sve(&record, n) : nullptr);
                    EXPECT_EQ(kernels.rows, q == 0 && contiguous ? lookup_straight_rows_neon(&record, n) : nullptr);
                    const bool in_blocks = contiguous && q + 2 >= s && passes_blocks(row.isa, radices);
                    EXPECT_EQ(is_in_blocks(&stage), in_blocks) << q;
                    for (size_t i = word_of_blocks + 1; i < std::size(stage.spare); ++i) EXPECT_EQ(stage.spare[i], 0u);
                }
                EXPECT_LE(tables, aux + plan->aux_size);
            }
}

// Other stages have plain rows. So has the last one, unless its kernel runs across rows.
TEST(MultiStage, HasItsTablesBitByBit) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : chain_lengths)
            for (const complex_problem& p : layouts(n, row.isa.lanes)) {
                const fft_plan record = record_of(p);
                const planned plan(record, row.solve);
                const std::vector<stage_record> stages = stages_of_plan(plan, schedule_of(record).size());
                const bool across_rows = !p.lanes && p.is == 1 && p.os == 1;
                for (size_t q = 1; q < stages.size(); ++q) {
                    const stage_record& stage = stages[q];
                    const bool interleaved = across_rows && q + 1 == stages.size();
                    std::vector<float> expected(2 * (stage.radix - 1) * stage.done);
                    (interleaved ? (row.suffix == "sve" ? twiddle_fill_lanes4 : twiddle_fill_lanes2)
                                 : twiddle_fill_rows)(expected.data(), n, stage.radix, stage.done, stage.rest, p.sign);
                    EXPECT_EQ(memcmp(expected.data(), stage.twiddles, expected.size() * sizeof(float)), 0)
                        << description(p, plan.get()) << " stage " << q;
                }
            }
}

TEST(MultiStage, SwitchesAreCopiedInSveListsOnly) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : {7, 22, 4096}) {
            fft_plan record = record_of({n});
            record.double_is = 1;
            record.double_os = 1;
            const size_t s = schedule_of(record).size();
            const std::vector<stage_record> stages = stages_of_plan(planned(record, row.solve), s);
            for (size_t q = 0; q < s; ++q) {
                EXPECT_EQ(stages[q].double_is, row.isa.copies_switches && q == 0) << n;
                EXPECT_EQ(stages[q].double_os, row.isa.copies_switches && q + 1 == s) << n;
            }
        }
}

TEST(MultiStage, EveryFormComputes) {
    for (int64_t n : chain_lengths) {
        const sample expected(n);
        for (const chain_row& row : chain_rows)
            for (complex_problem p : layouts(n, row.isa.lanes))
                for (bool in_place : {false, true}) {
                    p.in_place = in_place;
                    EXPECT_TRUE(computes(p, expected, row.solve));
                }
    }
}

TEST(MultiStage, IsReachedInTheFormThatTheLayoutAsksFor) {
    const auto execution = [](const complex_problem& p) { return planned(record_of(p)).execution(); };
    EXPECT_EQ(execution({64}), "execute_1d_two_stages_sve");
    EXPECT_EQ(execution({22}), "execute_1d_two_stages_sve");
    EXPECT_EQ(execution({4096}), "execute_1d_sve");
    EXPECT_EQ(execution({1024}), "execute_1d_two_stages_sve");
    EXPECT_EQ(execution({128, -1, 3, 1}), "execute_1d_two_stages_sve");
    EXPECT_EQ(execution({1000, -1, 1, 2}), "execute_1d_discrete_sve");
    EXPECT_EQ(execution({32768}), "execute_1d_sve");
    EXPECT_EQ(planned(record_of({128, -1, 3, 1}))->buffer_size, 16u * 128);
}

TEST(MultiStage, AStridedPlanTakesStridedKernelsAtBothEnds) {
    const planned plan(record_of({128, -1, 3, 1}), solve_problem_c2c_1d_sve);
    const std::vector<stage_record> stages = stages_of_plan(plan, 2);
    stage_record first = stages[0], last = stages[1];
    stage_lookup_first_neon(&first, plan.get());
    stage_lookup_last_neon(&last, plan.get());
    EXPECT_EQ(stages[0].kernel, first.kernel);
    EXPECT_EQ(stages[1].kernel, last.kernel);
}

// Whatever order the clock prefers, the radices are those of the schedule.
TEST(MultiStage, AMeasuredPlanKeepsTheRadices) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : {7, 22, 210, 1000})
            for (bool in_place : {false, true}) {
                EXPECT_TRUE(computes({n, -1, 1, 1, in_place, plan_flag_measured}, row.solve));
                EXPECT_TRUE(computes({n, 1, 2, 3, in_place, plan_flag_measured}, row.solve));
            }
    std::vector<std::complex<float>> array(1000);
    fft_plan record = record_of({1000, -1, 1, 1, true, plan_flag_measured});
    record.in = record.out = reinterpret_cast<float*>(array.data());
    std::vector<uint64_t> radices;
    for (const stage_record& stage : stages_of_plan(planned(record, solve_problem_c2c_1d_sve), 3))
        radices.push_back(stage.radix);
    std::sort(radices.rbegin(), radices.rend());
    EXPECT_EQ(radices, schedule_of(record));
}

TEST(MultiStage, LengthsWithoutRoomRefuse) {
    for (const chain_row& row : chain_rows)
        for (int64_t n : {int64_t{1} << 49, int64_t{1} << 58, int64_t{1} << 61, int64_t{1} << 62})
            EXPECT_FALSE(bool(planned(record_of({n}), row.solve))) << n;
}
