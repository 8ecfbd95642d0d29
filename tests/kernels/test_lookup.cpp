// SPDX-License-Identifier: Apache-2.0
// Every look-up, for every size, direction and form of the plan: which family's table answers, and with which slot.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "dft/stage_lookup.h"
#include "kernels/generator/forms/forms.h"
#include "kernels/lookup.h"
#include "kernels/real_kernels.h"
#include "kernels/registry.h"

namespace {

template <class Kernel>
any_kernel any(Kernel* kernel) {
    return reinterpret_cast<any_kernel>(kernel);
}

// Slot `size` - 1 of a family's table, null for a size that the table doesn't reach.
any_kernel expected(const std::string& family, int64_t sign, uint64_t size, uint64_t slots = 64) {
    for (int f = 0; f < kernel_family_count; ++f)
        if (family == kernel_families[f].name) {
            const any_kernel* table = kernel_families[f].tables[sign != -1];
            return size >= 1 && size <= slots ? table[size - 1] : nullptr;
        }
    ADD_FAILURE() << "no family " << family;
    return nullptr;
}

std::vector<uint64_t> sizes() {
    std::vector<uint64_t> all;
    for (uint64_t size = 0; size <= 200; ++size) all.push_back(size);
    for (uint64_t size : {uint64_t{1} << 32, (uint64_t{1} << 32) + 5, ~uint64_t{0}}) all.push_back(size);
    return all;
}

constexpr int64_t signs[] = {-1, 0, 1, 2};

fft_plan plan_of(int64_t sign) {
    fft_plan plan = {};
    plan.kind = kind_c2c;
    plan.sign = sign;
    plan.rank = 1;
    plan.dims[0] = {12, 1, 1};
    return plan;
}

template <class Lookup>
void check_plan_lookup(const Lookup& lookup, const std::string& family) {
    for (const int64_t sign : signs)
        for (const uint64_t size : sizes()) {
            const fft_plan plan = plan_of(sign);
            EXPECT_EQ(any(lookup(&plan, size)), expected(family, sign, size)) << family << size << " sign " << sign;
        }
}

}  // namespace

TEST(Lookup, FindsTheWholeTransformsOfTheTable) {
    check_plan_lookup(lookup_direct_neon, "direct_contig_neon");
    check_plan_lookup(lookup_direct_discrete_neon, "direct_strided_neon");
    check_plan_lookup(lookup_direct_sve, "direct_contig_sve");
    check_plan_lookup(lookup_direct_scalar, "direct_scalar");
    check_plan_lookup(lookup_many_pair_neon, "many_pair_neon");
    check_plan_lookup(lookup_many_assemble_neon, "many_assemble_neon");
    check_plan_lookup(lookup_many_quad_sve, "many_quad_sve");
    check_plan_lookup(lookup_many_rows_neon, "many_rows_neon");
}

// Size 64 from the families of all sizes, 128 from those of the long ones, no other.
TEST(Lookup, FindsTheStraightKernelsInLanesOfTheTable) {
    for (const int64_t sign : signs)
        for (const uint64_t size : sizes()) {
            const fft_plan plan = plan_of(sign);
            const any_kernel quad =
                size == 64 ? expected("many_quad_sve", sign, 64) : expected("straight_quad_sve", sign, size, 128);
            const any_kernel rows =
                size == 64 ? expected("many_rows_neon", sign, 64) : expected("straight_rows_neon", sign, size, 128);
            EXPECT_EQ(any(lookup_straight_quad_sve(&plan, size)), quad) << size << " sign " << sign;
            EXPECT_EQ(any(lookup_straight_rows_neon(&plan, size)), rows) << size << " sign " << sign;
            EXPECT_EQ(quad != nullptr, size == 64 || size == 128) << size;
            EXPECT_EQ(rows != nullptr, size == 64 || size == 128) << size;
        }
}

// Real kernels have one direction each; the plan's sign isn't looked at.
TEST(Lookup, FindsTheKernelsOfRealDataOfTheTable) {
    for (const int64_t sign : signs)
        for (const uint64_t size : sizes()) {
            const fft_plan plan = plan_of(sign);
            EXPECT_EQ(any(lookup_r2c_direct(&plan, size)), expected("r2c_direct", -1, size, 128)) << size;
            EXPECT_EQ(any(lookup_r2c_many(&plan, size)), expected("r2c_many", -1, size, 128)) << size;
            EXPECT_EQ(any(lookup_c2r_direct(&plan, size)), expected("c2r_direct", 1, size, 128)) << size;
            EXPECT_EQ(any(lookup_c2r_many(&plan, size)), expected("c2r_many", 1, size, 128)) << size;
        }
}

TEST(Lookup, KnowsTheSizesThatStandOut) {
    const fft_plan forward = plan_of(-1), backward = plan_of(1);
    EXPECT_EQ(lookup_direct_neon(&forward, 22), nullptr);
    EXPECT_EQ(lookup_direct_neon(&forward, 65), nullptr);
    EXPECT_EQ(lookup_r2c_direct(&forward, 65), nullptr);
    EXPECT_EQ(lookup_direct_sve(&forward, 32), nullptr);
    EXPECT_NE(lookup_many_quad_sve(&forward, 32), nullptr);
    EXPECT_NE(lookup_direct_neon(&forward, 5), lookup_direct_neon(&backward, 5));
}

namespace {

// What the stage look-ups tell apart.
struct plan_form {
    fft_plan plan;
    bool pair, quad;
    bool unit;
};

plan_form batch_of(int64_t n, int64_t is = 1, int64_t os = 1) {
    plan_form f = {plan_of(-1), n == 2 && is == 1 && os == 1, n == 4 && is == 1 && os == 1, true};
    f.plan.howmany_rank = 1;
    f.plan.howmany[0] = {n, is, os};
    return f;
}

template <class Change>
plan_form changed(plan_form f, bool pair, bool quad, const Change& change) {
    change(f.plan);
    return {f.plan, pair, quad, f.plan.dims[0].is == 1 && f.plan.dims[0].os == 1};
}

// The quad form asks for one smooth complex dimension, the pair form doesn't.
std::vector<plan_form> plan_forms() {
    const plan_form single = {plan_of(-1), false, false, true};
    std::vector<plan_form> all = {single,
                                  batch_of(2),
                                  batch_of(3),
                                  batch_of(4),
                                  batch_of(2, 2, 1),
                                  batch_of(2, 1, 2),
                                  batch_of(4, 2, 1),
                                  batch_of(4, 1, 2),
                                  batch_of(1),
                                  batch_of(8)};
    for (const fft_dim strides : {fft_dim{12, 3, 1}, fft_dim{12, 1, 2}, fft_dim{12, 2, 5}, fft_dim{12, -1, 1}})
        for (const plan_form& f : {single, batch_of(2), batch_of(4)})
            all.push_back(changed(f, f.pair, f.quad, [&](fft_plan& p) { p.dims[0] = strides; }));
    for (const plan_form& f : {batch_of(2), batch_of(4)}) {
        all.push_back(changed(f, false, false, [](fft_plan& p) { p.howmany_rank = 0; }));
        all.push_back(changed(f, false, false, [](fft_plan& p) { p.howmany_rank = 2; }));
        all.push_back(changed(f, f.pair, false, [](fft_plan& p) { p.rank = 2; }));
        all.push_back(changed(f, f.pair, false, [](fft_plan& p) { p.dims[0].n = 2 * 41; }));
        all.push_back(changed(f, f.pair, f.quad, [](fft_plan& p) { p.kind = kind_c2c_large_piece; }));
        for (uint32_t kind : {kind_c2r, kind_r2c, kind_r2r})
            all.push_back(changed(f, f.pair, false, [&](fft_plan& p) { p.kind = kind; }));
    }
    return all;
}

using stage_lookup = void (*)(stage_record* stage, const fft_plan* plan);

template <class Family>
void check_stage_lookup(stage_lookup lookup, const Family& family_of) {
    int form = 0;
    for (plan_form f : plan_forms()) {
        SCOPED_TRACE(form++);
        for (const int64_t sign : signs)
            for (const uint64_t radix : sizes()) {
                f.plan.sign = sign;
                stage_record record = {};
                record.kernel = reinterpret_cast<stage_kernel>(&record);  // null is written too
                record.radix = radix;
                stage_record rest = record;
                lookup(&record, &f.plan);
                const std::string family = family_of(f);
                EXPECT_EQ(any(record.kernel), expected(family, sign, radix)) << family << " radix " << radix;
                rest.kernel = record.kernel;
                EXPECT_EQ(memcmp(&rest, &record, sizeof rest), 0) << "nothing else is written";
            }
    }
}

}  // namespace

TEST(Lookup, FindsTheNeonStagesOfTheTable) {
    check_stage_lookup(stage_lookup_first_neon, [](const plan_form& f) {
        return f.pair ? "first_pair_neon" : f.unit ? "first_contig_neon" : "first_strided_neon";
    });
    check_stage_lookup(stage_lookup_other_neon,
                       [](const plan_form& f) { return f.pair ? "other_pair_neon" : "other_plain_neon"; });
    check_stage_lookup(stage_lookup_last_neon, [](const plan_form& f) {
        return f.pair ? "last_pair_neon" : f.unit ? "last_contig_neon" : "last_strided_neon";
    });
    check_stage_lookup(stage_lookup_other_plain_neon, [](const plan_form&) { return "other_plain_neon"; });
    check_stage_lookup(stage_lookup_last_plain_neon,
                       [](const plan_form& f) { return f.unit ? "last_contig_neon" : "last_strided_neon"; });
}

// Strided outer stages are NEON kernels.
TEST(Lookup, FindsTheSveStagesOfTheTable) {
    check_stage_lookup(stage_lookup_first_sve, [](const plan_form& f) {
        return f.quad ? "first_quad_sve" : f.unit ? "first_contig_sve" : "first_strided_neon";
    });
    check_stage_lookup(stage_lookup_other_sve,
                       [](const plan_form& f) { return f.quad ? "other_quad_sve" : "other_plain_sve"; });
    check_stage_lookup(stage_lookup_last_sve, [](const plan_form& f) {
        return f.quad ? "last_quad_sve" : f.unit ? "last_contig_sve" : "last_strided_neon";
    });
    check_stage_lookup(stage_lookup_other_plain_sve, [](const plan_form&) { return "other_plain_sve"; });
    check_stage_lookup(stage_lookup_last_plain_sve,
                       [](const plan_form& f) { return f.unit ? "last_contig_sve" : "last_strided_neon"; });
}
