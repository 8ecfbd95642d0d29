// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/formulas/sizes.h"

#include <numeric>

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
    {method::conjugate_pair, [](int n) { return n >= 16 && smallest_power_of(n) == n && n % 2 == 0; }, two},
    {method::folded_three, [](int n) { return n == 15 || n == 21 || n == 24; }, three},
    {method::prime, [](int n) { return is_prime(n) && n <= largest_prime; }, whole},
    {method::coprime, [](int n) { return smallest_power_of(n) < n; }, smallest_power_of},
    {method::common, [](int n) { return !is_prime(n); }, smallest_prime_of},
};

// Of real transforms and of Hermitian spectra.
struct radix_row {
    bool (*fits)(int n);
    int (*radix)(int n);
};
constexpr radix_row radices[] = {
    {[](int n) { return n == 12; }, three},
    {[](int n) { return n >= 16 && n % 4 == 0; }, four},
    {[](int n) { return n % 2 == 0; }, two},
    {[](int n) { return !is_prime(n); }, smallest_prime_of},
    {[](int n) { return n <= largest_prime; }, whole},
};

// As many angles k / n as there are before their cosines and sines are those of smaller ones, up to sign and exchange.
int different_angles(int n) { return n % 4 == 0 ? n / 8 : n % 4 == 2 ? n / 4 : n / 2; }

}  // namespace

way way_of(int n) {
    for (const auto& [how, fits, a] : methods)
        if (fits(n)) return {how, a(n), n / a(n)};
    throw no_method("the transform", n);
}

int real_radix(int n) {
    for (const auto& [fits, radix] : radices)
        if (fits(n)) return radix(n);
    throw no_method("the real transform", n);
}

// Sizes 3 b whose sine of 60 degrees is folded into the constants of b have pairs of their own.
pool constants_of(int size, int sign) {
    pool p;
    const auto angle = [&](turn a) {
        p.add({cosine(a), sign * sine(a)}, std::to_string(a.num) + "/" + std::to_string(a.den));
    };
    const exact s3 = sine({1, 6});
    if (size == 15) {
        for (turn a : {turn{1, 6}, turn{1, 5}, turn{1, 10}}) angle(a);
        p.add({sine({1, 5}) * s3, sign * cosine({1, 10}) * s3}, "(sin 2/10, cos 1/10) sin 1/6");
        p.add({sine({1, 10}) * s3, sign * cosine({1, 5}) * s3}, "(sin 1/10, cos 2/10) sin 1/6");
    } else if (size == 21) {
        const turn sevenths[] = {{1, 7}, {3, 14}, {1, 14}};
        angle({1, 6});
        for (turn a : sevenths) angle(a);
        for (turn a : sevenths)
            p.add({sine(a) * s3, sign * cosine(a) * s3},
                  "(sin, cos) " + std::to_string(a.num) + "/" + std::to_string(a.den) + " sin 1/6");
    } else if (size == 24) {
        angle({1, 6});
        p.add({cosine({1, 8}), sign * cosine({1, 8}) * s3}, "cos 1/8 (1, sin 1/6)");
    } else {
        for (int k = 1; k <= different_angles(size); ++k) angle({k, size});
    }
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
