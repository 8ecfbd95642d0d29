// SPDX-License-Identifier: Apache-2.0
#include "dft/modular.h"

#include <cmath>

namespace {

// The product of two numbers with a sum up to this one is at most its half squared, which is below 2^31.
constexpr uint64_t safe_sum = 92681;
constexpr int max_distinct_primes = 16;  // the product of the first 16 primes is above 2^63

int distinct_odd_primes(uint64_t n, uint64_t* primes) {
    int count = 0;
    const uint64_t last = static_cast<uint64_t>(std::sqrt(static_cast<double>(n)));
    for (uint64_t f = 3; f <= last; f += 2) {
        if (n % f) continue;
        primes[count++] = f;
        while (n % f == 0) n /= f;
    }
    if (n > 1) primes[count++] = n;
    return count;
}

}  // namespace

uint64_t mul_mod(uint64_t a, uint64_t b, uint64_t p) {
    if (a + b <= safe_sum) return a * b % p;
    uint64_t product = 0;
    for (; b; b >>= 1) {  // doubling and adding: no intermediate reaches 2 p
        if (b & 1) product = product + a >= p ? product + a - p : product + a;
        a = 2 * a >= p ? 2 * a - p : 2 * a;
    }
    return product;
}

uint64_t pow_mod(uint64_t a, uint64_t e, uint64_t p) {
    if (e == 0) return 1;
    if (e % 2) return mul_mod(a, pow_mod(a, e - 1, p), p);
    const uint64_t root = pow_mod(a, e / 2, p);
    return mul_mod(root, root, p);
}

uint64_t smallest_primitive_root(uint64_t p) {
    const uint64_t q = p - 1;
    uint64_t odd = q;
    while (odd % 2 == 0) odd /= 2;
    uint64_t primes[max_distinct_primes] = {2};
    const int count = 1 + distinct_odd_primes(odd, primes + 1);

    // g generates the group unless one of its powers to a proper divisor of q is 1.
    const auto is_root = [&](uint64_t g) {
        for (int i = 0; i < count; ++i)
            if (pow_mod(g, q / primes[i], p) == 1) return false;
        return true;
    };
    uint64_t g = 2;
    while (!is_root(g)) ++g;
    return g;
}
