// SPDX-License-Identifier: Apache-2.0
// Layouts whose transforms share elements: an input that is read more than once is as good as any, an output that is
// written more than once means nothing. But whatever the layout, nothing outside the addressed elements is written, by
// planning or by execution.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/batch/reshape_support.h"
#include "tests/support/emulated.h"
#include "tests/support/signals.h"
#include "tests/support/steered_clock.h"

namespace {

using floats = std::vector<float>;

struct kind_case {
    uint32_t kind;
    uint32_t r2r_kind;
};

constexpr kind_case kinds[] = {
    {kind_c2c, 0},           {kind_r2c, 0},           {kind_c2r, 0},           {kind_r2r, r2r_r2hc},
    {kind_r2r, r2r_hc2r},    {kind_r2r, r2r_dht},     {kind_r2r, r2r_redft00}, {kind_r2r, r2r_redft01},
    {kind_r2r, r2r_redft10}, {kind_r2r, r2r_redft11}, {kind_r2r, r2r_rodft00}, {kind_r2r, r2r_rodft01},
    {kind_r2r, r2r_rodft10}, {kind_r2r, r2r_rodft11},
};

// Kernels, chains of one to four stages, straight kernels, large prime factors.
constexpr int64_t lengths[] = {1, 2, 3, 4, 7, 8, 16, 24, 37, 41, 60, 64, 82, 83, 100, 128, 210, 249, 945};

// The addressed elements of one side: every index of the transform and of its batch with its step.
struct side {
    std::vector<fft_dim> indices;  // count and step, in `n` and `is`
    int64_t width;                 // floats of an element
    int64_t reach() const {
        int64_t last = 0;
        for (const fft_dim& d : indices) last += (d.n - 1) * d.is;
        return width * (last + 1);
    }
};

side side_of(const problem& p, bool input) {
    const bool complex_side = p.kind == kind_c2c || p.kind == (input ? kind_c2r : kind_r2c);
    side s = {{}, complex_side ? 2 : 1};
    for (const fft_dim& d : p.dims) s.indices.push_back({d.n, input ? d.is : d.os, 0});
    if (complex_side && p.kind != kind_c2c) s.indices.back().n = s.indices.back().n / 2 + 1;
    for (const fft_dim& d : p.batch) s.indices.push_back({d.n, input ? d.is : d.os, 0});
    return s;
}

int64_t points(const problem& p) {
    int64_t count = 1;
    for (const fft_dim& d : p.dims) count *= d.n;
    return count;
}

// An array between zones as long as the whole work of a batch; the addressed floats of a side carry a mark.
struct marked_array {
    size_t zone;
    floats data, before;
    std::vector<char> written;

    marked_array(const problem& p, int64_t reach, uint64_t seed)
        : zone(16 * static_cast<size_t>(points(p)) + 64),
          data(2 * zone + static_cast<size_t>(reach)),
          written(data.size()) {
        uniform_noise noise(seed);
        for (float& x : data) x = noise();
        before = data;
    }
    float* begin() { return data.data() + zone; }
    void mark(const side& s) {
        for_each_position(s.indices, [&](int64_t at, int64_t) {
            for (int64_t part = 0; part < s.width; ++part) written[zone + static_cast<size_t>(s.width * at + part)] = 1;
        });
    }
    // The first float that was changed though it isn't addressed, relative to the array, or "".
    std::string stray() const {
        for (size_t i = 0; i < data.size(); ++i)
            if (!written[i] && std::memcmp(&data[i], &before[i], sizeof(float)) != 0)
                return "float " + std::to_string(static_cast<int64_t>(i) - static_cast<int64_t>(zone));
        return "";
    }
};

struct tally {
    int64_t plans = 0, refused = 0;
};

void check(const problem& p, const kind_case& kind, uint64_t seed, tally& count) {
    const int64_t in_reach = side_of(p, true).reach(), out_reach = side_of(p, false).reach();
    marked_array in(p, p.in_place ? std::max(in_reach, out_reach) : in_reach, 1), apart(p, out_reach, 2);
    marked_array& out = p.in_place ? in : apart;
    out.mark(side_of(p, false));
    fft_plan* record = p.record(in.begin(), out.begin()).release();
    for (int k = 0; k < record->rank; ++k) record->r2r_kind[k] = kind.r2r_kind;
    steered_clock::start(seed);
    const bool planned = plan_problem(&record) == accepted;
    const plan_pointer plan(record);
    ++count.plans;
    count.refused += !planned;
    const std::string what = p.text() + " r2r kind " + std::to_string(kind.r2r_kind) + " seed " + std::to_string(seed) +
                             (planned ? "\n" + tree(*plan) : "");
    EXPECT_EQ(in.stray(), "") << "of the input written by planning: " << what;
    EXPECT_EQ(out.stray(), "") << "of the output written by planning: " << what;
    if (!planned) return;
    plan->execute(plan.get(), in.begin(), out.begin());
    with_own_scratch([&] { plan->execute(plan.get(), in.begin(), out.begin()); });
    EXPECT_EQ(in.stray(), "") << "of the input written by execution: " << what;
    EXPECT_EQ(out.stray(), "") << "of the output written by execution: " << what;
}

constexpr int64_t steps[] = {1, 2, 4};

void check_layouts(const kind_case& kind, int64_t n, int64_t items, uint32_t flags, uint64_t& seed, tally& count) {
    for (const int64_t is : steps)
        for (const int64_t os : steps)
            for (const int64_t in_distance : steps)
                for (const int64_t out_distance : steps) {
                    ++seed;
                    if (seed % (kind.kind == kind_c2c ? 2 : 23) || seed % (flags ? 7 : 1)) continue;
                    if (is_emulated && seed % 31) continue;
                    problem p = {.kind = kind.kind,
                                 .dims = {{n, is, os}},
                                 .batch = {{items, in_distance, out_distance}},
                                 .sign = kind.kind == kind_c2r ? sign_backward : sign_forward,
                                 .flags = flags};
                    check(p, kind, seed, count);
                    p.in_place = true;
                    check(p, kind, seed, count);
                }
}

// Half of the layouts of complex transforms, and some of the others; of measured plans fewer.
void check_all(uint32_t flags) {
    tally count;
    uint64_t seed = 0;
    for (const kind_case& kind : kinds)
        for (const int64_t n : lengths)
            for (int64_t items = 1; items <= 9; ++items) {
                if (testing::Test::HasFailure()) return;
                if (kind.r2r_kind != r2r_redft00 || n > 1) check_layouts(kind, n, items, flags, seed, count);
            }
    testing::Test::RecordProperty("plans", static_cast<int>(count.plans));
    EXPECT_GT(count.plans, 2 * count.refused);
}

}  // namespace

TEST(SharedOutputs, NothingElseIsWrittenByRules) { check_all(0); }
TEST(SharedOutputs, NothingElseIsWrittenByMeasuredPlans) { check_all(plan_flag_measured); }

// Transforms one element apart are what a forgotten distance gives.
TEST(SharedOutputs, OfAForgottenDistanceAreAllThatIsWritten) {
    tally count;
    for (const uint32_t flags : {uint32_t{0}, uint32_t{plan_flag_measured}})
        for (const int64_t n : {210, 945, 1000, 4096})
            for (const int64_t items : {2, 3, 4, 6, 8, 9})
                for (uint64_t seed = 1; seed <= (flags && !is_emulated ? 4 : 1); ++seed)
                    check({.dims = {{n, 1, 1}}, .batch = {{items, 1, 1}}, .flags = flags}, {kind_c2c, 0}, seed, count);
}

// Rows and columns of two dimensions, interleaved and on top of each other.
TEST(SharedOutputs, OfTwoDimensionsAreAllThatIsWritten) {
    tally count;
    uint64_t seed = 0;
    for (const kind_case& kind : kinds)
        for (const auto& [n0, n1] : {std::pair<int64_t, int64_t>{3, 8}, {4, 4}, {8, 12}, {5, 64}, {16, 9}, {41, 6}})
            for (const int64_t items : {1, 2, 4, 5})
                for (const int64_t out_row : {int64_t{1}, int64_t{2}, n1, n1 + 2})
                    for (const int64_t out_step : {1, 2, 3})
                        for (const int64_t distance : {1, 2, 40}) {
                            const uint32_t flags = ++seed % 7 ? 0u : uint32_t{plan_flag_measured};
                            if (seed % (kind.kind == kind_r2r ? 17 : 3) || (is_emulated && seed % 31)) continue;
                            const int64_t in_row = seed % 2 ? out_row : n1, in_step = seed % 5 ? out_step : 1;
                            problem p = {.kind = kind.kind,
                                         .dims = {{n0, in_row, out_row}, {n1, in_step, out_step}},
                                         .batch = {{items, seed % 3 ? distance : 100, distance}},
                                         .sign = kind.kind == kind_c2r ? sign_backward : sign_forward,
                                         .flags = flags};
                            check(p, kind, seed, count);
                            p.in_place = true;
                            check(p, kind, seed, count);
                            if (HasFailure()) return;
                        }
    EXPECT_GT(count.plans, 2 * count.refused);
}
