// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/formulas/sizes.h"

#include <initializer_list>
#include <span>
#include <string>

#include "kernels/generator/formulas/butterflies.h"

namespace generator {

namespace {

constexpr int largest_prime = 37;  // its h (2 h - 1) multiply-adds take as long as a detour by another method

constexpr int smallest_prime_of(int n) {
    int p = 2;
    while (n % p != 0) ++p;
    return p;
}
constexpr bool is_prime(int n) { return smallest_prime_of(n) == n; }
// The largest power of its smallest prime factor that divides n.
constexpr int smallest_power_of(int n) {
    int power = smallest_prime_of(n);
    while (n % (power * smallest_prime_of(n)) == 0) power *= smallest_prime_of(n);
    return power;
}

constexpr bool is_power_of_two(int n) { return (n & (n - 1)) == 0; }

constexpr int whole(int n) { return n; }
constexpr int two(int) { return 2; }
constexpr int three(int) { return 3; }
constexpr int four(int) { return 4; }

// THE METHODS: of complex sizes the first one that fits, with the factor a.
struct method_row {
    method how;
    bool (*fits)(int n);
    int (*a)(int n);
};
constexpr method_row methods[] = {
    {method::conjugate_pair, [](int n) { return is_power_of_two(n) && n >= 16; }, two},
    {method::folded_three, [](int n) { return n == 15 || n == 21 || n == 24; }, three},
    {method::prime, [](int n) { return is_prime(n) && n <= largest_prime; }, whole},
    {method::coprime, [](int n) { return smallest_power_of(n) < n; }, smallest_power_of},
    {method::common, [](int n) { return !is_prime(n); }, smallest_prime_of},
};

// Of real transforms and of Hermitian spectra.
constexpr method_row real_methods[] = {
    {method::common, [](int n) { return n == 12; }, three},
    {method::common, [](int n) { return is_power_of_two(n) && n >= 16; }, four},
    {method::prime, [](int n) { return is_prime(n) && n <= largest_prime; }, whole},
    {method::coprime, [](int n) { return smallest_power_of(n) < n; }, smallest_power_of},
    {method::common, [](int n) { return !is_prime(n); }, smallest_prime_of},
};

way first_fitting(std::span<const method_row> rows, int n, const char* what) {
    for (const auto& [how, fits, a] : rows)
        if (fits(n)) return {how, a(n), n / a(n)};
    throw no_method(what, n);
}

// As many angles k / n as there are before their cosines and sines are those of smaller ones, up to sign and exchange.
int different_angles(int n) { return n % 4 == 0 ? n / 8 : n % 4 == 2 ? n / 4 : n / 2; }

}  // namespace

way way_of(int n) { return first_fitting(methods, n, "the transform"); }
way real_way_of(int n) { return first_fitting(real_methods, n, "the real transform"); }

namespace {

void add_angle(pool& p, turn a, int sign) {
    p.add({cosine(a), sign * sine(a)}, std::to_string(a.num) + "/" + std::to_string(a.den));
}

// The constants of a size 3 b, with the sine of 60 degrees folded into some of them. In a pool that has all plain
// angles those are left out.
void add_folded(pool& p, int size, int sign, bool with_plain) {
    const exact s3 = sine({1, 6});
    const auto add = [&](const exact& c, const exact& s, const std::string& meaning) {
        p.add({c * s3, sign * s * s3}, meaning + " sin 1/6");
    };
    const auto add_plain = [&](std::initializer_list<turn> angles) {
        for (turn a : angles)
            if (with_plain) add_angle(p, a, sign);
    };
    if (size == 15) {
        add_plain({{1, 6}, {1, 5}, {1, 10}});
        add(sine({1, 5}), cosine({1, 10}), "(sin 2/10, cos 1/10)");
        add(sine({1, 10}), cosine({1, 5}), "(sin 1/10, cos 2/10)");
    } else if (size == 21) {
        add_plain({{1, 6}, {1, 7}, {3, 14}, {1, 14}});
        for (turn a : {turn{1, 7}, turn{3, 14}, turn{1, 14}})
            add(sine(a), cosine(a), "(sin, cos) " + std::to_string(a.num) + "/" + std::to_string(a.den));
    } else if (size == 24) {
        add_plain({{1, 6}});
        p.add({cosine({1, 8}), sign * cosine({1, 8}) * s3}, "cos 1/8 (1, sin 1/6)");
    }
}

}  // namespace

pool constants_of(int size, int sign) {
    pool p;
    const auto [how, a, b] = way_of(size);
    if (how == method::folded_three) {
        add_folded(p, size, sign, true);
        return p;
    }
    for (int k = 1; k <= different_angles(size); ++k) add_angle(p, {k, size}, sign);
    for (int factor : {a, b})
        if (how == method::coprime && way_of(factor).how == method::folded_three) add_folded(p, factor, sign, false);
    return p;
}

template <class number>
std::vector<number> butterfly(const std::vector<number>& x, int sign, const exact& scale) {
    const int n = int(x.size());
    if (!(scale == 1) && n % 2 == 0) {
        std::vector<number> y = butterfly(x, sign);
        for (number& v : y) v = scale * v;
        return y;
    }
    const auto [how, a, b] = way_of(n);
    switch (how) {
        case method::coprime:
            return coprime_butterfly(x, a, b, sign);
        case method::common:
            return common_butterfly(x, a, b, sign);
        case method::folded_three:
            return folded_three_butterfly(x, b, sign);
        case method::conjugate_pair:
            return conjugate_pair_butterfly(x, sign);
        default:
            return prime_butterfly(x, sign, scale);
    }
}

template values butterfly(const values&, int, const exact&);
template split_values butterfly(const split_values&, int, const exact&);

}  // namespace generator
