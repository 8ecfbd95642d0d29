// SPDX-License-Identifier: Apache-2.0
// Every kernel of the stages of Hermitian spectra, run as built: all lengths and branch counts to nine, arrays between
// guard zones and at pages that must not be touched, poison in what no kernel may read.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <sstream>

#include "families.h"
#include "kernels/real_kernels.h"
#include "kernels/registry.h"
#include "placed_array.h"
#include "record/fft_plan.h"
#include "tests/support/reference_sorensen.h"
#include "tests/support/signals.h"

namespace {

using namespace generator;
using complexes = std::vector<std::complex<float>>;

constexpr int side = 9;
constexpr double tolerance = 3e-7;
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct stage_problem {
    const form* f;
    any_kernel kernel;
    uint64_t r, m, L;
    placement where = placement::between_guards;
    bool in_place = false;

    uint64_t half() const { return L % 2 ? L / 2 + 1 : L / 2; }
    bool is_first() const { return f->loop == shape::hermitian_first; }
    bool is_last() const { return f->loop == shape::hermitian_last; }
};

std::ostream& operator<<(std::ostream& out, const stage_problem& p) {
    return out << p.f->name << " r=" << p.r << " m=" << p.m << " L=" << p.L << " " << name_of(p.where)
               << (p.in_place ? " in place" : "");
}

// What the stage must compute of its random input, made once for all families.
struct sample {
    complexes in;
    std::vector<reference::complex> out;
};
const sample& sample_of(uint64_t r, uint64_t m, uint64_t L) {
    static std::map<std::tuple<uint64_t, uint64_t, uint64_t>, sample> known;
    sample& s = known[{r, m, L}];
    if (s.in.empty()) {
        s.in = complex_noise((r * L / 2 + 1) * m, r * 100 + m * 10 + L);
        s.out = reference::hermitian_stage(reinterpret_cast<const float*>(s.in.data()), m, r, L);
    }
    return s;
}

// Imaginary parts of numbers that are real by symmetry are poison.
void fill_input(const stage_problem& p, placed_floats& in) {
    const complexes& x = sample_of(p.r, p.m, p.L).in;
    const uint64_t n = p.r * p.L;
    for (uint64_t e = 0; e < x.size(); ++e) {
        const uint64_t k = e / p.m;
        in[2 * e] = x[e].real();
        in[2 * e + 1] = k == 0 || 2 * k == n ? nan : x[e].imag();
    }
}

// Row k of a first stage stands in groups of two behind row 0 (NEON) or in groups of four (SVE). Row 0 of all others is
// poison, and so is what lies behind the rows that a stage needs twiddles for.
void fill_twiddles(const stage_problem& p, placed_floats& table) {
    const bool sve = p.f->in->masked;
    const uint64_t group = !p.is_first() ? 1 : sve ? 4 : 2, from = group == 2 ? 1 : 0, rows = p.half();
    for (uint64_t k = group == 4 ? 0 : 1; k < rows; ++k)
        for (uint64_t j = 1; j < p.r; ++j) {
            const uint64_t first = k < from ? 0 : (k - from) / group * group + from;
            const bool full = k >= from && first + group <= rows;
            const std::complex<double> w = std::polar(1.0, 2 * M_PI * double(j * k) / double(p.r * p.L));
            const uint64_t e = full ? first * (p.r - 1) + group * (j - 1) + (k - first) : k * (p.r - 1) + j - 1;
            table[2 * e] = float(w.real());
            table[2 * e + 1] = float(w.imag());
        }
}

// Element e of the result, as a pair of floats or as one.
std::string compare(const stage_problem& p, const placed_floats& out, const std::vector<float>& had) {
    const std::vector<float> got = out.whole();
    const std::vector<reference::complex>& want = sample_of(p.r, p.m, p.L).out;
    const size_t start = out.front(), width = p.is_last() ? 1 : 2, end = start + width * want.size();
    for (size_t i = 0; i < got.size(); ++i)
        if ((i < start || i >= end) && std::memcmp(&got[i], &had[i], sizeof got[i]) != 0)
            return "wrote outside its outputs, at float " + std::to_string(ptrdiff_t(i) - ptrdiff_t(start));
    double error = 0, norm = 0;
    for (size_t e = 0; e < want.size(); ++e) {
        const float* g = &got[start + width * e];
        error += std::norm(reference::complex(g[0], width == 2 ? g[1] : 0) - want[e]);
        norm += std::norm(want[e]);
    }
    const double relative = std::sqrt(error / norm);
    return relative < tolerance ? "" : "relative error " + std::to_string(relative);
}

std::string check(const stage_problem& p) {
    const uint64_t results = (p.is_last() ? 1 : 2) * (p.L / 2 + 1) * p.r * p.m;
    placed_floats in(2 * (p.r * p.L / 2 + 1) * p.m, p.where), separate(results, p.where);
    placed_floats table(2 * (p.r - 1) * (p.is_first() ? p.half() : p.L), p.where);
    placed_floats& out = p.in_place ? in : separate;
    fill_input(p, in);
    fill_twiddles(p, table);
    const auto in_before = in.whole(), out_before = out.whole();
    sorensen_stage_record record{};
    record.done = p.m;
    record.rest = p.L;
    record.half = p.half();
    record.has_middle = p.L % 2 == 0;
    record.is = record.os = 1;
    record.twiddles = p.is_last() ? nullptr : table.data();
    record.radix = p.r;
    record.sign = 1;
    const void* address = nullptr;
    const bool survived =
        survives([&] { reinterpret_cast<sorensen_kernel>(p.kernel)(&record, in.data(), out.data()); }, address);
    if (!survived) return "touched memory near its " + name_of_touched(address, in, out, table);
    if (!p.in_place && std::memcmp(in.whole().data(), in_before.data(), in_before.size() * sizeof in_before[0]) != 0)
        return "wrote to its input";
    return compare(p, out, out_before);
}

class sorensen_kernels : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }

    // All counts of branches and rows that the family can meet.
    template <class Check>
    void for_each_problem(uint64_t most, const Check& check_problem) const {
        for (const int r : family().sizes) {
            const any_kernel kernel = kernel_families[GetParam()].tables[1][r - 1];
            ASSERT_NE(kernel, nullptr) << family().name << " " << r;
            const uint64_t most_branches = family().loop == shape::hermitian_first ? 1 : most;
            const uint64_t most_rows = family().loop == shape::hermitian_last ? 1 : most;
            for (uint64_t m = 1; m <= most_branches; ++m)
                for (uint64_t L = 1; L <= most_rows; ++L)
                    check_problem(stage_problem{&family(), kernel, uint64_t(r), m, L});
        }
    }
};

TEST_P(sorensen_kernels, compute_their_stages) {
    for_each_problem(side, [](const stage_problem& p) { EXPECT_EQ(check(p), "") << p; });
    for (const int r : family().sizes)
        for (const uint64_t many : {16, 17, 30, 35}) {
            const any_kernel kernel = kernel_families[GetParam()].tables[1][r - 1];
            const bool first = family().loop == shape::hermitian_first, last = family().loop == shape::hermitian_last;
            const stage_problem p{&family(), kernel, uint64_t(r), first ? 1 : many, last ? 1 : first ? many : 3};
            EXPECT_EQ(check(p), "") << p;
        }
}

TEST_P(sorensen_kernels, touch_nothing_outside_their_arrays) {
    for_each_problem(side, [](stage_problem p) {
        if (p.m > 5 && p.L > 3) return;
        for (p.where = placement::ends_at_page;; p.where = placement::starts_at_page) {
            EXPECT_EQ(check(p), "") << p;
            if (p.where == placement::starts_at_page) return;
        }
    });
}

// The only stage of a plan may be run in place.
TEST_P(sorensen_kernels, of_the_last_stage_read_a_lone_branch_before_they_write) {
    if (family().loop != shape::hermitian_last) return;
    for_each_problem(1, [](stage_problem p) {
        p.in_place = true;
        EXPECT_EQ(check(p), "") << p;
    });
}

TEST_P(sorensen_kernels, exist_for_the_sizes_of_the_family_only) {
    const kernel_family& built = kernel_families[GetParam()];
    ASSERT_STREQ(family().name, built.name);
    EXPECT_EQ(built.tables[0], nullptr) << "backward only";
    for (int size = 1; size <= 64; ++size) {
        const bool listed = std::ranges::count(family().sizes, size) > 0;
        EXPECT_EQ(built.tables[1][size - 1] != nullptr, listed) << family().name << size;
    }
}

// The look-ups: for unit strides and the backward direction only, whatever the batch.
TEST(sorensen_look_ups, find_kernels_for_unit_strides_and_sign_plus_one) {
    using lookup = void (*)(sorensen_stage_record*, const fft_plan*);
    const std::pair<lookup, const char*> lookups[] = {
        {stage_lookup_sorensen_first_neon, "sorensen_first_neon"},
        {stage_lookup_sorensen_other_neon, "sorensen_other_neon"},
        {stage_lookup_sorensen_last_neon, "sorensen_last_neon"},
        {stage_lookup_sorensen_first_sve, "sorensen_first_sve"},
        {stage_lookup_sorensen_other_sve, "sorensen_other_sve"},
        {stage_lookup_sorensen_last_sve, "sorensen_last_sve"},
    };
    for (const auto& [look_up, name] : lookups) {
        const std::vector<int> all = sorensen_families();
        const auto family = std::ranges::find_if(all, [&](int f) { return std::string(forms()[f].name) == name; });
        const any_kernel* table = kernel_families[*family].tables[1];
        for (uint64_t radix = 0; radix <= 130; ++radix)
            for (int64_t is : {1, 2})
                for (int64_t os : {1, 3})
                    for (int64_t sign : {-1, 0, 1})
                        for (int batch : {0, 1}) {
                            fft_plan plan{};
                            plan.dims[0] = {1024, is, os};
                            plan.sign = sign;
                            plan.howmany_rank = batch;
                            sorensen_stage_record record{};
                            record.radix = radix;
                            record.kernel = reinterpret_cast<sorensen_kernel>(1);
                            look_up(&record, &plan);
                            const bool found = is == 1 && os == 1 && sign == 1 && radix >= 1 && radix <= 64;
                            const any_kernel expected = found ? table[radix - 1] : nullptr;
                            EXPECT_EQ(reinterpret_cast<any_kernel>(record.kernel), expected) << name << " " << radix;
                        }
    }
}

INSTANTIATE_TEST_SUITE_P(all, sorensen_kernels, testing::ValuesIn(sorensen_families()),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
