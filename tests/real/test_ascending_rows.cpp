// SPDX-License-Identifier: Apache-2.0
// Batches of real rows in place whose distances differ on the two sides: where the rows, run in ascending order, never
// overtake an input that is still to be read, the rows of the table that run them so take them; elsewhere they don't;
// and either way the results are those of a plan out of place.
#include <gtest/gtest.h>

#include <cstring>

#include "kernels/real_kernels.h"
#include "planner/solvers.h"
#include "tests/real/real_problem.h"
#include "tests/support/signals.h"

namespace {

using floats = std::vector<float>;
using solve_function = int (*)(fft_plan*);

int64_t last_written(const real_problem& p, int64_t row) { return p.position(false, row, p.row_floats(false) - 1); }
int64_t first_read(const real_problem& p, int64_t row) { return p.position(true, row, 0); }

// By the rows themselves: groups of four are read whole before they are written.
bool overtakes(const real_problem& p, bool in_groups) {
    const int64_t count = p.rows.n, whole = in_groups ? count / 4 * 4 : 0;
    for (int64_t row = 0; row + 1 < count; ++row) {
        if (row < whole && row % 4 != 3) continue;
        for (int64_t later = row + 1; later < count; ++later)
            if (last_written(p, row) >= first_read(p, later)) return true;
    }
    return false;
}

floats result(const real_problem& p, bool in_place) {
    const size_t size = static_cast<size_t>(std::max(p.span(true), p.span(false)));
    floats in(size), out(size);
    uniform_noise noise(5);
    for (float& x : in) x = noise();
    real_problem q = p;
    q.in_place = in_place;
    const plan_pointer plan = q.plan(in.data(), out.data());
    if (!plan) return {};
    plan->execute(plan.get(), plan->in, plan->out);
    floats outputs;
    for (int64_t row = 0; row < p.rows.n; ++row)
        for (int64_t f = 0; f < p.row_floats(false); ++f)
            outputs.push_back((in_place ? in : out)[static_cast<size_t>(p.position(false, row, f))]);
    return outputs;
}

double difference(const floats& a, const floats& b) {
    double square = 0, size = 1e-30;
    for (size_t i = 0; i < a.size(); ++i) {
        square += (double(a[i]) - b[i]) * (double(a[i]) - b[i]);
        size += double(b[i]) * b[i];
    }
    return std::sqrt(square / size);
}

bool outputs_meet(const real_problem& p) { return p.rows.os * p.floats_per_element(false) < p.row_floats(false); }

struct tally {
    int taken = 0, left = 0;
};

// `gate`: what the row of the table demands besides.
void check(const real_problem& p, solve_function solver, bool gate, bool in_groups, tally& count) {
    SCOPED_TRACE(testing::Message() << p);
    float array[2];
    const bool taken = bool(p.taken_by(solver, array, array));
    const bool expected = gate && !overtakes(p, in_groups);
    if (expected) {
        EXPECT_TRUE(taken);
    }
    ++(taken ? count.taken : count.left);
    if (outputs_meet(p)) return;
    const floats in_place = result(p, true), apart = result(p, false);
    ASSERT_EQ(in_place.size(), apart.size());
    EXPECT_LT(difference(in_place, apart), 1e-6);
}

}  // namespace

TEST(AscendingRows, AreRightInPlaceForOnePoint) {
    tally r2c, c2r;
    for (int64_t is = 1; is <= 12; ++is)
        for (int64_t os = 1; os <= 12; ++os)
            for (int64_t count = 2; count <= 7; ++count) {
                real_problem p = {.kind = kind_r2c, .dim = {1, 1, 1}, .rows = {count, is, os}, .in_place = true};
                check(p, solve_problem_r2c_nop, is != 1, false, r2c);
                p.kind = kind_c2r;
                check(p, solve_problem_c2r_nop, true, false, c2r);
            }
    for (const tally& t : {r2c, c2r}) {
        EXPECT_GT(t.taken, 200);
        EXPECT_GT(t.left, 100);
    }
}

TEST(AscendingRows, AreRightInPlaceForManyRows) {
    tally t;
    for (const int64_t n : {2, 3, 4, 5, 8, 9, 16, 30, 60, 100, 270, 540})
        for (int64_t count = 2; count <= 9; ++count) {
            const int64_t half = n / 2 + 1;
            for (const int64_t os : {int64_t{1}, half, half + 1, half + 3})
                for (const int64_t more : {-2, 0, 1, 2, 3, 7, 40, 700}) {
                    const real_problem p = {
                        .kind = kind_r2c, .dim = {n, 1, 1}, .rows = {count, 2 * os + more, os}, .in_place = true};
                    if (p.rows.is < 1) continue;
                    const bool grouped = lookup_r2c_many(p.record(nullptr, nullptr).get(), n);
                    // Long rows need more: they don't read everything before they write.
                    const bool gate = more >= 0 && (grouped || (count <= 4 && n <= 64));
                    check(p, solve_problem_r2c_many_direct, gate, grouped, t);
                }
        }
    EXPECT_GT(t.taken, 200);
    EXPECT_GT(t.left, 200);
}
