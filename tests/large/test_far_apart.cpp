// SPDX-License-Identifier: Apache-2.0
// Elements that stand far apart: layouts that reach beyond 2^31 and 2^32 elements, in arrays of which only the pages
// that hold an element are in memory. An index that went through 32 bits anywhere would read and write elsewhere.
#include "include/qfftf.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

// A range of addresses without memory behind them, which comes page by page. The emulator takes a second to map one, so
// there are two for all tests, and each test gives the pages of its elements back.
constexpr size_t most_floats = (size_t(1) << 33) + (size_t(1) << 26);

class sparse_floats {
public:
    explicit sparse_floats(int which) : data_(range(which)) {}
    ~sparse_floats() {
        if (!data_) return;
        for (const size_t i : touched_) madvise(data_ + i / page * page, page * sizeof(float), MADV_DONTNEED);
    }
    sparse_floats(const sparse_floats&) = delete;
    sparse_floats& operator=(const sparse_floats&) = delete;
    float* get() const { return data_; }
    float& operator[](size_t i) {
        if (touched_.empty() || touched_.back() / page != i / page) touched_.push_back(i);
        return data_[i];
    }

private:
    static constexpr size_t page = 4096 / sizeof(float);
    static float* range(int which) {
        static float* const both[2] = {mapping(), mapping()};
        return both[which];
    }
    static float* mapping() {
        void* memory = mmap(nullptr, most_floats * sizeof(float), PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        return memory == MAP_FAILED ? nullptr : static_cast<float*>(memory);
    }
    float* const data_;
    std::vector<size_t> touched_;
};

enum class kind { c2c, r2c, c2r, r2r, split };
constexpr const char* kind_names[] = {"c2c", "r2c", "c2r", "r2r", "split"};
bool complex_in(kind k) { return k == kind::c2c || k == kind::c2r; }
bool complex_out(kind k) { return k == kind::c2c || k == kind::r2c; }

struct problem {
    kind what;
    int n, howmany;
    unsigned r2r_kind;
    int threads = 1;
};

// Strides of a transform's elements and of the batch, in elements of the side.
struct layout {
    int64_t stride, distance;
};

int64_t points(const problem& p, bool input) {
    const bool half = p.what == kind::r2c ? !input : p.what == kind::c2r && input;
    return half ? p.n / 2 + 1 : p.n;
}

// `im` are the imaginary parts of a split problem.
struct side {
    float* re;
    float* im;
    layout at;
};

qsl_fftf_plan plan_of(const problem& p, const side& in, const side& out) {
    const fft_iodim64 dim = {p.n, in.at.stride, out.at.stride}, batch = {p.howmany, in.at.distance, out.at.distance};
    const auto a = reinterpret_cast<qsl_fftf_complex*>(in.re), b = reinterpret_cast<qsl_fftf_complex*>(out.re);
    qsl_fftf_plan_with_nthreads(p.threads);
    qsl_fftf_plan plan = nullptr;
    switch (p.what) {
        case kind::c2c:
            plan = qsl_fftf_plan_guru64_dft(1, &dim, 1, &batch, a, b, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
            break;
        case kind::r2c:
            plan = qsl_fftf_plan_guru64_dft_r2c(1, &dim, 1, &batch, in.re, b, QSL_FFTF_RULES);
            break;
        case kind::c2r:
            plan = qsl_fftf_plan_guru64_dft_c2r(1, &dim, 1, &batch, a, out.re, QSL_FFTF_RULES);
            break;
        case kind::r2r:
            plan = qsl_fftf_plan_guru64_r2r(1, &dim, 1, &batch, in.re, out.re, &p.r2r_kind, QSL_FFTF_RULES);
            break;
        case kind::split:
            plan = qsl_fftf_plan_guru64_split_dft(1, &dim, 1, &batch, in.re, in.im, out.re, out.im, QSL_FFTF_RULES);
            break;
    }
    qsl_fftf_plan_with_nthreads(1);
    return plan;
}

void execute(qsl_fftf_plan plan) {
    ASSERT_NE(plan, nullptr);
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
}

template <class Visit>
void for_each_float(const problem& p, bool input, const layout& at, Visit visit) {
    const int parts = (input ? complex_in(p.what) : complex_out(p.what)) ? 2 : 1;
    for (int64_t t = 0; t < p.howmany; ++t)
        for (int64_t j = 0; j < points(p, input); ++j)
            for (int part = 0; part < parts; ++part) visit(size_t((t * at.distance + j * at.stride) * parts + part));
}

size_t reach(const problem& p, bool input, const layout& at) {
    const int parts = (input ? complex_in(p.what) : complex_out(p.what)) ? 2 : 1;
    return size_t(((p.howmany - 1) * at.distance + (points(p, input) - 1) * at.stride + 1) * parts);
}

// The same numbers far apart and close together; a split problem's imaginary parts stand behind its real ones.
void expect_same_as_compact(const problem& p, const layout& in_at, const layout& out_at, const std::string& text) {
    SCOPED_TRACE(std::string(kind_names[int(p.what)]) + " " + std::to_string(p.n) + " kind " +
                 std::to_string(p.r2r_kind) + " batch " + std::to_string(p.howmany) + " threads " +
                 std::to_string(p.threads) + ", " + text);
    const int planes = p.what == kind::split ? 2 : 1;
    const layout in_close = {1, points(p, true)}, out_close = {1, points(p, false)};
    const size_t in_reach = reach(p, true, in_at), out_reach = reach(p, false, out_at);
    const size_t in_size = reach(p, true, in_close), out_size = reach(p, false, out_close);
    ASSERT_LE(std::max(in_reach, out_reach) * size_t(planes), most_floats);
    sparse_floats in(0), out(1);
    ASSERT_TRUE(in.get() && out.get()) << "no addresses";
    std::vector<float> near_in(in_size * size_t(planes)), near_out(out_size * size_t(planes));
    uniform_noise noise(9);
    std::vector<size_t> far_places;
    for_each_float(p, true, in_at, [&](size_t at) { far_places.push_back(at); });
    size_t next = 0;
    for_each_float(p, true, in_close, [&](size_t at) {
        for (int plane = 0; plane < planes; ++plane)
            in[far_places[next] + size_t(plane) * in_reach] = near_in[at + size_t(plane) * in_size] = noise();
        ++next;
    });
    execute(plan_of(p, {in.get(), in.get() + in_reach, in_at}, {out.get(), out.get() + out_reach, out_at}));
    execute(plan_of(p, {near_in.data(), near_in.data() + in_size, in_close},
                    {near_out.data(), near_out.data() + out_size, out_close}));
    far_places.clear();
    for_each_float(p, false, out_at, [&](size_t at) { far_places.push_back(at); });
    double difference = 0, size = 0;
    next = 0;
    for_each_float(p, false, out_close, [&](size_t at) {
        for (int plane = 0; plane < planes; ++plane) {
            const double expected = near_out[at + size_t(plane) * out_size];
            difference += std::pow(out[far_places[next] + size_t(plane) * out_reach] - expected, 2);
            size += expected * expected;
        }
        ++next;
    });
    EXPECT_LT(std::sqrt(difference / size), 1e-6);
}

// For both sides far apart, and for each with the other close.
void expect_everywhere(const problem& p) {
    const int64_t n = p.n, apart = (int64_t(1) << 32) / std::max(1, p.howmany - 1) + 37,
                  spread = (int64_t(1) << 32) / (n - 1) + 41;
    const layout transforms_apart = {1, apart}, elements_apart = {spread, 1};
    const layout in_close = {1, points(p, true)}, out_close = {1, points(p, false)};
    const layout in_between = {p.howmany, 1};
    expect_same_as_compact(p, transforms_apart, transforms_apart, "transforms far apart");
    expect_same_as_compact(p, elements_apart, elements_apart, "elements far apart");
    expect_same_as_compact(p, transforms_apart, out_close, "transforms of the input far apart");
    expect_same_as_compact(p, in_close, transforms_apart, "transforms of the output far apart");
    expect_same_as_compact(p, elements_apart, out_close, "elements of the input far apart");
    expect_same_as_compact(p, in_between, elements_apart, "elements of the output far apart");
}

}  // namespace

// Lengths of one kernel, of two stages, of three, and of a convolution; batches of whole and broken groups of lanes.
TEST(FarApart, ComplexTransformsAreThoseOfCloseArrays) {
    for (const int n : {2, 16, 31, 53, 64, 100})
        for (const int howmany : {1, 2, 7}) expect_everywhere({kind::c2c, n, howmany, 0});
}

TEST(FarApart, RealTransformsAreThoseOfCloseArrays) {
    for (const kind what : {kind::r2c, kind::c2r})
        for (const int n : {2, 9, 16, 53, 100})
            for (const int howmany : {1, 8}) expect_everywhere({what, n, howmany, 0});
}

TEST(FarApart, RealToRealTransformsAreThoseOfCloseArrays) {
    for (unsigned r2r_kind = QSL_FFTF_R2HC; r2r_kind <= QSL_FFTF_RODFT11; ++r2r_kind)
        for (const int n : {4, 17, 45})
            for (const int howmany : {1, 5}) expect_everywhere({kind::r2r, n, howmany, r2r_kind});
}

TEST(FarApart, SplitTransformsAreThoseOfCloseArrays) {
    for (const int n : {8, 31, 100})
        for (const int howmany : {1, 5}) expect_everywhere({kind::split, n, howmany, 0});
}

TEST(FarApart, TransformsBySeveralThreadsAreThoseOfCloseArrays) {
    for (const int n : {16, 100})
        for (const kind what : {kind::c2c, kind::r2c, kind::c2r}) expect_everywhere({what, n, 9, 0, 3});
}

namespace {

// Rows and columns: `apart` elements from row to row, on both sides or on one.
void expect_matrix(int rows, int columns, int64_t in_apart, int64_t out_apart) {
    SCOPED_TRACE(std::to_string(rows) + "x" + std::to_string(columns) + " rows " + std::to_string(in_apart) + " and " +
                 std::to_string(out_apart) + " apart");
    sparse_floats in(0), out(1);
    ASSERT_TRUE(in.get() && out.get());
    const size_t count = 2 * size_t(rows) * size_t(columns);
    std::vector<float> near_in(count), near_out(count);
    uniform_noise noise(4);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < 2 * columns; ++c)
            in[size_t(2 * r * in_apart + c)] = near_in[size_t(2 * r * columns + c)] = noise();
    const fft_iodim64 dims[2] = {{rows, in_apart, out_apart}, {columns, 1, 1}};
    const auto pairs = [](float* x) { return reinterpret_cast<qsl_fftf_complex*>(x); };
    execute(qsl_fftf_plan_guru64_dft(2, dims, 0, nullptr, pairs(in.get()), pairs(out.get()), -1, QSL_FFTF_RULES));
    execute(qsl_fftf_plan_dft_2d(rows, columns, pairs(near_in.data()), pairs(near_out.data()), -1, QSL_FFTF_RULES));
    double difference = 0, size = 0;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < 2 * columns; ++c) {
            const double expected = near_out[size_t(2 * r * columns + c)];
            difference += std::pow(out[size_t(2 * r * out_apart + c)] - expected, 2);
            size += expected * expected;
        }
    EXPECT_LT(std::sqrt(difference / size), 1e-6);
}

}  // namespace

TEST(FarApart, MatricesOfRowsFarApartAreThoseOfCloseArrays) {
    for (const int rows : {4, 30, 64})
        for (const int columns : {8, 100}) {
            const int64_t apart = (int64_t(1) << 32) / rows + 5;
            expect_matrix(rows, columns, apart, apart);
            expect_matrix(rows, columns, apart, columns);
            expect_matrix(rows, columns, columns, apart);
        }
}

// The call whose distances are 32-bit numbers, their products not.
TEST(FarApart, ManyTransformsReachAsFarAsTheirDistancesSay) {
    constexpr int distance = 0x60000000, n = 64, howmany = 3;
    sparse_floats in(0), out(1);
    ASSERT_TRUE(in.get() && out.get());
    const auto pairs = [](float* x) { return reinterpret_cast<qsl_fftf_complex*>(x); };
    qsl_fftf_plan plan = qsl_fftf_plan_many_dft(1, &n, howmany, pairs(in.get()), nullptr, 1, distance, pairs(out.get()),
                                                nullptr, 1, distance, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    for (int64_t t = 0; t < howmany; ++t) in[size_t(2 * t * distance)] = float(t + 1);  // impulses
    execute(plan);
    for (int64_t t = 0; t < howmany; ++t)
        for (int k = 0; k < n; ++k) {
            EXPECT_EQ(out[size_t(2 * (t * distance + k))], float(t + 1)) << t << ", " << k;
            EXPECT_EQ(out[size_t(2 * (t * distance + k) + 1)], 0) << t << ", " << k;
        }
}
