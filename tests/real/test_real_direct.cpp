// SPDX-License-Identifier: Apache-2.0
// The solvers whose length has a kernel of real data: what each takes, the tables that it hands to its kernel, and the
// results of every size, stride and count against a double-precision reference.
#include <gtest/gtest.h>

#include <cmath>

#include "planner/solvers.h"
#include "real/direct_tables.h"
#include "tests/real/real_problem.h"
#include "tests/support/signals.h"

namespace {

using solver = int (*)(fft_plan*);

float planned_in[8192], planned_out[8192];

std::string execute_name(solver s, const real_problem& p) {
    const plan_pointer plan = p.taken_by(s, planned_in, planned_out);
    return plan ? plan->execute_name : "refused";
}

std::string route(const real_problem& p) {
    const plan_pointer plan = p.plan(planned_in, planned_out);
    return plan ? std::string(plan->solver_name) + " " + plan->execute_name : "refused";
}

const fft_dim strides[] = {{0, 1, 1}, {0, 3, 1}, {0, 1, 2}, {0, 5, 7}};

struct family {
    const char* name;
    solver solve;
    uint32_t kind, r2r_kind;
    std::vector<int> sizes;
    bool batched;  // takes a batch; every family but the batched ones of r2c and c2r takes a single transform
};

std::ostream& operator<<(std::ostream& out, const family& f) { return out << f.name; }

const std::vector<int> direct_sizes = {2, 3, 4, 5, 7, 8, 16, 32, 64}, many_sizes = {2, 3, 4, 8, 16};
const std::vector<int> rows_sizes = {5, 6, 7, 9, 10, 11, 12, 13, 14, 15, 32, 64, 80};  // 80 has pairs alone
const std::vector<int> half_complex_sizes = {2, 4, 8, 16, 32};

const family families[] = {
    {"r2c_1d_direct", solve_problem_r2c_1d_direct, kind_r2c, 0, direct_sizes, false},
    {"c2r_1d_direct", solve_problem_c2r_1d_direct, kind_c2r, 0, direct_sizes, false},
    {"r2c_many_direct", solve_problem_r2c_many_direct, kind_r2c, 0, many_sizes, true},
    {"c2r_many_direct", solve_problem_c2r_many_direct, kind_c2r, 0, many_sizes, true},
    {"r2c_many", solve_problem_r2c_many, kind_r2c, 0, rows_sizes, true},
    {"c2r_many", solve_problem_c2r_many, kind_c2r, 0, rows_sizes, true},
    {"r2hc_many_direct", solve_problem_r2hc_many_direct, kind_r2r, r2r_r2hc, half_complex_sizes, true},
    {"r2hc_direct", solve_problem_r2hc_direct, kind_r2r, r2r_r2hc, half_complex_sizes, true},
    {"hc2r_direct", solve_problem_hc2r_direct, kind_r2r, r2r_hc2r, half_complex_sizes, true},
    {"dht_direct", solve_problem_dht_direct, kind_r2r, r2r_dht, half_complex_sizes, true},
    {"redft00_direct", solve_problem_redft00_direct, kind_r2r, r2r_redft00, {2, 3, 4, 17}, true},
};

bool is_many(const family& f) { return f.solve == solve_problem_r2c_many || f.solve == solve_problem_c2r_many; }

// Does the family take this layout? Four rows at a time want whole groups, the Hartley transform contiguous input.
bool takes(const family& f, const real_problem& p) {
    if (f.solve == solve_problem_r2hc_many_direct) return p.row_count() >= 4 && p.row_count() % 4 == 0;
    if (f.solve == solve_problem_dht_direct) return p.dim.is == 1;
    if (is_many(f) && p.in_place && p.dim.is != 1) return false;
    if (f.solve == solve_problem_c2r_many) return p.row_count() >= 2;
    return true;
}

// Row distances just past each row, or rows side by side.
real_problem with_rows(real_problem p, int64_t count, bool side_by_side) {
    const fft_dim dim = p.dim;
    if (side_by_side) {
        p.rows = {count, 1, 1};
        p.dim.is = dim.is * count;
        p.dim.os = dim.os * count;
    } else {
        p.rows = {count, p.elements(true) * dim.is + 1, p.elements(false) * dim.os + 2};
    }
    return p;
}

class Direct : public testing::TestWithParam<family> {
protected:
    void check(const real_problem& p);
};

// The parts of a c2r input that have no effect hold large numbers.
void fill(const real_problem& p, guarded_floats& input) {
    uniform_noise noise(static_cast<uint64_t>(p.dim.n * 100 + p.row_count()));
    for (int64_t r = 0; r < p.row_count(); ++r)
        for (int64_t f = 0; f < p.row_floats(true); ++f) {
            const bool unread = p.kind == kind_c2r && (f == 1 || f == p.dim.n + 1) && p.dim.n % 2 == 0;
            input[p.position(true, r, f)] = unread ? 1000.0f : noise();
        }
}

void Direct::check(const real_problem& p) {
    SCOPED_TRACE(testing::Message() << p);
    const int64_t in_span = p.span(true), out_span = p.span(false);
    guarded_floats input(p.in_place ? std::max(in_span, out_span) : in_span), separate(out_span);
    guarded_floats& output = p.in_place ? input : separate;
    const plan_pointer plan = p.taken_by(GetParam().solve, input.data(), separate.data());
    ASSERT_TRUE(plan);
    settle_storage(plan.get());
    fill(p, input);
    guarded_floats before = input;
    plan->execute(plan.get(), input.data(), output.data());
    std::vector<bool> addressed(output.size());
    for (int64_t r = 0; r < p.row_count(); ++r) {
        std::vector<float> row;
        for (int64_t f = 0; f < p.row_floats(true); ++f) row.push_back(before[p.position(true, r, f)]);
        const std::vector<double> expected = p.expected(row);
        double error = 0, size = 0;
        for (size_t f = 0; f < expected.size(); ++f) {
            const int64_t at = p.position(false, r, static_cast<int64_t>(f));
            addressed[at] = true;
            error += (output[at] - expected[f]) * (output[at] - expected[f]);
            size += expected[f] * expected[f];
            if (p.kind == kind_r2c && (f == 1 || (p.dim.n % 2 == 0 && f + 1 == expected.size()))) {
                EXPECT_EQ(output[at], 0.0f) << "imaginary part in row " << r << " at float " << f;
            }
        }
        EXPECT_LT(std::sqrt(error / size), 2 * error_unit(p.dim.n < 8 ? 8 : p.dim.n)) << "row " << r;
    }
    if (!p.in_place) {
        for (size_t i = 0; i < output.size(); ++i)
            if (!addressed[i]) {
                EXPECT_TRUE(output.is_untouched(i)) << "gap at float " << i;
            }
        for (size_t i = 0; i < input.size(); ++i)
            EXPECT_TRUE(input.is_untouched(i) || input[i] == before[i]) << "input changed at float " << i;
    }
    EXPECT_TRUE(input.zones_are_intact() && separate.zones_are_intact());
}

TEST_P(Direct, IsRightForSingleTransformsOfEverySizeAndStride) {
    const family& f = GetParam();
    if (f.batched && f.kind != kind_r2r) return;
    for (int n : f.sizes)
        for (const fft_dim& s : strides) {
            const real_problem p = {.kind = f.kind, .r2r_kind = f.r2r_kind, .dim = {n, s.is, s.os}};
            if (takes(f, p))
                check(p);
            else
                EXPECT_EQ(execute_name(f.solve, p), "refused") << p;
        }
}

TEST_P(Direct, IsRightForBatchesOfEverySizeStrideAndCount) {
    const family& f = GetParam();
    if (!f.batched) return;
    for (int n : f.sizes)
        for (const fft_dim& s : strides)
            for (int64_t count = 0; count <= 9; ++count)
                for (bool side_by_side : {false, true}) {
                    const real_problem p = with_rows({.kind = f.kind, .r2r_kind = f.r2r_kind, .dim = {n, s.is, s.os}},
                                                     count, side_by_side);
                    if (takes(f, p))
                        check(p);
                    else
                        EXPECT_EQ(execute_name(f.solve, p), "refused") << p;
                }
}

// Strides in place: a real side has twice the stride of its complex side, or the padded contiguous row.
TEST_P(Direct, IsRightInPlace) {
    const family& f = GetParam();
    for (int n : f.sizes)
        for (int64_t count : {int64_t{no_batch}, int64_t{4}, int64_t{7}, int64_t{8}})
            for (bool padded : {true, false}) {
                real_problem p = {.kind = f.kind, .r2r_kind = f.r2r_kind, .dim = {n, 1, 1}, .in_place = true};
                const int64_t elements = n / 2 + 1 + n % 2, interleaved = count == no_batch ? 1 : count;
                const int64_t in_parts = p.is_complex(false) ? 2 : 1, out_parts = p.is_complex(true) ? 2 : 1;
                if (!padded) p.dim = {n, in_parts * interleaved, out_parts * interleaved};
                if (count != no_batch)
                    p.rows = padded ? fft_dim{count, elements * in_parts, elements * out_parts}
                                    : fft_dim{count, in_parts, out_parts};
                if (f.kind == kind_r2r && padded && count != no_batch) p.rows = {count, n + 1, n + 1};
                if (count == no_batch && f.batched && f.kind != kind_r2r) continue;
                if (count != no_batch && !f.batched) continue;
                if (takes(f, p)) check(p);
            }
}

TEST_P(Direct, OtherSizesGoElsewhere) {
    const family& f = GetParam();
    if (is_many(f)) return;  // pairs are made of any length
    for (int64_t n = 1; n <= 260; ++n) {
        if (std::find(f.sizes.begin(), f.sizes.end(), n) != f.sizes.end()) continue;
        real_problem p = {.kind = f.kind, .r2r_kind = f.r2r_kind, .dim = {n, 1, 1}};
        if (f.batched) p = with_rows(p, 8, false);
        EXPECT_EQ(execute_name(f.solve, p), "refused") << p;
    }
}

TEST_P(Direct, OtherKindsAndRanksGoElsewhere) {
    const family& f = GetParam();
    real_problem p = {.kind = f.kind, .r2r_kind = f.r2r_kind, .dim = {f.sizes[0], 1, 1}};
    if (f.batched) p = with_rows(p, 4, false);
    ASSERT_NE(execute_name(f.solve, p), "refused");
    const auto refuses = [&](auto change) {
        const plan_pointer record = p.record(planned_in, planned_out);
        change(*record);
        return f.solve(record.get()) == refused;
    };
    for (uint32_t kind : {kind_c2c, kind_c2r, kind_r2c, kind_r2r, kind_c2c_large_piece})
        if (kind != f.kind) {
            EXPECT_TRUE(refuses([&](fft_plan& r) { r.kind = kind; })) << kind;
        }
    for (uint32_t r2r = 0; f.kind == kind_r2r && r2r <= 10; ++r2r)
        if (r2r != f.r2r_kind) {
            EXPECT_TRUE(refuses([&](fft_plan& r) { r.r2r_kind[0] = r2r; })) << r2r;
        }
    EXPECT_TRUE(refuses([](fft_plan& r) { r.rank = 2; }));
    EXPECT_TRUE(refuses([](fft_plan& r) { r.rank = 0; }));
    EXPECT_TRUE(refuses([](fft_plan& r) { r.howmany_rank = 2; }));
    if (f.kind != kind_r2r) {
        EXPECT_TRUE(refuses([](fft_plan& r) { r.split = split_arrays; }));
    }
    if (!f.batched) {
        EXPECT_TRUE(refuses([](fft_plan& r) { r.howmany_rank = 1; }));
    }
}

INSTANTIATE_TEST_SUITE_P(Real, Direct, testing::ValuesIn(families), [](const auto& info) { return info.param.name; });

TEST(DirectTables, HoldTheOffsetsOfComplexSpectra) {
    const plan_pointer forth =
        real_problem{.kind = kind_r2c, .dim = {7, 3, 5}}.taken_by(solve_problem_r2c_1d_direct, planned_in, planned_out);
    const plan_pointer back =
        real_problem{.kind = kind_c2r, .dim = {7, 5, 3}}.taken_by(solve_problem_c2r_1d_direct, planned_in, planned_out);
    ASSERT_TRUE(forth && back);
    for (const fft_plan* p : {forth.get(), back.get()}) {
        ASSERT_EQ(p->aux_size, 24u * 7 + 40);
        EXPECT_EQ(p->aux_owned, 1u);
        EXPECT_EQ(p->subplan_count, 0);
        EXPECT_EQ(p->buffer, nullptr);
        const auto& aux = *static_cast<const r2c_direct_aux*>(p->aux);
        EXPECT_EQ(aux.n, 7u);
        EXPECT_EQ(aux.in_offsets, reinterpret_cast<const int64_t*>(&aux + 1));
        EXPECT_EQ(aux.out_offsets_re, aux.in_offsets + 7);
        EXPECT_EQ(aux.out_offsets_im, aux.in_offsets + 14);
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(aux.in_offsets[i], 2 * i * 3);
            EXPECT_EQ(aux.out_offsets_re[i], 2 * i * 5);
            EXPECT_EQ(aux.out_offsets_im[i], 2 * i * 5);
        }
    }
    EXPECT_EQ(back->howmany[0].n, 1);
}

TEST(DirectTables, HoldTheOffsetsOfHalfComplexSpectra) {
    const plan_pointer forth = real_problem{.kind = kind_r2r, .r2r_kind = r2r_r2hc, .dim = {8, 3, 5}}.taken_by(
        solve_problem_r2hc_direct, planned_in, planned_out);
    const plan_pointer back = real_problem{.kind = kind_r2r, .r2r_kind = r2r_hc2r, .dim = {8, 5, 3}}.taken_by(
        solve_problem_hc2r_direct, planned_in, planned_out);
    ASSERT_TRUE(forth && back);
    for (const fft_plan* p : {forth.get(), back.get()}) {
        ASSERT_EQ(p->aux_size, 24u * 9);
        EXPECT_EQ(p->aux_owned, 1u);
        EXPECT_EQ(p->howmany[0].n, 1);
        auto& aux = *static_cast<hc_direct_aux*>(p->aux);
        EXPECT_EQ(aux.n, 8u);
        EXPECT_EQ(aux.n_stride, 40u);
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(aux.offsets(0)[i], 2 * i * 3);
            EXPECT_EQ(aux.offsets(1)[i], i * 5);
            EXPECT_EQ(aux.offsets(2)[i], -i * 5);
        }
    }
}

TEST(DirectTables, HoldTheOffsetsOfTheTypeOneCosine) {
    const plan_pointer p = real_problem{.kind = kind_r2r, .r2r_kind = r2r_redft00, .dim = {17, 3, 5}}.taken_by(
        solve_problem_redft00_direct, planned_in, planned_out);
    ASSERT_TRUE(p);
    ASSERT_EQ(p->aux_size, 16u * 18);
    EXPECT_EQ(p->howmany[0].n, 1);
    auto& aux = *static_cast<redft00_direct_aux*>(p->aux);
    EXPECT_EQ(aux.n, 17u);
    for (int i = 0; i < 17; ++i) {
        EXPECT_EQ(aux.offsets(0)[i], i * 3);
        EXPECT_EQ(aux.offsets(1)[i], i * 5);
    }
}

TEST(DirectTables, APrivateCopyGetsABuffer) {
    const auto buffer_size = [](uint32_t kind, solver solve) {
        const plan_pointer p = real_problem{.kind = kind, .dim = {16, 1, 1}}.record(planned_in, planned_out);
        p->private_copy = 1;
        return solve(p.get()) == accepted && p->buffer ? p->buffer_size : 0;
    };
    EXPECT_EQ(buffer_size(kind_r2c, solve_problem_r2c_1d_direct), 8u * 9);
    EXPECT_EQ(buffer_size(kind_c2r, solve_problem_c2r_1d_direct), 4u * 16);
}

TEST(DirectRoutes, TakeSingleTransforms) {
    for (int n : {2, 4, 8, 16, 32, 64}) {
        EXPECT_EQ(route({.kind = kind_r2c, .dim = {n, 1, 1}}),
                  "solve_problem_r2c_1d_direct execute_r2c_1d_direct_even");
        EXPECT_EQ(route({.kind = kind_c2r, .dim = {n, 3, 2}}), "solve_problem_c2r_1d_direct execute_c2r_1d_direct");
    }
    for (int n : {3, 5, 7})
        EXPECT_EQ(route({.kind = kind_r2c, .dim = {n, 2, 1}}), "solve_problem_r2c_1d_direct execute_r2c_1d_direct_odd");
    EXPECT_EQ(route({.kind = kind_r2c, .dim = {1, 1, 1}}), "solve_problem_r2c_1d execute_1d_r2c_odd");
    for (int n : half_complex_sizes) {
        const auto single = [&](uint32_t kind, int64_t is) {
            return route({.kind = kind_r2r, .r2r_kind = kind, .dim = {n, is, 3}});
        };
        EXPECT_EQ(single(r2r_r2hc, 2), "solve_problem_r2hc_direct execute_r2hc_direct");
        EXPECT_EQ(single(r2r_hc2r, 2), "solve_problem_hc2r_direct execute_hc2r_direct");
        EXPECT_EQ(single(r2r_dht, 1), "solve_problem_dht_direct execute_dht_direct");
        EXPECT_EQ(single(r2r_dht, 2), "solve_problem_dht_1d execute_dht_1d_discrete");
    }
    for (int n : {2, 3, 4, 17})
        EXPECT_EQ(route({.kind = kind_r2r, .r2r_kind = r2r_redft00, .dim = {n, 1, 1}}),
                  "solve_problem_redft00_direct execute_redft00_direct");
    EXPECT_EQ(route({.kind = kind_r2r, .r2r_kind = r2r_redft00, .dim = {5, 1, 1}}),
              "solve_problem_redft00_1d execute_redft00_1d");
}

TEST(DirectRoutes, TakeBatchesOfRealAndComplex) {
    const auto batch = [](uint32_t kind, int64_t n, int64_t count) {
        return route(with_rows({.kind = kind, .dim = {n, 1, 1}}, count, false));
    };
    EXPECT_EQ(batch(kind_r2c, 8, 4), "solve_problem_r2c_many_direct execute_r2c_many_direct");
    EXPECT_EQ(batch(kind_c2r, 8, 4), "solve_problem_c2r_many_direct execute_c2r_many_direct");
    EXPECT_EQ(batch(kind_r2c, 8, 5), "solve_problem_r2c_many_direct execute_r2c_many_direct_tail");
    EXPECT_EQ(batch(kind_c2r, 8, 5), "solve_problem_c2r_many_direct execute_c2r_many_direct_tail");
    for (int64_t count : {2, 3, 4}) {
        EXPECT_EQ(batch(kind_r2c, 7, count), "solve_problem_r2c_many_direct execute_r2c_many_1d_direct");
        EXPECT_EQ(batch(kind_c2r, 1000, count), "solve_problem_c2r_many_direct execute_c2r_many_1d_direct");
    }
    EXPECT_EQ(batch(kind_r2c, 7, 5), "solve_problem_r2c_many execute_r2c_many");
    EXPECT_EQ(batch(kind_c2r, 7, 5), "solve_problem_c2r_many execute_c2r_many");
}

TEST(DirectRoutes, BatchesInPlaceNeedTheirRowsInTheirOwnPlaces) {
    const auto r2c = [](int64_t is, int64_t os) {
        return execute_name(solve_problem_r2c_many_direct,
                            {.kind = kind_r2c, .dim = {8, 1, 1}, .rows = {8, is, os}, .in_place = true});
    };
    EXPECT_EQ(r2c(10, 5), "execute_r2c_many_direct");
    EXPECT_EQ(r2c(8, 5), "refused");                   // a row of reals begins in front of its own spectrum's end
    EXPECT_EQ(r2c(12, 5), "execute_r2c_many_direct");  // rows drift apart, but never into rows not yet read
    const auto c2r = [](int64_t is, int64_t os) {
        return execute_name(solve_problem_c2r_many_direct,
                            {.kind = kind_c2r, .dim = {8, 1, 1}, .rows = {8, is, os}, .in_place = true});
    };
    EXPECT_EQ(c2r(5, 10), "execute_c2r_many_direct");
    EXPECT_EQ(c2r(5, 8), "refused");
    EXPECT_EQ(c2r(5, 12), "refused");
    const auto r2r = [](solver s, uint32_t kind, int64_t n, int64_t is, int64_t os) {
        return execute_name(
            s, {.kind = kind_r2r, .r2r_kind = kind, .dim = {n, 1, 1}, .rows = {8, is, os}, .in_place = true});
    };
    EXPECT_EQ(r2r(solve_problem_r2hc_direct, r2r_r2hc, 8, 9, 9), "execute_r2hc_direct");
    EXPECT_EQ(r2r(solve_problem_r2hc_direct, r2r_r2hc, 8, 9, 8), "refused");
    EXPECT_EQ(r2r(solve_problem_r2hc_many_direct, r2r_r2hc, 8, 8, 9), "refused");
    EXPECT_EQ(r2r(solve_problem_hc2r_direct, r2r_hc2r, 8, 8, 9), "refused");
    EXPECT_EQ(r2r(solve_problem_dht_direct, r2r_dht, 8, 8, 9), "refused");
    EXPECT_EQ(r2r(solve_problem_redft00_direct, r2r_redft00, 4, 8, 9), "refused");
}

TEST(DirectRoutes, TakeBatchesOfRealToReal) {
    const auto batch = [](uint32_t kind, int64_t n, int64_t count) {
        return route(with_rows({.kind = kind_r2r, .r2r_kind = kind, .dim = {n, 1, 1}}, count, false));
    };
    for (int n : half_complex_sizes) {
        for (int64_t count : {4, 8, 12})
            EXPECT_EQ(batch(r2r_r2hc, n, count), "solve_problem_r2hc_many_direct execute_r2hc_many_direct");
        for (int64_t count : {2, 3, 5, 6, 7, 9})
            EXPECT_EQ(batch(r2r_r2hc, n, count), "solve_problem_r2hc_direct execute_r2hc_direct");
        EXPECT_EQ(batch(r2r_hc2r, n, 8), "solve_problem_hc2r_direct execute_hc2r_direct");
        EXPECT_EQ(batch(r2r_dht, n, 8), "solve_problem_dht_direct execute_dht_direct");
    }
    EXPECT_EQ(batch(r2r_redft00, 17, 5), "solve_problem_redft00_direct execute_redft00_direct");
    EXPECT_EQ(batch(r2r_r2hc, 64, 8), "solve_problem_r2hc_many execute_r2hc_many");
}

TEST(DirectRoutes, RefuseATypeOneCosineOfOnePoint) {
    const real_problem p = {.kind = kind_r2r, .r2r_kind = r2r_redft00, .dim = {1, 1, 1}};
    EXPECT_EQ(execute_name(solve_problem_redft00_direct, p), "refused");
    EXPECT_EQ(execute_name(solve_problem_redft00_1d, p), "refused");
    EXPECT_EQ(route(p), "refused");
}

TEST(DirectRoutes, KernelsGetTheCountOfABatchThatIsNotThere) {
    const plan_pointer p =
        real_problem{.kind = kind_r2r, .r2r_kind = r2r_r2hc, .dim = {8, 1, 1}}.record(planned_in, planned_out);
    p->howmany[0].n = 8;  // what an earlier row may have left
    EXPECT_EQ(solve_problem_r2hc_many_direct(p.get()), refused);
    ASSERT_EQ(solve_problem_r2hc_direct(p.get()), accepted);
    EXPECT_EQ(p->howmany[0].n, 1);
}

}  // namespace
