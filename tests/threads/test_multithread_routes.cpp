// SPDX-License-Identifier: Apache-2.0
// dft_many_multithread: what it takes, how it cuts, and what its parts inherit. Batches of single numbers (rank 0) are
// planned where the lengths don't matter.
#include "include/qfftf.h"
#include "planner/solvers.h"
#include "support/start_program.h"
#include "tests/batch/reshape_support.h"
#include "threads/partition.h"
#include "threads/threads.h"

#include <gtest/gtest.h>

namespace {

alignas(64) float in_array[16], out_array[16];

plan_pointer taken(const problem& p) {
    plan_pointer record = p.record(in_array, p.in_place ? in_array : out_array);
    return solve_problem_dft_many_multithread(record.get()) == accepted ? std::move(record) : nullptr;
}

// `items` transforms of `points` points each, of rank 0: a batch in a batch.
problem numbers(int64_t items, int64_t points, int64_t nthreads) {
    return {.dims = {}, .batch = {{items, points, points}, {points, 1, 1}}, .nthreads = nthreads};
}

std::vector<int64_t> counts(const fft_plan& p) {
    std::vector<int64_t> all;
    for (int i = 0; i < p.subplan_count; ++i) all.push_back(p.subplans[i]->howmany[0].n);
    return all;
}

class Routes : public testing::Test {
protected:
    void SetUp() override { set_affinity("SPREAD"); }
    void TearDown() override { qsl_fftf_cleanup_threads(); }
    static void set_affinity(const char* mode) {
        setenv("QSL_FFT_AFFINITY", mode, 1);
        qsl_fftf_plan_with_nthreads(1);
    }
};

TEST_F(Routes, PartsAreTheLoopsPartitions) {
    struct {
        int64_t items, nthreads;
        std::vector<int64_t> expected;
    } const cases[] = {
        {10, 2, {8, 2}},   {100, 4, {32, 32, 32, 4}}, {3, 8, {3}},
        {8, 64, {4, 4}},   {64, 4, {16, 16, 16, 16}}, {65, 4, {32, 32, 1}},  // more than 16 per thread: multiples of 16
        {32, 2, {16, 16}}, {33, 2, {32, 1}},          {1, 2, {1}},
    };
    for (const auto& c : cases) {
        const plan_pointer p = taken(numbers(c.items, 1024, c.nthreads));
        ASSERT_TRUE(p) << c.items << " items on " << c.nthreads << " threads";
        EXPECT_STREQ(p->execute_name, "execute_multithread");
        EXPECT_EQ(counts(*p), c.expected) << c.items << " items on " << c.nthreads << " threads";
        for (int i = 0; i < p->subplan_count; ++i) EXPECT_EQ(p->subplans[i]->nthreads, 1);
    }
}

// Also where a sum of local counts has gone above the most partitions of a loop.
TEST_F(Routes, PartsFollowTheLoopForAllCounts) {
    for (int64_t nthreads : {2, 3, 5, 8, 100, 512, 700})
        for (int64_t items = 1; items <= 1500; items += items < 70 ? 1 : 97) {
            const plan_pointer p = taken(numbers(items, 2000, nthreads));
            ASSERT_TRUE(p);
            const uint64_t t = thread_limit_nthreads(nthreads);
            const partition_sizes s = cut_into_partitions(items, t, static_cast<uint64_t>(items) > 16 * t ? 16 : 4);
            ASSERT_EQ(p->subplan_count, static_cast<int>(s.parts)) << items << " items on " << nthreads;
            EXPECT_EQ(p->nthreads, static_cast<int64_t>(t));
            int64_t sum = 0;
            for (int64_t n : counts(*p)) sum += n;
            EXPECT_EQ(sum, items);
        }
}

TEST_F(Routes, SmallProblemsStayOnOneThread) {
    EXPECT_TRUE(taken(numbers(8, 160, 2)));   // 1280 in 2 parts of 640
    EXPECT_FALSE(taken(numbers(32, 40, 8)));  // 1280 in 8 parts of 160
    EXPECT_TRUE(taken(numbers(61, 21, 16)));  // 1281 in 16 parts
    EXPECT_TRUE(taken(numbers(8, 65, 2)));    // 520 in 2 parts of 260
    EXPECT_FALSE(taken(numbers(8, 64, 2)));   // 512 in 2 parts of 256
    EXPECT_TRUE(taken(numbers(3, 86, 8)));    // 258 in one part
}

TEST_F(Routes, RefusesWhatOthersDo) {
    EXPECT_FALSE(taken(numbers(100, 1024, 1)));
    EXPECT_FALSE(taken(numbers(100, 1024, 0)));
    EXPECT_FALSE(taken(numbers(0, 1024, 4)));
    EXPECT_FALSE(taken({.dims = {{4096, 1, 1}}, .batch = {}, .nthreads = 4}));  // no batch
    problem in_place = numbers(100, 1024, 4);
    in_place.in_place = true;
    EXPECT_FALSE(taken(in_place));  // rank 0
    plan_pointer split = numbers(100, 1024, 4).record(in_array, out_array);
    split->split = split_arrays;
    EXPECT_EQ(solve_problem_dft_many_multithread(split.get()), refused);
}

TEST_F(Routes, FourTransformsSideBySideFillTheLanes) {
    const problem side_by_side = {.dims = {{1000, 4, 4}}, .batch = {{4, 1, 1}}, .nthreads = 2};
    for (uint32_t kind : {kind_c2c, kind_c2c_large_piece}) {
        problem p = side_by_side;
        p.kind = kind;
        EXPECT_FALSE(taken(p)) << "kind " << kind;
    }
    // Each differs in one thing, and is taken or refused for another reason: by what its part can be planned as.
    problem rows = side_by_side;
    rows.dims = {{1000, 1, 1}};
    rows.batch = {{4, 1000, 1000}};
    EXPECT_TRUE(taken(rows));
    problem long_prime = side_by_side;
    long_prime.dims[0].n = 41 * 25;
    EXPECT_TRUE(taken(long_prime));
    problem five = side_by_side;
    five.dims = {{1000, 5, 5}};
    five.batch[0].n = 5;
    EXPECT_TRUE(taken(five));
}

TEST_F(Routes, PartsThatWouldMeetInPlaceAreRefused) {
    problem p = {.dims = {{64, 1, 1}}, .batch = {{64, 64, 128}}, .in_place = true, .nthreads = 4};
    EXPECT_FALSE(taken(p));
    p.batch[0].os = 64;
    EXPECT_TRUE(taken(p));
    p = {.dims = {{64, 1, 64}}, .batch = {{64, 64, 1}}, .in_place = true, .nthreads = 4};
    EXPECT_FALSE(taken(p));
}

// With placement off, threads that are left over go down to the parts.
TEST_F(Routes, SpareThreadsGoDownWithoutPlacement) {
    set_affinity("NO");
    const auto sub = [](int64_t items, int64_t nthreads) {
        return taken(numbers(items, 1024, nthreads))->subplans[0]->nthreads;
    };
    EXPECT_EQ(sub(8, 64), static_cast<int64_t>(thread_limit_nthreads(64) / 2));
    EXPECT_EQ(sub(100, 4), 1);
    EXPECT_EQ(sub(10, 5), 1);
    EXPECT_EQ(sub(12, 8), 2);
    EXPECT_EQ(sub(3, 8), 1);  // one part
    set_affinity("CLOSE");
    EXPECT_EQ(sub(8, 64), 1);
}

TEST_F(Routes, PartsBorrowSlicesOfTheTable) {
    char table[8 * 40];
    plan_pointer p = numbers(40, 1024, 4).record(in_array, out_array);
    p->aux = table;
    p->aux_size = sizeof table;
    p->aux_owned = 0;
    ASSERT_EQ(solve_problem_dft_many_multithread(p.get()), accepted);
    ASSERT_EQ(counts(*p), (std::vector<int64_t>{12, 12, 12, 4}));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(p->subplans[i]->aux, table + 8 * 12 * i);
        EXPECT_EQ(p->subplans[i]->aux_size, 0u);
        EXPECT_EQ(p->subplans[i]->aux_owned, 0u);
    }
}

// Numbers of rank 0 are copied, so that each part can be seen at its place in arrays of different layouts.
TEST_F(Routes, PartsWorkOnTheirOwnItems) {
    for (uint32_t kind : {kind_c2c, kind_r2r})
        for (int64_t nthreads : {2, 3, 5}) {
            const int64_t items = 50, points = 30, floats = kind == kind_c2c ? 2 : 1;
            const problem p = {
                .kind = kind, .dims = {}, .batch = {{items, 35, 1}, {points, 1, 60}}, .nthreads = nthreads};
            std::vector<float> in(p.reach(true) * floats), out(p.reach(false) * floats, -1), expected = out;
            for (size_t i = 0; i < in.size(); ++i) in[i] = static_cast<float>(i);
            for_each_position(p.batch, [&](int64_t from, int64_t to) {
                for (int64_t f = 0; f < floats; ++f) expected[to * floats + f] = in[from * floats + f];
            });
            const plan_pointer plan = p.plan(in.data(), out.data());
            ASSERT_TRUE(plan);
            ASSERT_STREQ(plan->execute_name, "execute_multithread");
            plan->execute(plan.get(), in.data(), out.data());
            EXPECT_EQ(out, expected) << p.text() << " on " << nthreads << " threads";
        }
}

// The first plan that could use several threads decides for the process: close below 8192 elements per thread.
TEST(PlannedMode, FollowsTheWorkPerThread) {
    struct {
        const char* threads_and_problems;
        const char* modes;
    } const cases[] = {
        {"4 64 40", "1\n"},
        {"4 1023 32", "1\n"},  // 8184
        {"4 1024 32", "0\n"},  // 8192
        {"4 64 40 1024 64", "1\n1\n"},
        {"4 1024 64 64 40", "0\n0\n"},
        {"1 64 40", "0\n"},              // one thread: nobody asks
        {"2 16384 0", "1\n"},            // r2c: half of its length counts, 4096 per thread
        {"2 32768 0", "0\n"},            // 8192
        {"2 8190 0 32768 0", "0\n0\n"},  // too short for several threads
    };
    for (const auto& c : cases) {
        const program_result got = start_program("-u QSL_FFT_AFFINITY -u QSL_FFT_THREAD_TYPE",
                                                 std::string(PLANNED_MODE " ") + c.threads_and_problems);
        EXPECT_EQ(got.exit_code, 0) << got.err;
        EXPECT_EQ(got.out, c.modes) << c.threads_and_problems;
    }
    EXPECT_EQ(start_program("QSL_FFT_AFFINITY=SPREAD", PLANNED_MODE " 4 64 40").out, "0\n");
    EXPECT_EQ(start_program("QSL_FFT_AFFINITY=NO", PLANNED_MODE " 4 64 40").out, "2\n");
    EXPECT_EQ(start_program("QSL_FFT_THREAD_TYPE=OMP", PLANNED_MODE " 4 64 40").out, "2\n");
}

}  // namespace
