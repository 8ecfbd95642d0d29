// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/real_row.h"

#include "kernels/generator/formulas/lanes_of_four.h"
#include "kernels/generator/formulas/real_butterflies.h"
#include "kernels/generator/passes/passes.h"

namespace generator {

namespace {

bool has_imaginary_part(int k, int n) { return k != 0 && 2 * k != n; }

void record_forward(dag& g, int n) {
    const split_values y = real_butterfly(load_all(g, n));
    for (int k = 0; 2 * k <= n; ++k) {
        store_real(g, 2 * k, y[k].re);
        if (has_imaginary_part(k, n)) store_real(g, 2 * k + 1, y[k].im);
    }
}

void record_hartley(dag& g, int n) {
    const split_values y = real_butterfly(load_all(g, n));
    for (int k = 0; 2 * k <= n; ++k) {
        if (!has_imaginary_part(k, n)) {
            store_real(g, k, y[k].re);
            continue;
        }
        store_real(g, k, y[k].re - y[k].im);
        store_real(g, n - k, y[k].re + y[k].im);
    }
}

void record_backward(dag& g, int n) {
    split_values spectrum(n / 2 + 1);
    for (int k = 0; 2 * k <= n; ++k) {
        spectrum[k].re = {&g, g.load(2 * k)};
        if (has_imaginary_part(k, n)) spectrum[k].im = {&g, g.load(2 * k + 1)};
    }
    const values x = hermitian_butterfly(spectrum, n);
    for (int j = 0; j < n; ++j) store_real(g, j, x[j]);
}

void record_cosine(dag& g, int n) {
    const values y = cosine_butterfly(load_all(g, n));
    for (int k = 0; k < n; ++k) store_real(g, k, y[k]);
}

// Where a store of four numbers of the spectrum begins, or -1.
int spectrum_start(int slot) {
    const auto [part, first] = lanes_slot::unpack(slot);
    return part == lanes_part::numbers || part == lanes_part::reversed ? first : -1;
}

}  // namespace

body make_real_row_body(const form& f, int size, bool everywhere) {
    const auto formula = f.loop == shape::cosine_rows          ? record_cosine
                         : f.spectrum == row_spectrum::hartley ? record_hartley
                         : f.sign < 0                          ? record_forward
                                                               : record_backward;
    return record(pool::growing(everywhere), {.loads_first = true}, [&](body& b) { formula(b.graph, size); });
}

body make_lanes_body(int size, int sign) {
    body b = record(pool::growing(false), {.loads_first = true}, [&](body& recorded) {
        dag& g = recorded.graph;
        const row_in_lanes row{
            .load = [&](lanes_slot s) -> value { return {&g, g.load(s.pack())}; },
            .store = [&](lanes_slot s, value v) { store_real(g, s.pack(), v); },
        };
        sign < 0 ? real_butterfly_in_lanes(row, size) : hermitian_butterfly_in_lanes(row, size);
    });
    b.did.joined = join_stores(b.graph, b.order, spectrum_start);
    return b;
}

}  // namespace generator
