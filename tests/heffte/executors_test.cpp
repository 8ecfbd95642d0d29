// SPDX-License-Identifier: Apache-2.0
// The executors of the heFFTe backend by themselves: every direction and pair of directions of boxes in every order of
// their directions, against sums in double precision. Prints what fails; ends with 1 then.
#include <heffte_backend_qfftf.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>

namespace {

using complexd = std::complex<double>;
using box = heffte::box3d<int>;
const double pi = 3.14159265358979323846;
int checks = 0, failures = 0;

std::string text(box const& b, std::vector<int> const& directions) {
    std::string result = "box";
    for (int n : b.size) result += " " + std::to_string(n);
    result += ", order";
    for (int d : b.order) result += " " + std::to_string(d);
    result += ", along";
    for (int d : directions) result += " " + std::to_string(d);
    return result;
}

int step(box const& b, int direction) {
    int result = 1;
    for (int d : b.order) {
        if (d == direction) break;
        result *= b.size[d];
    }
    return result;
}

// Sums along one direction; the result has `length` elements there.
std::vector<complexd> along(box const& b, int d, int length, std::vector<complexd> const& data,
                            std::function<complexd(int j, int k)> const& weight) {
    box to = b;
    to.size[d] = length;
    std::vector<complexd> result(to.count());
    const int u = (d + 1) % 3, v = (d + 2) % 3;
    for (int p = 0; p < b.size[u]; ++p)
        for (int q = 0; q < b.size[v]; ++q)
            for (int k = 0; k < length; ++k)
                for (int j = 0; j < b.size[d]; ++j)
                    result[p * step(to, u) + q * step(to, v) + k * step(to, d)] +=
                        weight(j, k) * data[p * step(b, u) + q * step(b, v) + j * step(b, d)];
    return result;
}

std::function<complexd(int, int)> fourier(int n, int sign) {
    return [=](int j, int k) { return std::polar(1.0, sign * 2 * pi * (j * k % n) / n); };
}

// Arrays end in elements that nobody may touch.
const std::size_t guard = 16;
template <typename value>
void expect(std::vector<value> const& result, std::vector<complexd> const& wanted, std::string const& what) {
    double error = 0, norm = 0;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        error += std::norm(complexd(result[i]) - wanted[i]);
        norm += std::norm(wanted[i]);
    }
    bool whole = result.size() == wanted.size() + guard;
    for (std::size_t i = wanted.size(); i < result.size(); ++i) whole = whole and result[i] == value(7);
    ++checks;
    if (whole and std::sqrt(error / norm) < 4e-7) return;
    ++failures;
    std::fprintf(stderr, "%s: relative error %g%s\n", what.c_str(), std::sqrt(error / norm),
                 whole ? "" : ", guard changed");
}

void assign(float& to, complexd from) { to = static_cast<float>(from.real()); }
void assign(std::complex<float>& to, complexd from) { to = std::complex<float>(from); }

template <typename value>
std::vector<value> guarded(std::vector<complexd> const& data) {
    std::vector<value> result(data.size() + guard, value(7));
    for (std::size_t i = 0; i < data.size(); ++i) assign(result[i], data[i]);
    return result;
}

std::vector<complexd> noise(std::size_t count, bool is_real) {
    static std::mt19937 random(1);
    std::vector<complexd> result(count);
    for (auto& z : result) {
        const float re = random() / 4294967296.0F - 0.5F, im = random() / 4294967296.0F - 0.5F;
        z = {re, is_real ? 0 : im};
    }
    return result;
}

void check_complex(box const& b, std::vector<int> const& directions) {
    using executor = heffte::one_dim_backend<heffte::backend::qfftf>::executor;
    const executor run = directions.size() == 1   ? executor(nullptr, b, directions[0])
                         : directions.size() == 2 ? executor(nullptr, b, directions[0], directions[1])
                                                  : executor(nullptr, b);
    for (int sign : {-1, 1}) {
        const auto data = noise(b.count(), false);
        auto wanted = data;
        for (int d : directions) wanted = along(b, d, b.size[d], wanted, fourier(b.size[d], sign));
        auto array = guarded<std::complex<float>>(data);
        if (sign < 0)
            run.forward(array.data(), nullptr);
        else
            run.backward(array.data(), nullptr);
        expect(array, wanted, (sign < 0 ? "c2c forward, " : "c2c backward, ") + text(b, directions));
    }
    const auto real = noise(b.count(), true);
    auto wanted = real;
    for (int d : directions) wanted = along(b, d, b.size[d], wanted, fourier(b.size[d], -1));
    auto in = guarded<float>(real);
    auto out = guarded<std::complex<float>>(real);
    run.forward(in.data(), out.data(), nullptr);
    expect(out, wanted, "real to full complex, " + text(b, directions));
}

void check_half(box const& b, int d) {
    const heffte::one_dim_backend<heffte::backend::qfftf>::executor_r2c run(nullptr, b, d);
    const auto data = noise(b.count(), true);
    const int n = b.size[d];
    const auto wanted = along(b, d, n / 2 + 1, data, fourier(n, -1));
    auto in = guarded<float>(data), back = guarded<float>(noise(b.count(), true));
    auto out = guarded<std::complex<float>>(noise(b.r2c(d).count(), false));
    run.forward(in.data(), out.data(), nullptr);
    expect(in, data, "input of r2c, " + text(b, {d}));
    expect(out, wanted, "r2c, " + text(b, {d}));
    run.backward(out.data(), back.data(), nullptr);
    auto scaled = data;
    for (auto& z : scaled) z *= n;
    expect(back, scaled, "c2r, " + text(b, {d}));
    if (run.box_size() != b.count() or run.complex_size() != b.r2c(d).count() or run.workspace_size() != 0) {
        ++failures;
        std::fprintf(stderr, "sizes of r2c, %s\n", text(b, {d}).c_str());
    }
}

template <typename tag>
void check_trigonometric(box const& b, int d, std::function<complexd(int, int)> const& weight) {
    const typename heffte::one_dim_backend<tag>::executor run(nullptr, b, d);
    const auto data = noise(b.count(), true);
    auto array = guarded<float>(data);
    run.forward(array.data(), nullptr);
    const std::string what = heffte::backend::name<tag>() + ", " + text(b, {d});
    expect(array, along(b, d, b.size[d], data, weight), what);
    run.backward(array.data(), nullptr);
    auto scaled = data;
    for (auto& z : scaled) z *= 4 * b.size[d];  // what heFFTe's scale undoes
    expect(array, scaled, what + " and back");
}

void check_trigonometric(box const& b, int d) {
    const int n = b.size[d];
    check_trigonometric<heffte::backend::qfftf_cos>(b, d,
                                                    [=](int j, int k) { return 2 * std::cos(pi * (j + 0.5) * k / n); });
    check_trigonometric<heffte::backend::qfftf_sin>(
        b, d, [=](int j, int k) { return 2 * std::sin(pi * (j + 0.5) * (k + 1) / n); });
    check_trigonometric<heffte::backend::qfftf_sin1>(
        b, d, [=](int j, int k) { return 2 * std::sin(pi * (j + 1) * (k + 1) / (n + 1)); });
    if (n < 2) return;
    check_trigonometric<heffte::backend::qfftf_cos1>(
        b, d, [=](int j, int k) { return (j == 0 or j == n - 1 ? 1 : 2) * std::cos(pi * j * k / (n - 1)); });
}

void expect_message(std::function<void()> const& action, std::vector<std::string> const& parts) {
    std::string message = "nothing thrown";
    try {
        action();
    } catch (std::runtime_error const& error) {
        message = error.what();
    }
    ++checks;
    for (auto const& part : parts)
        if (message.find(part) == std::string::npos) {
            ++failures;
            std::fprintf(stderr, "'%s' isn't in: %s\n", part.c_str(), message.c_str());
        }
}

void check_refusals() {
    const box b = {{{4, 3, 1}}, {{0, 1, 2}}};
    expect_message([&] { heffte::one_dim_backend<heffte::backend::qfftf_cos1>::executor(nullptr, b, 2); },
                   {"guru r2r dims=1:12:12 batch=12:1:1 wide kinds=3 inplace : refused", "at least 2 points"});
    const heffte::one_dim_backend<heffte::backend::qfftf>::executor run(nullptr, b, 0);
    std::vector<complexd> data(12);
    expect_message([&] { run.forward(data.data(), nullptr); }, {"single precision only"});
}

}  // namespace

int main() {
    const std::vector<std::array<int, 3>> sizes = {{{4, 6, 5}}, {{16, 1, 3}}, {{1, 9, 8}}, {{7, 64, 2}}, {{13, 5, 32}}};
    const std::vector<std::array<int, 3>> orders = {{{0, 1, 2}}, {{0, 2, 1}}, {{1, 0, 2}},
                                                    {{1, 2, 0}}, {{2, 0, 1}}, {{2, 1, 0}}};
    for (auto const& size : sizes)
        for (auto const& order : orders) {
            const box b = {size, order};
            for (int d = 0; d < 3; ++d) {
                check_complex(b, {d});
                check_complex(b, {d, (d + 1) % 3});
                check_half(b, d);
                check_trigonometric(b, d);
            }
            check_complex(b, {0, 1, 2});
        }
    check_refusals();
    std::printf("%d comparisons, %d failures\n", checks, failures);
    return failures == 0 and checks > 1000 ? 0 : 1;
}
