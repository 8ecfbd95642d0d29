// SPDX-License-Identifier: Apache-2.0
// Copies of every form, and the interleaving of split arrays.
#include "kernels/move/move.h"

#include "arrays.h"

#include <functional>
#include <sstream>

namespace {

std::string text(const std::vector<fft_dim>& dims) {
    std::ostringstream s;
    for (const fft_dim& d : dims) s << " " << d.n << ":" << d.is << ":" << d.os;
    return s.str();
}

void for_each_index(const std::vector<fft_dim>& dims, const std::function<void(int64_t, int64_t)>& visit,
                    size_t level = 0, int64_t in = 0, int64_t out = 0) {
    if (level == dims.size()) return visit(in, out);
    for (int64_t i = 0; i < dims[level].n; ++i)
        for_each_index(dims, visit, level + 1, in + i * dims[level].is, out + i * dims[level].os);
}

int64_t reach(const std::vector<fft_dim>& dims, bool input) {
    int64_t last = 1;
    for (const fft_dim& d : dims) {
        if (d.n == 0) return 0;
        last += (d.n - 1) * (input ? d.is : d.os);
    }
    return last;
}

// All small shapes, and the edges of vectors and blocks.
void for_each_shape(const std::function<void(int64_t rows, int64_t columns)>& check) {
    for (int64_t rows = 0; rows <= 40; ++rows)
        for (int64_t columns = 0; columns <= 40; ++columns) check(rows, columns);
    constexpr int64_t edges[] = {63, 64, 65, 127, 128, 129};
    for (int64_t rows : edges)
        for (int64_t columns : edges) check(rows, columns);
}

// `copy` is called with source, destination and the dims; its name is for the message.
using copy_call = std::function<void(const float*, float*, const std::vector<fft_dim>&)>;

void check_copy(const char* name, int width, const copy_call& copy, const std::vector<fft_dim>& dims) {
    const std::vector<float> source = numbered(reach(dims, true), width);
    guarded result(reach(dims, false), width), expected = result;
    for_each_index(dims, [&](int64_t in, int64_t out) { expected.put(out, &source[in * width]); });
    copy(source.data(), result.data(), dims);
    ASSERT_EQ(result.difference(expected), "") << name << text(dims);
}

}  // namespace

TEST(Copies, AreRightForOneRow) {
    const copy_call cpx = [](const float* s, float* d, const auto& dims) {
        copy_cpx(s, d, dims[0].n, dims[0].is, dims[0].os);
    };
    const copy_call fp = [](const float* s, float* d, const auto& dims) {
        copy_fp(s, d, dims[0].n, dims[0].is, dims[0].os);
    };
    for (int64_t n = 0; n <= 80; ++n)
        for (int64_t is : {1, 2, 3, 7})
            for (int64_t os : {1, 2, 5}) {
                check_copy("copy_cpx", 2, cpx, {{n, is, os}});
                check_copy("copy_fp", 1, fp, {{n, is, os}});
            }
}

TEST(Copies, AreRightForRowsOfContiguousElements) {
    const copy_call cpx = [](const float* s, float* d, const auto& m) {
        copy_rows_cpx(s, d, m[0].n, m[1].n, m[0].is, m[0].os);
    };
    const copy_call fp = [](const float* s, float* d, const auto& m) {
        copy_rows_fp(s, d, m[0].n, m[1].n, m[0].is, m[0].os);
    };
    for_each_shape([&](int64_t rows, int64_t columns) {
        check_copy("copy_rows_cpx", 2, cpx, {{rows, columns + 3, columns + 1}, {columns, 1, 1}});
        check_copy("copy_rows_fp", 1, fp, {{rows, columns, columns + 9}, {columns, 1, 1}});
    });
}

TEST(Copies, AreRightForRowsOfStridedElements) {
    const copy_call cpx = [](const float* s, float* d, const auto& m) {
        copy_matrix_cpx(s, d, m[0].n, m[1].n, m[1].is, m[0].is, m[1].os, m[0].os);
    };
    const copy_call fp = [](const float* s, float* d, const auto& m) {
        copy_matrix_fp(s, d, m[0].n, m[1].n, m[1].is, m[0].is, m[1].os, m[0].os);
    };
    // Small shapes in every combination of strides, all others in one of them.
    int turn = 0;
    for_each_shape([&](int64_t rows, int64_t columns) {
        const bool every = rows <= 9 && columns <= 9;
        int combination = 0;
        ++turn;
        for (int64_t is : {1, 2, 4})
            for (int64_t os : {1, 3}) {
                if (!every && combination++ != turn % 6) continue;
                const std::vector<fft_dim> wide = {{rows, is * columns + 1, os * columns + 2}, {columns, is, os}};
                const std::vector<fft_dim> tall = {{rows, 1, 1}, {columns, rows + is, rows + os}};
                // rows of one side are columns of the other: a transpose
                const std::vector<fft_dim> gathered = {{rows, 1, columns + os}, {columns, rows + is, 1}};
                const std::vector<fft_dim> scattered = {{rows, columns + is, 1}, {columns, 1, rows + os}};
                for (const std::vector<fft_dim>& m : {wide, tall, gathered, scattered}) {
                    check_copy("copy_matrix_cpx", 2, cpx, m);
                    check_copy("copy_matrix_fp", 1, fp, m);
                }
            }
    });
}

TEST(Copies, AreRightForAnyRank) {
    const copy_call cpx = [](const float* s, float* d, const auto& m) {
        copy_nd_cpx(s, d, static_cast<int32_t>(m.size()), m.data());
    };
    const copy_call fp = [](const float* s, float* d, const auto& m) {
        copy_nd_fp(s, d, static_cast<int32_t>(m.size()), m.data());
    };
    const std::vector<std::vector<fft_dim>> layouts = {
        {{9, 1, 1}},
        {{9, 2, 3}},
        {{5, 17, 20}, {17, 1, 1}},
        {{5, 1, 17}, {17, 5, 1}},
        {{3, 70, 1}, {4, 17, 3}, {17, 1, 12}},
        {{2, 60, 90}, {3, 20, 30}, {4, 5, 7}, {5, 1, 1}},
        {{2, 1, 60}, {3, 2, 20}, {4, 6, 5}, {5, 24, 1}},
        {{2, 1, 60}, {0, 2, 20}, {4, 6, 5}},
    };
    for (const auto& dims : layouts) {
        check_copy("copy_nd_cpx", 2, cpx, dims);
        check_copy("copy_nd_fp", 1, fp, dims);
    }
}

namespace {

// One problem: the split side's dims, the packed side's dims.
struct split_case {
    std::vector<fft_dim> split, packed;
};

std::vector<split_case> split_cases() {
    std::vector<split_case> cases;
    for (int64_t n = 1; n <= 40; ++n) {
        cases.push_back({{{n, 1, 1}}, {{n, 1, 1}}});
        cases.push_back({{{n, 3, 2}}, {{n, 1, 1}}});
        cases.push_back({{{n, 1, 1}}, {{n, 2, 3}}});
    }
    cases.push_back({{{3, 20, 22}, {17, 1, 1}}, {{3, 17, 17}, {17, 1, 1}}});
    cases.push_back({{{3, 1, 1}, {17, 3, 4}}, {{3, 17, 17}, {17, 1, 1}}});
    cases.push_back({{{2, 100, 110}, {3, 30, 33}, {9, 2, 3}}, {{2, 27, 27}, {3, 9, 9}, {9, 1, 1}}});
    cases.push_back(
        {{{2, 400, 400}, {2, 100, 110}, {3, 30, 33}, {9, 2, 3}}, {{2, 54, 54}, {2, 27, 27}, {3, 9, 9}, {9, 1, 1}}});
    return cases;
}

// The triples of one side, as strides of a copy between the two layouts; the last dimension cut where it is Hermitian.
std::vector<fft_dim> pairs(const split_case& c, bool input, bool half) {
    std::vector<fft_dim> dims;
    for (size_t d = 0; d < c.split.size(); ++d)
        dims.push_back({c.split[d].n, input ? c.split[d].is : c.split[d].os, input ? c.packed[d].is : c.packed[d].os});
    if (half) dims.back().n = dims.back().n / 2 + 1;
    return dims;
}

}  // namespace

TEST(SplitArrays, AreInterleaved) {
    for (uint32_t kind : {kind_c2c, kind_c2r, kind_r2c})
        for (const split_case& c : split_cases()) {
            const std::vector<fft_dim> dims = pairs(c, true, kind == kind_c2r);
            const std::vector<float> re = numbered(reach(dims, true), 1);
            std::vector<float> im = re;
            for (float& x : im) x += 0.5f;
            guarded result(reach(dims, false), 2), expected = result;
            for_each_index(dims, [&](int64_t split, int64_t packed) {
                const float element[2] = {re[split], im[split]};
                expected.put(packed, element);
            });
            split_pack(re.data(), im.data(), result.data(), kind, static_cast<int32_t>(dims.size()), c.split.data(),
                       c.packed.data());
            ASSERT_EQ(result.difference(expected), "") << "kind " << kind << text(dims);
        }
}

TEST(SplitArrays, AreSeparated) {
    for (uint32_t kind : {kind_c2c, kind_c2r, kind_r2c})
        for (const split_case& c : split_cases()) {
            const std::vector<fft_dim> dims = pairs(c, false, kind == kind_r2c);
            const std::vector<float> packed = numbered(reach(dims, false), 2);
            guarded re(reach(dims, true), 1), im = re, expected_re = re, expected_im = re;
            for_each_index(dims, [&](int64_t split, int64_t at) {
                expected_re.put(split, &packed[2 * at]);
                expected_im.put(split, &packed[2 * at + 1]);
            });
            split_unpack(packed.data(), re.data(), im.data(), kind, static_cast<int32_t>(dims.size()), c.split.data(),
                         c.packed.data());
            ASSERT_EQ(re.difference(expected_re), "") << "real, kind " << kind << text(dims);
            ASSERT_EQ(im.difference(expected_im), "") << "imaginary, kind " << kind << text(dims);
        }
}
