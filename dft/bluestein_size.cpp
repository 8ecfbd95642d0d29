// SPDX-License-Identifier: Apache-2.0
// The padded sizes, chosen by measurement.
#include "dft/bluestein.h"

#include <algorithm>
#include <bit>
#include <initializer_list>
#include <iterator>

namespace {

constexpr uint64_t short_sizes[] = {48, 60, 64, 72, 96, 100, 120, 128, 144, 160, 192, 196, 256};

// Lengths that run best at the next smooth size, not at a preferred one or one that cuts into big radices.
constexpr uint64_t exception_primes[] = {1949, 2501, 2503, 3373, 3391, 3397, 4859, 5039, 6053, 6113,
                                         6131, 6133, 6143, 7207, 7349, 8087, 8089, 8927, 9239};

constexpr uint64_t preferred_sizes[] = {1728,  1760,  3960,  4800,  4840,  4928,  5082,  6400,  6480,  7040,
                                        8800,  9600,  9680,  10164, 10560, 10648, 11088, 11616, 12320, 12672,
                                        13068, 13200, 14520, 14784, 15092, 15840, 17424, 17600, 19008, 19712};
constexpr uint64_t preferred_slack = 99;

uint64_t divided_by_all(uint64_t n, std::initializer_list<uint64_t> factors) {
    for (uint64_t f : factors)
        while (n % f == 0) n /= f;
    return n;
}

bool is_smooth(uint64_t n) { return divided_by_all(n, {2, 3, 5, 7, 11}) == 1; }

// The smallest size from `least` on that cuts into radices of 4 to 12 when it is divided by the first of 10, 6, 8, 9,
// 7, 12, 4, 2 that divides it, again and again: no factor of 11, no 5 without a 2 and, in the end, no lone 3. Of 2^a
// 3^b 5^c 7^d the tens take a 2 for each 5 and the sixes a 2 for each 3, as long as there are any; nines need an even
// rest. `least` is below 2^60.
uint64_t smallest_of_middle_radices(uint64_t least) {
    uint64_t best = std::bit_ceil(least);
    for (uint64_t sevens = 1; sevens <= best; sevens *= 7) {
        int fives = 0;
        for (uint64_t product = sevens; product <= best >> fives; product *= 5, ++fives) {
            int threes = 0;
            for (uint64_t odd = product; odd <= best >> fives; odd *= 3, ++threes) {
                int twos = fives;
                while (odd << twos < least) ++twos;
                const int threes_left = fives + threes - twos;
                if (threes_left > 0 && threes_left % 2) ++twos;
                best = std::min(best, odd << twos);
            }
        }
    }
    return best;
}

}  // namespace

uint64_t bluestein_padded_size(uint64_t p) {
    const uint64_t least = 2 * p - 1, greatest = 4 * p - 3;
    for (uint64_t size : short_sizes)
        if (least < size && size <= greatest) return size;
    const bool exception =
        std::find(std::begin(exception_primes), std::end(exception_primes), p) != std::end(exception_primes);
    if (!exception)
        for (uint64_t size : preferred_sizes)
            if (size >= least && size - least <= preferred_slack) return size;
    if (!exception) return smallest_of_middle_radices(least);
    uint64_t size = least;
    while (!is_smooth(size)) ++size;
    return size;
}
