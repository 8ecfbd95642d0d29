// SPDX-License-Identifier: Apache-2.0
#include "tests/batch/differential/expected.h"

#include <map>

#include "tests/support/reference_dft.h"
#include "tests/support/reference_r2r.h"

namespace {

std::vector<int64_t> stored_lengths(const transform_problem& p, bool input) {
    std::vector<int64_t> lengths;
    for (size_t d = 0; d < p.dims.size(); ++d) lengths.push_back(p.stored_length(d, input));
    return lengths;
}

// Replaces every line along one axis by line_transform of it, which may be of another length.
template <class Transform>
values along_axis(const values& x, std::vector<int64_t>& lengths, size_t axis, Transform line_transform) {
    size_t inner = 1, outer = 1;
    for (size_t d = 0; d < lengths.size(); ++d) (d < axis ? outer : inner) *= d == axis ? 1 : lengths[d];
    const size_t n = lengths[axis];
    values result, line(n);
    for (size_t o = 0; o < outer; ++o)
        for (size_t i = 0; i < inner; ++i) {
            for (size_t j = 0; j < n; ++j) line[j] = x[(o * n + j) * inner + i];
            const values y = line_transform(line);
            result.resize(outer * y.size() * inner);
            for (size_t k = 0; k < y.size(); ++k) result[(o * y.size() + k) * inner + i] = y[k];
            lengths[axis] = static_cast<int64_t>(y.size());
        }
    return result;
}

// A transform of a short line as a matrix, row by row, made once from the transforms of the unit vectors.
template <class Transform>
const values& cached_matrix(size_t n, int which, Transform transform) {
    static std::map<std::pair<size_t, int>, values> matrices;
    values& matrix = matrices[{n, which}];
    if (!matrix.empty()) return matrix;
    matrix.resize(n * n);
    for (size_t j = 0; j < n; ++j) {
        values unit(n);
        unit[j] = 1;
        const values column = transform(unit);
        for (size_t k = 0; k < n; ++k) matrix[k * n + j] = column[k];
    }
    return matrix;
}

constexpr size_t longest_by_matrix = 70;

values complex_line(const values& line, int sign) {
    const size_t n = line.size();
    if (n > longest_by_matrix) return reference::dft(line, sign);
    const values& matrix = cached_matrix(n, sign, [&](const values& unit) { return reference::dft(unit, sign); });
    values result(n);
    for (size_t k = 0; k < n; ++k) {
        double re = 0, im = 0;  // the library's complex product looks for infinities
        for (size_t j = 0; j < n; ++j) {
            const std::complex<double> w = matrix[k * n + j], x = line[j];
            re += w.real() * x.real() - w.imag() * x.imag();
            im += w.real() * x.imag() + w.imag() * x.real();
        }
        result[k] = {re, im};
    }
    return result;
}

values half_of(values line) {
    line.resize(line.size() / 2 + 1);
    return line;
}

// The imaginary parts of coefficient 0 and of n / 2 aren't read.
values real_from_half(const values& half, int64_t n) {
    values whole(n);
    whole[0] = half[0].real();
    for (int64_t k = 1; k <= n / 2; ++k) {
        whole[k] = 2 * k == n ? half[k].real() : half[k];
        whole[n - k] = std::conj(whole[k]);
    }
    values line = complex_line(whole, 1);
    for (auto& z : line) z = z.real();
    return line;
}

values r2r_by_definition(const values& line, uint32_t kind) {
    std::vector<double> x;
    for (const auto& z : line) x.push_back(z.real());
    const std::vector<double> y = reference::r2r(x, kind);
    return {y.begin(), y.end()};
}

values r2r_line(const values& line, uint32_t kind) {
    const size_t n = line.size();
    if (n > longest_by_matrix) return r2r_by_definition(line, kind);
    const values& matrix =
        cached_matrix(n, 2 + static_cast<int>(kind), [&](const values& unit) { return r2r_by_definition(unit, kind); });
    values result(n);
    for (size_t k = 0; k < n; ++k) {
        double sum = 0;
        for (size_t j = 0; j < n; ++j) sum += matrix[k * n + j].real() * line[j].real();
        result[k] = sum;
    }
    return result;
}

values half_spectrum(const transform_problem& p, values x) {
    std::vector<int64_t> lengths;
    for (const fft_dim& d : p.dims) lengths.push_back(d.n);
    const size_t last = lengths.size() - 1;
    x = along_axis(x, lengths, last, [](const values& line) { return half_of(complex_line(line, -1)); });
    for (size_t d = 0; d < last; ++d)
        x = along_axis(x, lengths, d, [](const values& line) { return complex_line(line, -1); });
    return x;
}

}  // namespace

values hermitian_half(const transform_problem& p, const values& real) { return half_spectrum(p, real); }

values expected_transform(const transform_problem& p, const values& in) {
    if (p.kind == kind_r2c) return half_spectrum(p, in);
    std::vector<int64_t> lengths = stored_lengths(p, true);
    values x = in;
    const size_t rank = p.dims.size(), complex_rank = p.kind == kind_c2r ? rank - 1 : rank;
    for (size_t d = 0; d < complex_rank; ++d)
        x = along_axis(x, lengths, d, [&](const values& line) {
            return p.kind == kind_r2r ? r2r_line(line, p.r2r_kinds[d]) : complex_line(line, p.sign);
        });
    if (p.kind == kind_c2r)
        x = along_axis(x, lengths, rank - 1,
                       [&](const values& line) { return real_from_half(line, p.dims[rank - 1].n); });
    return x;
}
