// SPDX-License-Identifier: Apache-2.0
#include "real/half_complex_passes.h"

#include "real/mirror.h"
#include "real/real_tables.h"

namespace {

// How a coefficient X[k] is packed into positions k and n - k.
struct half_complex {
    template <class real>
    static real low(real re, real) {
        return re;
    }
    template <class real>
    static real high(real, real im) {
        return im;
    }
};

struct hartley {
    static float low(float re, float im) { return re - im; }
    static float high(float re, float im) { return re + im; }
    static complex4 low(complex4 re, complex4 im) { return sub(re, im); }
    static complex4 high(complex4 re, complex4 im) { return add(re, im); }
};

template <class packing>
void post_pass(const float* y, float* h, const float* table, int64_t m, int64_t os) {
    const int64_t n = 2 * m, last = m >> 1;
    h[0] = y[0] + y[1];
    h[m * os] = y[0] - y[1];
    const float *const again = another_pointer(y), *const mirrors = mirror_table_behind(table, m);
    if (os == 1 && last >= 8)
        return cover<8>(last, [=](int64_t k) {
            const mirror8_parts x = mirror8(y, again, mirrors, m, k);
            store4(h + k, packing::low(x.re, x.im));
            store8_down(h + n - k, packing::high(x.re, x.im));
            store8_down(h + m - k, packing::low(x.back_re, x.back_im));
            store4(h + m + k, packing::high(x.back_re, x.back_im));
        });
    for (int64_t k = 1; k <= last; ++k) {
        const mirror_terms t = mirror(y + 2 * k, y + 2 * (m - k), table + 2 * (k - 1));
        const float re = 0.5f * (t.s + t.p), im = 0.5f * (t.d + t.q);
        const float back_re = 0.5f * (t.s - t.p), back_im = 0.5f * (t.q - t.d);
        h[k * os] = packing::low(re, im);
        h[(n - k) * os] = packing::high(re, im);
        h[(m - k) * os] = packing::low(back_re, back_im);
        h[(m + k) * os] = packing::high(back_re, back_im);
    }
}

}  // namespace

void r2hc_post_pass(const float* y, float* h, const float* table, int64_t m, int64_t os) {
    post_pass<half_complex>(y, h, table, m, os);
}

void dht_post_pass(const float* y, float* h, const float* table, int64_t m, int64_t os) {
    post_pass<hartley>(y, h, table, m, os);
}

void hc2r_pre_pass(float* c, const float* h, const float* table, int64_t m, int64_t is) {
    const int64_t n = 2 * m;
    c[0] = h[0] + h[m * is];
    c[1] = h[0] - h[m * is];
    const int64_t last = m >> 1;
    const float* const mirrors = mirror_table_behind(table, m);
    if (is == 1 && last >= 8)
        return cover<8>(last, [=](int64_t k) {
            const complex4 re = load4(h + k), im = load8_down(h + n - k);
            const complex4 back_re = load8_down(h + m - k), back_im = load4(h + m + k);
            const complex4 front[2] = {zip_low(re, im), zip_high(re, im)};
            const complex4 back[2] = {zip_low(back_re, back_im), zip_high(back_re, back_im)};
            for (int i = 0; i < 2; ++i) {
                const int64_t j = k + 4 * i;
                const mirror4_result result = inverse_mirror4(front[i], back[i], load4(mirrors + 2 * (j - 1)));
                store4(c + 2 * j, result.front);
                store4_down(c + 2 * (m - j), result.back);
            }
        });
    for (int64_t k = 1; k <= last; ++k)
        inverse_mirror(h[k * is], h[(n - k) * is], h[(m - k) * is], h[(m + k) * is], table + 2 * (k - 1), c + 2 * k,
                       c + 2 * (m - k));
}

void pair_split_r2hc(float* a, float* b, const float* y, int64_t n, int64_t os) {
    a[0] = y[0];
    b[0] = y[1];
    for (int64_t k = 1; k < n - k; ++k) {
        const float *front = y + 2 * k, *back = y + 2 * (n - k);
        a[k * os] = 0.5f * (front[0] + back[0]);
        a[(n - k) * os] = 0.5f * (front[1] - back[1]);
        b[k * os] = 0.5f * (front[1] + back[1]);
        b[(n - k) * os] = 0.5f * (back[0] - front[0]);
    }
    if (n % 2 == 0) {
        a[n / 2 * os] = y[n];
        b[n / 2 * os] = y[n + 1];
    }
}

void pack_half_complex(const float* y, float* h, int64_t n, int64_t os) {
    h[0] = y[0];
    for (int64_t k = 1; k <= n >> 1; ++k) {
        h[k * os] = y[2 * k];
        h[(n - k) * os] = y[2 * k + 1];
    }
}

void pack_hartley(const float* y, float* h, int64_t n, int64_t os) {
    for (int64_t k = 0; k < n; ++k) h[k * os] = y[2 * k] - y[2 * k + 1];
}

void unpack_half_complex(float* y, const float* h, int64_t n, int64_t is) {
    y[0] = h[0];
    y[1] = 0;
    for (int64_t k = 1; k <= n >> 1; ++k) {
        const float re = h[k * is], im = h[(n - k) * is];
        y[2 * k] = y[2 * (n - k)] = re;
        y[2 * k + 1] = im;
        y[2 * (n - k) + 1] = -im;
    }
}
