// SPDX-License-Identifier: Apache-2.0
#include "real/half_length_passes.h"

#include "real/mirror_pairs.h"
#include "real/real_tables.h"

namespace {

// Four pairs at a time: group(k) makes those from k on and their partners, and store(k, group) writes them. The last
// group may begin inside the one before, and at m / 2 reach into its own partners: it is read before anything is
// written, since both arrays may be the same. False where there are fewer than four pairs.
template <class Group, class Store>
inline bool groups_of_pairs(uint64_t first, uint64_t last, const Group& group, const Store& store) {
    if (last < first + 3) return false;
    const uint64_t final = last - 3;
    const auto held = group(final);
    for (uint64_t k = first; k < final; k += 4) store(k, group(k));
    store(final, held);
    return true;
}

// All in the order of the partners, for which the mirror table stands: front and back from f = b - conj a, which has a
// register of its own, since b is loaded twice.
bool vector_post(const float* y, float* x, const float* table, uint64_t m, uint64_t first, uint64_t last) {
    using namespace mirror_pairs;
    constexpr int vectors = 4 / lanes;
    struct four_pairs {
        vec front[vectors], back[vectors];
    };
    const float *const again = another_pointer(y), *const end = mirror_table_behind(table, m) + 2 * (m / 2);
    const auto group = [=](uint64_t k) {
        four_pairs r;
        for (int i = 0; i < vectors; ++i, k += lanes) {
            const uint64_t partner = m - k - (lanes - 1);
            const vec a = reversed(load(y + 2 * k)), v = load(end - 2 * (k + lanes - 1));
            const vec f = plus_negated_conjugate(load(again + 2 * partner), a);
            r.front[i] = reversed(fma_conjugate(a, f, v));
            r.back[i] = fms_conjugate(load(y + 2 * partner), v, f);
        }
        return r;
    };
    return groups_of_pairs(first, last, group, [=](uint64_t k, const four_pairs& r) {
        for (int i = 0; i < vectors; ++i) store(x + 2 * (k + i * lanes), r.front[i]);
        for (int i = vectors; i-- > 0;) store(x + 2 * (m - k - i * lanes - (lanes - 1)), r.back[i]);
    });
}

bool vector_pre(const float* z, float* c, const float* table, uint64_t m, uint64_t first, uint64_t last) {
    const float* const mirrors = mirror_table_behind(table, m);
    const auto group = [=](uint64_t k) {
        return inverse_mirror4(load4(z + 2 * k), load4_down(z + 2 * (m - k)), load4(mirrors + 2 * (k - 1)));
    };
    return groups_of_pairs(first, last, group, [=](uint64_t k, const mirror4_result& r) {
        store4(c + 2 * k, r.front);
        store4_down(c + 2 * (m - k), r.back);
    });
}

}  // namespace

void r2c_post_ends(const float* y, float* x, uint64_t m, int64_t os) {
    const float re = y[0], im = y[1];
    float* const end = x + 2 * static_cast<int64_t>(m) * os;
    x[0] = re + im;
    x[1] = 0;
    end[0] = re - im;
    end[1] = 0;
}

void r2c_post_range(const float* y, float* x, const float* table, uint64_t m, int64_t os, uint64_t first,
                    uint64_t last) {
    if (os == 1 && vector_post(y, x, table, m, first, last)) return;
    for (uint64_t k = first; k <= last; ++k) {
        const mirror_terms t = mirror(y + 2 * k, y + 2 * (m - k), table + 2 * (k - 1));
        float* const front = x + 2 * static_cast<int64_t>(k) * os;
        float* const back = x + 2 * static_cast<int64_t>(m - k) * os;
        front[0] = 0.5f * (t.s + t.p);
        front[1] = 0.5f * (t.d + t.q);
        back[0] = 0.5f * (t.s - t.p);
        back[1] = 0.5f * (t.q - t.d);
    }
}

void r2c_post_pass(const float* y, float* x, const float* table, uint64_t m, int64_t os) {
    r2c_post_ends(y, x, m, os);
    r2c_post_range(y, x, table, m, os, 1, m >> 1);
}

void c2r_pre_ends(const float* z, float* c, uint64_t m, int64_t is) {
    const float first = z[0], end = z[2 * static_cast<int64_t>(m) * is];
    c[0] = first + end;
    c[1] = first - end;
}

void c2r_pre_range(const float* z, float* c, const float* table, uint64_t m, int64_t is, uint64_t first,
                   uint64_t last) {
    if (is == 1 && vector_pre(z, c, table, m, first, last)) return;
    for (uint64_t k = first; k <= last; ++k) {
        const float* const a = z + 2 * static_cast<int64_t>(k) * is;
        const float* const b = z + 2 * static_cast<int64_t>(m - k) * is;
        inverse_mirror(a[0], a[1], b[0], b[1], table + 2 * (k - 1), c + 2 * k, c + 2 * (m - k));
    }
}

void c2r_pre_pass(const float* z, float* c, const float* table, uint64_t m, int64_t is) {
    c2r_pre_ends(z, c, m, is);
    c2r_pre_range(z, c, table, m, is, 1, m >> 1);
}
