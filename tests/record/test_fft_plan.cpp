// SPDX-License-Identifier: Apache-2.0
// The life of a record: what a clone and a subplan carry, what clearing releases and what it leaves.
#include "include/qfftf.h"
#include "planner/solver.h"
#include "record/fft_plan.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace {

float some_floats[16];

fft_plan* blank() { return static_cast<fft_plan*>(calloc(1, sizeof(fft_plan))); }

// Every field that a problem has, and every field that a solver attaches, set to a value of its own.
fft_plan full_record() {
    fft_plan p = {};
    p.kind = kind_r2r;
    p.sign = -1;
    p.split = 1;
    p.rank = 3;
    p.howmany_rank = 2;
    for (int k = 0; k < 4; ++k) {
        p.dims[k] = {10 + k, 20 + k, 30 + k};
        p.howmany[k] = {40 + k, 50 + k, 60 + k};
        p.r2r_kind[k] = 7 + static_cast<uint32_t>(k);
    }
    p.in = some_floats;
    p.in_imag = some_floats + 1;
    p.out = some_floats + 2;
    p.out_imag = some_floats + 3;
    p.flags = 32;
    p.blocked_is = 101;
    p.blocked_os = 102;
    p.blocked_count = 103;
    p.blocked_row = 104;
    p.blocked_child = 1;
    p.private_copy = 1;
    p.double_is = 1;
    p.double_os = 1;
    p.private_copy_stride = 105;
    p.upsample_shift_x = 1.5f;
    p.upsample_shift_y = 2.5f;
    p.nthreads = 6;
    return p;
}

void expect_same_dim(const fft_dim& a, const fft_dim& b) {
    EXPECT_EQ(a.n, b.n);
    EXPECT_EQ(a.is, b.is);
    EXPECT_EQ(a.os, b.os);
}

void expect_problem_of(const fft_plan& copy, const fft_plan& p) {
    EXPECT_EQ(copy.kind, p.kind);
    EXPECT_EQ(copy.sign, p.sign);
    EXPECT_EQ(copy.split, p.split);
    EXPECT_EQ(copy.rank, p.rank);
    EXPECT_EQ(copy.howmany_rank, p.howmany_rank);
    const fft_dim empty = {};
    for (int k = 0; k < 4; ++k) {
        expect_same_dim(copy.dims[k], k < p.rank ? p.dims[k] : empty);
        expect_same_dim(copy.howmany[k], k < p.howmany_rank ? p.howmany[k] : empty);
        EXPECT_EQ(copy.r2r_kind[k], k < p.rank ? p.r2r_kind[k] : 0);
    }
    EXPECT_EQ(copy.in, p.in);
    EXPECT_EQ(copy.in_imag, p.in_imag);
    EXPECT_EQ(copy.out, p.out);
    EXPECT_EQ(copy.out_imag, p.out_imag);
    EXPECT_EQ(copy.flags, p.flags);
    EXPECT_EQ(copy.spare_buffer, p.spare_buffer);
    EXPECT_EQ(copy.blocked_is, p.blocked_is);
    EXPECT_EQ(copy.blocked_os, p.blocked_os);
    EXPECT_EQ(copy.blocked_count, p.blocked_count);
    EXPECT_EQ(copy.blocked_row, p.blocked_row);
    EXPECT_EQ(copy.private_copy, p.private_copy);
    EXPECT_EQ(copy.double_is, p.double_is);
    EXPECT_EQ(copy.double_os, p.double_os);
    EXPECT_EQ(copy.nthreads, p.nthreads);
    // what never travels
    EXPECT_EQ(copy.blocked_child, 0);
    EXPECT_EQ(copy.private_copy_stride, 0);
    EXPECT_EQ(copy.solver_name, nullptr);
    EXPECT_EQ(copy.execute, nullptr);
    EXPECT_EQ(copy.execute_split, nullptr);
    EXPECT_EQ(copy.execute_name, nullptr);
    EXPECT_EQ(copy.buffer, nullptr);
    EXPECT_EQ(copy.buffer_size, 0u);
    EXPECT_EQ(copy.aux, nullptr);
    EXPECT_EQ(copy.aux_size, 0u);
    EXPECT_EQ(copy.aux_owned, 0u);
    EXPECT_EQ(copy.subplan_count, 0);
    EXPECT_EQ(copy.subplans, nullptr);
}

void do_nothing(fft_plan*, float*, float*) {}
void do_nothing_split(fft_plan*, float*, float*, float*, float*) {}

void attach_everything(fft_plan* p) {
    ASSERT_TRUE(attach_buffer(p, 128));
    ASSERT_TRUE(attach_aux(p, 64));
    ASSERT_TRUE(make_subplans(p, 2));
    install(p, do_nothing, "execute_nothing");
    p->execute_split = do_nothing_split;
    p->solver_name = "solver";
}

}  // namespace

TEST(Record, FieldsStandInTheirOrderAtNaturalAlignment) {
    static_assert(std::is_standard_layout_v<fft_plan> && std::is_trivial_v<fft_plan>);
    static_assert(sizeof(fft_dim) == 24);
    EXPECT_EQ(offsetof(fft_plan, kind), 0u);
    EXPECT_EQ(offsetof(fft_plan, sign), 8u);
    EXPECT_EQ(offsetof(fft_plan, split), 16u);
    EXPECT_EQ(offsetof(fft_plan, rank), 24u);
    EXPECT_EQ(offsetof(fft_plan, scratch_lines), 28u);  // in the padding, like the next three
    EXPECT_EQ(offsetof(fft_plan, lending), 4u);
    EXPECT_EQ(offsetof(fft_plan, brought_lines), 148u);
    EXPECT_EQ(offsetof(fft_plan, runs), 284u);
    EXPECT_EQ(offsetof(fft_plan, dims), 32u);
    EXPECT_EQ(offsetof(fft_plan, r2r_kind), 128u);
    EXPECT_EQ(offsetof(fft_plan, howmany_rank), 144u);
    EXPECT_EQ(offsetof(fft_plan, howmany), 152u);
    EXPECT_EQ(offsetof(fft_plan, in), 248u);
    EXPECT_EQ(offsetof(fft_plan, in_imag), 256u);
    EXPECT_EQ(offsetof(fft_plan, out), 264u);
    EXPECT_EQ(offsetof(fft_plan, out_imag), 272u);
    EXPECT_EQ(offsetof(fft_plan, flags), 280u);
    EXPECT_EQ(offsetof(fft_plan, spare_buffer), 288u);
    EXPECT_EQ(offsetof(fft_plan, blocked_is), 296u);
    EXPECT_EQ(offsetof(fft_plan, blocked_os), 300u);
    EXPECT_EQ(offsetof(fft_plan, blocked_count), 304u);
    EXPECT_EQ(offsetof(fft_plan, blocked_row), 312u);
    EXPECT_EQ(offsetof(fft_plan, blocked_child), 316u);
    EXPECT_EQ(offsetof(fft_plan, private_copy), 320u);
    EXPECT_EQ(offsetof(fft_plan, double_is), 324u);
    EXPECT_EQ(offsetof(fft_plan, double_os), 328u);
    EXPECT_EQ(offsetof(fft_plan, private_copy_stride), 336u);
    EXPECT_EQ(offsetof(fft_plan, upsample_shift_x), 344u);
    EXPECT_EQ(offsetof(fft_plan, upsample_shift_y), 348u);
    EXPECT_EQ(offsetof(fft_plan, solver_name), 352u);
    EXPECT_EQ(offsetof(fft_plan, execute), 360u);
    EXPECT_EQ(offsetof(fft_plan, execute_split), 368u);
    EXPECT_EQ(offsetof(fft_plan, execute_name), 376u);
    EXPECT_EQ(offsetof(fft_plan, buffer), 384u);
    EXPECT_EQ(offsetof(fft_plan, buffer_size), 392u);
    EXPECT_EQ(offsetof(fft_plan, aux), 400u);
    EXPECT_EQ(offsetof(fft_plan, aux_size), 408u);
    EXPECT_EQ(offsetof(fft_plan, aux_owned), 416u);
    EXPECT_EQ(offsetof(fft_plan, subplan_count), 420u);
    EXPECT_EQ(offsetof(fft_plan, subplans), 424u);
    EXPECT_EQ(offsetof(fft_plan, nthreads), 432u);
    EXPECT_EQ(sizeof(fft_plan), 440u);
}

TEST(Clone, CarriesTheProblemAndTheShifts) {
    fft_plan p = full_record();
    attach_everything(&p);
    fft_plan* clone = fft_plan_clone(&p);
    ASSERT_NE(clone, nullptr);
    expect_problem_of(*clone, p);
    EXPECT_EQ(clone->upsample_shift_x, 1.5f);
    EXPECT_EQ(clone->upsample_shift_y, 2.5f);
    fft_plan_free(clone);
    fft_plan_clear(&p);
}

TEST(Clone, OfRank0CopiesNoTriple) {
    fft_plan p = full_record();
    p.rank = 0;
    p.howmany_rank = 0;
    fft_plan* clone = fft_plan_clone(&p);
    ASSERT_NE(clone, nullptr);
    expect_problem_of(*clone, p);
    fft_plan_free(clone);
}

TEST(Clone, OfNullIsBlank) {
    fft_plan* clone = fft_plan_clone(nullptr);
    ASSERT_NE(clone, nullptr);
    const fft_plan zero = {};
    EXPECT_EQ(memcmp(clone, &zero, sizeof zero), 0);
    fft_plan_free(clone);
}

TEST(Subplans, StartAsCopiesOfTheProblemWithoutShifts) {
    fft_plan p = full_record();
    p.subplan_count = 3;
    ASSERT_EQ(fft_plan_alloc_subplans(&p), 0);
    for (int i = 0; i < 3; ++i) {
        expect_problem_of(*p.subplans[i], p);
        EXPECT_EQ(p.subplans[i]->upsample_shift_x, 0.0f);
        EXPECT_EQ(p.subplans[i]->upsample_shift_y, 0.0f);
    }
    fft_plan_clear(&p);
}

TEST(Subplans, CountsBelowOneGiveAnEmptyArray) {
    for (int count : {0, -1}) {
        fft_plan p = full_record();
        p.subplan_count = count;
        EXPECT_EQ(fft_plan_alloc_subplans(&p), 0);
        EXPECT_NE(p.subplans, nullptr);
        fft_plan_clear(&p);
        EXPECT_EQ(p.subplans, nullptr);
        EXPECT_EQ(p.subplan_count, 0);
    }
}

// The sanitizers' build finds what is lost.
TEST(Subplans, ReleaseTheOlderOnesWhenMadeAgain) {
    fft_plan p = full_record();
    ASSERT_TRUE(make_subplans(&p, 3));
    ASSERT_TRUE(make_subplans(p.subplans[1], 2));
    ASSERT_TRUE(make_subplans(&p, 1));
    EXPECT_EQ(p.subplan_count, 1);
    fft_plan_clear(&p);
}

TEST(Clear, ReleasesWhatASolverAttachedAndLeavesTheProblem) {
    fft_plan p = full_record();
    attach_everything(&p);
    fft_plan_clear(&p);
    EXPECT_EQ(p.buffer, nullptr);
    EXPECT_EQ(p.buffer_size, 128u);  // stays, stale
    EXPECT_EQ(p.aux, nullptr);
    EXPECT_EQ(p.aux_size, 0u);
    EXPECT_EQ(p.aux_owned, 0u);
    EXPECT_EQ(p.subplans, nullptr);
    EXPECT_EQ(p.subplan_count, 0);
    EXPECT_EQ(p.execute, do_nothing);
    EXPECT_EQ(p.execute_split, do_nothing_split);
    EXPECT_STREQ(p.execute_name, "execute_nothing");
    EXPECT_STREQ(p.solver_name, "solver");

    const fft_plan once = p;
    fft_plan_clear(&p);
    EXPECT_EQ(memcmp(&once, &p, sizeof p), 0) << "the second clearing changed something";
}

TEST(Clear, SkipsEmptySlots) {
    fft_plan p = full_record();
    p.subplan_count = 3;
    p.subplans = static_cast<fft_plan**>(calloc(3, sizeof(fft_plan*)));
    p.subplans[0] = blank();
    ASSERT_TRUE(attach_buffer(p.subplans[0], 64));
    fft_plan_clear(&p);
    EXPECT_EQ(p.subplans, nullptr);
    EXPECT_EQ(p.subplan_count, 0);
}

TEST(Clear, LeavesABorrowedAuxInPlace) {
    void* lent = qsl_fftf_malloc(64);
    for (auto [size, owned] : {std::pair<uint64_t, uint32_t>{0, 1}, {64, 0}, {0, 0}}) {
        fft_plan p = {};
        p.aux = lent;
        p.aux_size = size;
        p.aux_owned = owned;
        fft_plan_clear(&p);
        EXPECT_EQ(p.aux, lent);
        EXPECT_EQ(p.aux_size, size);
        EXPECT_EQ(p.aux_owned, owned);
    }
    memset(lent, 1, 64);  // still ours
    qsl_fftf_free(lent);
}

TEST(Clear, OfNullDoesNothing) { fft_plan_clear(nullptr); }

TEST(Free, OfNullDoesNothing) { fft_plan_free(nullptr); }

TEST(Free, ReleasesTheWholeTreeAndTheSpareBuffer) {
    fft_plan* p = blank();
    p->rank = 1;
    attach_everything(p);
    attach_everything(p->subplans[0]);
    attach_everything(p->subplans[0]->subplans[1]);
    p->spare_buffer = qsl_fftf_malloc(64);
    fft_plan_free(p);
}

TEST(CopyDims, NullAndCountsBelowOneDoNothing) {
    fft_dim d[2] = {{1, 2, 3}, {4, 5, 6}}, e[2] = {};
    fft_plan_copy_dims(nullptr, d, 2);
    fft_plan_copy_dims(e, nullptr, 2);
    fft_plan_copy_dims(e, d, 0);
    fft_plan_copy_dims(e, d, -3);
    expect_same_dim(e[0], {});
    fft_plan_copy_dims(e, d, 1);
    expect_same_dim(e[0], d[0]);
    expect_same_dim(e[1], {});

    uint32_t a[2] = {8, 9}, b[2] = {};
    fft_plan_copy_r2r_kinds(nullptr, a, 2);
    fft_plan_copy_r2r_kinds(b, nullptr, 2);
    fft_plan_copy_r2r_kinds(b, a, -1);
    EXPECT_EQ(b[0], 0u);
    fft_plan_copy_r2r_kinds(b, a, 1);
    EXPECT_EQ(b[0], 8u);
    EXPECT_EQ(b[1], 0u);
}

TEST(Elements, HaveTheirSizesByKind) {
    const struct {
        uint32_t kind;
        uint64_t in, out;
    } expected[] = {{0, 8, 8}, {1, 8, 4}, {2, 4, 8},  {3, 4, 4},  {5, 8, 8},  {6, 8, 8}, {7, 8, 8},
                    {8, 8, 8}, {9, 8, 8}, {10, 8, 8}, {11, 8, 8}, {12, 8, 8}, {13, 8, 4}};
    for (const auto& e : expected) {
        uint64_t in = 0, out = 0;
        fft_element_sizes(e.kind, &in, &out);
        EXPECT_EQ(in, e.in) << "kind " << e.kind;
        EXPECT_EQ(out, e.out) << "kind " << e.kind;
    }
}

TEST(DoubledStride, NeedsASwitchOfExactlyOne) {
    EXPECT_EQ(doubled_stride(1, 21), 42);
    EXPECT_EQ(doubled_stride(0, 21), 21);
    EXPECT_EQ(doubled_stride(2, 21), 21);
}
