// SPDX-License-Identifier: Apache-2.0
#include "real_problem.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <sstream>

#include "kernels/real_kernels.h"
#include "tests/support/signals.h"

namespace {

using namespace generator;

constexpr double tolerance = 3e-7;

std::vector<int> sequence_slots(int n) {
    std::vector<int> slots(n);
    for (int j = 0; j < n; ++j) slots[j] = j;
    return slots;
}

// `whole`: with the imaginary parts that are zero.
std::vector<int> spectrum_slots(int n, bool whole) {
    std::vector<int> slots;
    for (int k = 0; 2 * k <= n; ++k) {
        slots.push_back(2 * k);
        if (whole || (k > 0 && 2 * k < n)) slots.push_back(2 * k + 1);
    }
    return slots;
}

double angle(int jk, int n) { return 2 * std::numbers::pi * (jk % n) / n; }

// The weight of one input number in one output number.
double forward_weight(int out, int j, int n) {
    const double a = angle(out / 2 * j, n);
    return out % 2 ? -std::sin(a) : std::cos(a);
}
double backward_weight(int j, int in, int n) {
    const int k = in / 2;
    const double a = angle(k * j, n), twice = k == 0 || 2 * k == n ? 1 : 2;
    return twice * (in % 2 ? -std::sin(a) : std::cos(a));
}
double hartley_weight(int k, int j, int n) { return std::cos(angle(k * j, n)) + std::sin(angle(k * j, n)); }
double cosine_weight(int k, int j, int n) {
    const double ends = j == 0 || j == n - 1 ? 1 : 2;
    return ends * std::cos(angle(j * k, 2 * (n - 1)));
}

// Where a slot stands, in floats from the start of its row.
int64_t position(const real_problem& p, bool spectrum, int slot) {
    if (!spectrum) return int64_t(slot) * p.stride;
    const int k = slot / 2;
    if (p.spectrum == storage::plain || p.spectrum == storage::hartley) return int64_t(slot) * p.spectrum_stride;
    if (p.spectrum == storage::complex_numbers) return int64_t(2 * k) * p.spectrum_stride + slot % 2;
    return int64_t(slot % 2 ? p.n - k : k) * p.spectrum_stride;
}

int64_t distance(const real_problem& p, bool spectrum) {
    return !spectrum                                ? p.distance
           : p.spectrum == storage::complex_numbers ? 2 * p.spectrum_distance
                                                    : p.spectrum_distance;
}

// Floats of the layout of one side. The imaginary part that coefficient n / 2 hasn't belongs to it.
int64_t extent(const real_problem& p, bool spectrum, const std::vector<int>& slots) {
    int64_t last = 0;
    for (int slot : slots) last = std::max(last, position(p, spectrum, slot));
    if (spectrum && p.spectrum == storage::complex_numbers && p.n % 2 == 0) last = last / 2 * 2 + 1;
    return last + 1 + int64_t(std::max(p.count, 1) - 1) * distance(p, spectrum);
}

void call_cosine(const real_problem& p, const float* in, float* out) {
    std::vector<int64_t> from(p.n), to(p.n);
    for (int j = 0; j < p.n; ++j) from[j] = int64_t(j) * p.stride, to[j] = int64_t(j) * p.spectrum_stride;
    reinterpret_cast<redft00_kernel>(p.kernel)(in, out, from.data(), to.data(), p.count, p.distance,
                                               p.spectrum_distance);
}

void call(const real_problem& p, float* in, float* out) {
    if (p.spectrum == storage::plain) return call_cosine(p, in, out);
    if (p.form->loop == shape::alone)
        return reinterpret_cast<direct_contig_kernel>(p.kernel)(out, in, nullptr, nullptr);
    const bool forward = is_forward(*p.form), pairs = p.spectrum == storage::complex_numbers;
    float* const a = forward ? in : out;
    float* const b = forward ? out : in;
    std::vector<int64_t> s0(p.n), s1(p.n), s2(p.n);
    const int64_t step = pairs ? 2 * p.spectrum_stride : p.spectrum_stride;
    for (int i = 0; i < p.n; ++i) {
        s0[i] = int64_t(2 * i) * p.stride;
        s1[i] = i * step;
        s2[i] = pairs ? s1[i] : -s1[i];
    }
    float* const b1 = pairs ? b + 1 : b + p.n * step;
    reinterpret_cast<real_kernel>(p.kernel)(a, a + p.stride, b, b1, s0.data(), s1.data(), s2.data(), p.count,
                                            distance(p, !forward), distance(p, forward));
}

std::string compare(const real_problem& p, const std::vector<float>& got, const std::vector<float>& before,
                    const std::vector<double>& want, size_t front) {
    double error = 0, norm = 0;
    const bool exact = is_in_double(*p.form, p.n);
    for (size_t e = 0; e < got.size(); ++e) {
        if (std::isnan(want[e])) {
            if (std::memcmp(&got[e], &before[e], sizeof got[e]) != 0)
                return "wrote outside its outputs, at " + std::to_string(ptrdiff_t(e) - ptrdiff_t(front));
            continue;
        }
        const double difference = std::fabs(got[e] - want[e]);
        // Half a unit in the last place of a float, and what double precision may add.
        const double half_unit = want[e] == 0 ? 0 : std::ldexp(1, std::ilogb(want[e]) - 24);
        if (exact && !(difference <= half_unit + 1e-14)) return "not the nearest float at " + std::to_string(e - front);
        error += difference * difference;
        norm += want[e] * want[e];
    }
    const double relative = std::sqrt(error / norm);
    if (norm == 0 || relative < tolerance) return {};
    return "relative error " + std::to_string(relative);
}

}  // namespace

real_rows::real_rows(const form& f, int n) {
    const bool cosine = f.loop == shape::cosine_rows, forward = is_forward(f);
    const bool whole = f.loop == shape::whole_rows;
    in_slots = cosine || forward ? sequence_slots(n) : spectrum_slots(n, false);
    const bool hartley = f.spectrum == row_spectrum::hartley;
    out_slots = cosine || hartley || !forward ? sequence_slots(n) : spectrum_slots(n, whole);
    const auto weight = cosine ? cosine_weight : hartley ? hartley_weight : forward ? forward_weight : backward_weight;
    std::vector<double> weights;
    for (int to : out_slots)
        for (int from : in_slots) weights.push_back(weight(to, from, n));
    uniform_noise noise(n);
    for (int row = 0; row < most; ++row) {
        for (size_t i = 0; i < in_slots.size(); ++i) in[row].push_back(noise());
        for (size_t o = 0; o < out_slots.size(); ++o) {
            double sum = 0;
            for (size_t i = 0; i < in_slots.size(); ++i) sum += weights[o * in_slots.size() + i] * in[row][i];
            out[row].push_back(sum);
        }
    }
}

bool is_forward(const form& f) { return f.sign < 0; }

int rows_done(const form& f, int count) {
    return f.loop == shape::real_row || f.loop == shape::alone           ? 1
           : f.loop == shape::real_groups || f.loop == shape::whole_rows ? count / 4 * 4
                                                                         : count;
}

std::string describe(const real_problem& p) {
    std::ostringstream s;
    s << p.form->name << " n=" << p.n
      << (p.spectrum == storage::complex_numbers ? " complex"
          : p.spectrum == storage::plain         ? ""
          : p.spectrum == storage::hartley       ? " Hartley"
                                                 : " half-complex")
      << " count=" << p.count << " stride=" << p.stride << " distance=" << p.distance
      << " spectrum stride=" << p.spectrum_stride << " distance=" << p.spectrum_distance
      << (p.in_place ? " in place, " : " ") << name_of(p.where);
    return s.str();
}

std::string check(const real_problem& p, const real_rows& rows) {
    const bool cosine = p.spectrum == storage::plain, spectrum_in = !cosine && !is_forward(*p.form);
    const bool spectrum_out = cosine || is_forward(*p.form);
    const int64_t in_extent = extent(p, spectrum_in, rows.in_slots),
                  out_extent = extent(p, spectrum_out, rows.out_slots);
    placed_floats in(p.in_place ? std::max(in_extent, out_extent) : in_extent, p.where), out(out_extent, p.where);
    for (int row = 0; row < p.count; ++row)
        for (size_t i = 0; i < rows.in_slots.size(); ++i)
            in[row * distance(p, spectrum_in) + position(p, spectrum_in, rows.in_slots[i])] = float(rows.in[row][i]);
    placed_floats& target = p.in_place ? in : out;
    const auto in_before = in.whole(), before = target.whole();
    std::vector<double> want(before.size(), std::numeric_limits<double>::quiet_NaN());
    for (int row = 0; row < std::min(p.count, rows_done(*p.form, p.count)); ++row)
        for (size_t o = 0; o < rows.out_slots.size(); ++o)
            want.at(target.front() + row * distance(p, spectrum_out) + position(p, spectrum_out, rows.out_slots[o])) =
                rows.out[row][o];
    const void* address = nullptr;
    if (!survives([&] { call(p, in.data(), target.data()); }, address))
        return std::string("touched memory near its ") + (in.owns(address)    ? "input"
                                                          : out.owns(address) ? "output"
                                                                              : "?");
    if (!p.in_place && std::memcmp(in.whole().data(), in_before.data(), in_before.size() * sizeof in_before[0]) != 0)
        return "wrote to its input";
    return compare(p, target.whole(), before, want, target.front());
}
