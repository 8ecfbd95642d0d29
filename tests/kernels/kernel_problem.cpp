// SPDX-License-Identifier: Apache-2.0
#include "kernel_problem.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

#include "kernels/kernel_types.h"

namespace {

using namespace generator;
using cfloat = std::complex<float>;

constexpr double tolerance = 3e-7;

// Transform c holds transform 0 times i to the power c, and that times the number of its four, so that they are told
// apart.
template <class T>
std::complex<T> turned(std::complex<T> x, int lane) {
    constexpr T re[] = {1, 0, -1, 0}, im[] = {0, 1, 0, -1};
    const T c = re[lane % 4] * T(1 + lane / 4), s = im[lane % 4] * T(1 + lane / 4);
    return {x.real() * c - x.imag() * s, x.real() * s + x.imag() * c};
}

// Twiddles in the layout that the form reads. What it must not read stays poisoned.
void fill_twiddles(const kernel_problem& p, const transform_grid& grid, placed_array& table) {
    const int r = p.radix, m = p.done;
    const form& f = *p.form;
    int group = 1;
    if (f.loop == shape::last && f.data == layout::contig) group = f.in->lanes;
    for (int i = f.loop == shape::other ? 1 : 0; i < m; ++i)
        for (int j = 1; j < r; ++j) {
            const int g = i / group;
            const bool full = group * g + group <= m;
            table[full ? group * (g * (r - 1) + j - 1) + i % group : i * (r - 1) + j - 1] = grid.twiddle(i, j);
        }
}

void call(const kernel_problem& p, const cfloat* in_data, cfloat* out_data, cfloat* table) {
    const float* in = reinterpret_cast<const float*>(in_data);
    float* out = reinterpret_cast<float*>(out_data);
    switch (p.form->loop) {
        case shape::direct:
            if (p.form->data == layout::contig)
                reinterpret_cast<direct_contig_kernel>(p.kernel)(out, in, nullptr, nullptr);
            else
                reinterpret_cast<direct_strided_kernel>(p.kernel)(out, in, p.is, p.os, nullptr);
            return;
        case shape::many:
            reinterpret_cast<many_kernel>(p.kernel)(out, in, p.is, p.os);
            return;
        case shape::assemble:
            reinterpret_cast<many_assemble_kernel>(p.kernel)(out, in, p.is, p.os, p.idist, p.odist);
            return;
        case shape::rows:
            reinterpret_cast<many_rows_kernel>(p.kernel)(out, in, p.idist, p.odist, p.count);
            return;
        default:
            break;
    }
    stage_record record{};
    record.rest = p.rest;
    record.done = p.done;
    record.is = p.is;
    record.os = p.os;
    record.radix = p.radix;
    record.sign = p.sign;
    record.twiddles = reinterpret_cast<float*>(table);
    record.spare[word_of_blocks] = p.in_blocks;
    reinterpret_cast<stage_kernel>(p.kernel)(&record, in, out);
}

// Where a column of a row stands: in a plain array, or in blocks of four rows and four columns.
size_t place_of(size_t row, size_t column, size_t columns, bool in_blocks) {
    if (!in_blocks) return row * columns + column;
    return row / 4 * 4 * columns + column / 4 * 16 + row % 4 * 4 + column % 4;
}

std::string compare(const std::vector<cfloat>& got, const std::vector<cfloat>& before,
                    const std::vector<std::complex<double>>& want, size_t front) {
    double error = 0, norm = 0;
    for (size_t e = 0; e < got.size(); ++e) {
        if (std::isnan(want[e].real())) {
            if (std::memcmp(&got[e], &before[e], sizeof got[e]) != 0)
                return "wrote outside its outputs, at " + std::to_string(ptrdiff_t(e) - ptrdiff_t(front));
            continue;
        }
        error += std::norm(std::complex<double>(got[e]) - want[e]);
        norm += std::norm(want[e]);
    }
    const double relative = std::sqrt(error / norm);
    if (relative < tolerance) return {};
    return "relative error " + std::to_string(relative);
}

}  // namespace

int lanes_of(const form& f) {
    if (f.data != layout::batch) return 1;
    return f.in->lanes;
}

std::string describe(const kernel_problem& p) {
    std::ostringstream s;
    s << p.form->name << " n=" << p.radix << " sign=" << p.sign << " m=" << p.done << " L=" << p.rest << " is=" << p.is
      << " os=" << p.os << " idist=" << p.idist << " odist=" << p.odist << " count=" << p.count
      << (p.in_place ? " in place," : "") << (p.in_blocks ? " in blocks, " : " ") << name_of(p.where);
    return s.str();
}

std::string check(const kernel_problem& p, const transform_grid& grid) {
    const int lanes = lanes_of(*p.form) * p.count, r = p.radix, m = p.done, columns = p.rest;
    const size_t last = size_t(r) * m * columns - 1;
    placed_array in(last * p.is + size_t(lanes - 1) * p.idist + 1, p.where);
    placed_array out(last * p.os + size_t(lanes - 1) * p.odist + 1, p.where);
    placed_array table(size_t(m) * (r - 1), p.where);
    placed_array& target = p.in_place ? in : out;
    const auto out_before = target.whole();
    std::vector<std::complex<double>> want(out_before.size(), std::numeric_limits<double>::quiet_NaN());
    for (int i = 0; i < m; ++i)
        for (int l = 0; l < columns; ++l)
            for (int j = 0; j < r; ++j)
                for (int c = 0; c < lanes; ++c) {
                    const bool is_last = p.form->loop == shape::last;
                    const size_t from = is_last ? place_of(i, j, r, p.in_blocks) : (size_t(i) * r + j) * columns + l;
                    const size_t to = place_of(size_t(j) * m + i, l, columns, p.in_blocks && !is_last);
                    in[from * p.is + c * p.idist] = turned(grid.in(i, j, l), c);
                    want[target.front() + to * p.os + c * p.odist] = turned(grid.out(i, j, l), c);
                }
    fill_twiddles(p, grid, table);
    const auto in_before = in.whole();
    const void* address = nullptr;
    if (!survives([&] { call(p, in.data(), target.data(), table.data()); }, address))
        return "touched memory near its " + name_of_touched(address, in, out, table);
    if (!p.in_place && std::memcmp(in.whole().data(), in_before.data(), in_before.size() * sizeof in_before[0]) != 0)
        return "wrote to its input";
    return compare(target.whole(), p.in_place ? in_before : out_before, want, target.front());
}
