// SPDX-License-Identifier: Apache-2.0
// A transform in double precision, for tables alone: Stockham's order, as the kernels have it (kernel_types.h).
#include "dft/table_transform.h"

#include "kernels/ops/inline.h"
#include "record/memory.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace {

// Three arrays of 16 bytes a point are needed meanwhile: 12 MB.
constexpr uint64_t longest_in_double = uint64_t{1} << 18;
constexpr uint64_t largest_radix = 37;

// Complex numbers, one or two side by side.
typedef double number __attribute__((vector_size(16)));
typedef double numbers __attribute__((vector_size(32)));
template <class V>
constexpr uint64_t count_in = sizeof(V) / (2 * sizeof(double));

typedef float rounded __attribute__((vector_size(8)));
OPS_INLINE rounded load(const float* from) {
    rounded a;
    memcpy(&a, from, sizeof a);
    return a;
}
OPS_INLINE void store(float* to, rounded a) { memcpy(to, &a, sizeof a); }

OPS_INLINE number exchanged(number a) { return __builtin_shufflevector(a, a, 1, 0); }
OPS_INLINE numbers exchanged(numbers a) { return __builtin_shufflevector(a, a, 1, 0, 3, 2); }

template <class V>
OPS_INLINE V minus_real() {
    if constexpr (count_in<V> == 1)
        return V{-1, 1};
    else
        return V{-1, 1, -1, 1};
}
template <class V>
OPS_INLINE V times_i(V a) {
    return exchanged(a) * minus_real<V>();
}

// What it takes to multiply by w.
template <class V>
struct factor {
    V re, im;
    factor() = default;
    explicit factor(number w) : re(V{} + w[0]), im(minus_real<V>() * w[1]) {}
};
template <class V>
OPS_INLINE V operator*(V a, const factor<V>& w) {
    return a * w.re + exchanged(a) * w.im;
}

// exp(-2 pi i k / n) for k < n, each by at most two products for each bit of k.
void fill_roots(number* roots, uint64_t n) {
    const double angle = 6.283185307179586 / static_cast<double>(n);
    roots[0] = number{1, 0};
    if (n == 1) return;
    const factor<number> first(number{std::cos(angle), -std::sin(angle)});
    for (uint64_t k = 1; k <= n / 2; ++k) {
        const number root = k % 2 ? roots[k - 1] * first : roots[k / 2] * factor<number>(roots[k / 2]);
        roots[k] = root;
        roots[n - k] = root * number{1, -1};
    }
}

// Butterflies: x becomes its transform, `step` apart in `out`. `roots` are those of the radix.
struct radix_2 {
    static constexpr uint64_t radix = 2;
    template <class V>
    OPS_INLINE void run(const V* x, const number*, uint64_t, V* out, uint64_t step) {
        out[0] = x[0] + x[1];
        out[step] = x[0] - x[1];
    }
};

struct radix_4 {
    static constexpr uint64_t radix = 4;
    template <class V>
    OPS_INLINE void run(const V* x, const number*, uint64_t, V* out, uint64_t step) {
        const V a = x[0] + x[2], b = x[0] - x[2], c = x[1] + x[3], d = times_i(x[1] - x[3]);
        out[0] = a + c;
        out[step] = b - d;
        out[2 * step] = a - c;
        out[3 * step] = b + d;
    }
};

template <uint64_t r>  // 0: any
struct radix_odd {
    static constexpr uint64_t radix = r;
    template <class V>
    OPS_INLINE void run(const V* x, const number* roots, uint64_t any, V* out, uint64_t step) {
        constexpr uint64_t largest_half = (r ? r : largest_radix) / 2;
        const uint64_t p = r ? r : any;
        V sum[largest_half + 1], difference[largest_half + 1], all = x[0];
        for (uint64_t j = 1; j <= p / 2; ++j) {
            sum[j] = x[j] + x[p - j];
            difference[j] = x[j] - x[p - j];
            all += sum[j];
        }
        out[0] = all;
        for (uint64_t q = 1; q <= p / 2; ++q) {
            V even = x[0], odd = {};
            for (uint64_t j = 1, k = q; j <= p / 2; ++j, k = k + q < p ? k + q : k + q - p) {
                even += sum[j] * roots[k][0];
                odd += difference[j] * roots[k][1];
            }
            odd = times_i(odd);
            out[q * step] = even + odd;
            out[(p - q) * step] = even - odd;
        }
    }
};

// `done` and `rest` are what stands in front of the radix and behind it; `roots` are those of the whole length. A V
// takes `lanes` columns.
template <class butterfly, class V>
void run_columns(const number* in, number* out, const number* roots, uint64_t any_radix, uint64_t done, uint64_t rest) {
    constexpr uint64_t most = butterfly::radix ? butterfly::radix : largest_radix, lanes = count_in<V>;
    const uint64_t r = butterfly::radix ? butterfly::radix : any_radix;
    number of_radix[most];
    V x[most];
    factor<V> twiddles[most];
    for (uint64_t j = 0; j < r; ++j) of_radix[j] = roots[j * done * rest];
    for (uint64_t i = 0; i < done; ++i, in += r * rest, out += rest) {
        for (uint64_t j = 1; j < r; ++j) twiddles[j] = factor<V>(roots[i * j * rest]);
        for (uint64_t l = 0; l < rest; l += lanes) {
            const V* const column = reinterpret_cast<const V*>(in + l);
            x[0] = column[0];
            for (uint64_t j = 1; j < r; ++j) x[j] = column[j * rest / lanes] * twiddles[j];
            butterfly::run(x, of_radix, r, reinterpret_cast<V*>(out + l), done * rest / lanes);
        }
    }
}

template <class butterfly>
void run_stage(const number* in, number* out, const number* roots, uint64_t r, uint64_t done, uint64_t rest) {
    (rest % 2 ? run_columns<butterfly, number> : run_columns<butterfly, numbers>)(in, out, roots, r, done, rest);
}

using stage = void (*)(const number*, number*, const number*, uint64_t, uint64_t, uint64_t);

stage stage_of(uint64_t radix) {
    switch (radix) {
        case 2:
            return run_stage<radix_2>;
        case 3:
            return run_stage<radix_odd<3>>;
        case 4:
            return run_stage<radix_4>;
        case 5:
            return run_stage<radix_odd<5>>;
        case 7:
            return run_stage<radix_odd<7>>;
        default:
            return run_stage<radix_odd<0>>;
    }
}

// Odd factors first: the stages behind them have an even `rest`.
uint64_t next_radix(uint64_t n) {
    for (uint64_t r = 3; r <= largest_radix; r += 2)
        if (n % r == 0) return r;
    return n % 4 == 0 ? 4 : 2;
}

// The transform of `data`, which stands in one of the two arrays in the end.
const number* transform(number* data, number* other, const number* roots, uint64_t n) {
    for (uint64_t done = 1, rest = n; rest > 1; std::swap(data, other)) {
        const uint64_t r = next_radix(rest);
        rest /= r;
        stage_of(r)(data, other, roots, r, done, rest);
        done *= r;
    }
    return data;
}

}  // namespace

bool transform_table(fft_plan* convolver, float* table) {
    const uint64_t n = static_cast<uint64_t>(convolver->dims[0].n);
    if (n > longest_in_double) {
        convolver->execute(convolver, table, table);
        return true;
    }
    // Aligned for two numbers side by side: they are taken so where all offsets are even.
    number* const roots = static_cast<number*>(qsl_fftf_malloc(3 * n * sizeof(number)));
    if (!roots) return false;
    fill_roots(roots, n);
    number *const data = roots + n, *const other = data + n;
    for (uint64_t k = 0; k < n; ++k) data[k] = __builtin_convertvector(load(table + 2 * k), number);
    const number* const result = transform(data, other, roots, n);
    for (uint64_t k = 0; k < n; ++k) store(table + 2 * k, __builtin_convertvector(result[k], rounded));
    qsl_fftf_free(roots);
    return true;
}
