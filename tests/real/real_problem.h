// SPDX-License-Identifier: Apache-2.0
// One-dimensional real problems of any layout as records, with their results by definition in double precision.
#pragma once
#include <algorithm>
#include <memory>
#include <ostream>
#include <vector>

#include "planner/solver.h"
#include "record/fft_plan.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_dft.h"
#include "tests/support/reference_r2r.h"

struct plan_deleter {
    void operator()(fft_plan* p) const { fft_plan_free(p); }
};
using plan_pointer = std::unique_ptr<fft_plan, plan_deleter>;

constexpr int64_t no_batch = -1;

struct real_problem {
    uint32_t kind;  // kind_r2c, kind_c2r or kind_r2r
    uint32_t r2r_kind = 0;
    fft_dim dim = {1, 1, 1};
    fft_dim rows = {no_batch, 0, 0};
    bool in_place = false;
    uint32_t flags = 0;

    bool is_complex(bool input) const { return kind == (input ? kind_c2r : kind_r2c); }
    int64_t floats_per_element(bool input) const { return is_complex(input) ? 2 : 1; }
    int64_t elements(bool input) const { return is_complex(input) ? dim.n / 2 + 1 : dim.n; }
    int64_t row_count() const { return rows.n == no_batch ? 1 : rows.n; }
    int64_t row_floats(bool input) const { return elements(input) * floats_per_element(input); }

    // Where float f of a row stands in its array: both parts of an element are neighbours.
    int64_t position(bool input, int64_t row, int64_t f) const {
        const int64_t parts = floats_per_element(input), stride = input ? dim.is : dim.os;
        const int64_t distance = input ? rows.is : rows.os;
        return (row * distance + f / parts * stride) * parts + f % parts;
    }
    int64_t span(bool input) const {
        int64_t last = 0;
        for (int64_t row : {int64_t{0}, row_count() - 1})
            if (row >= 0) last = std::max(last, position(input, row, row_floats(input) - 1) + 1);
        return last;
    }

    // A record of its own, not yet planned.
    plan_pointer record(float* in, float* out) const {
        plan_pointer p(fft_plan_clone(nullptr));
        p->kind = kind;
        p->sign = kind == kind_r2c ? sign_forward : kind == kind_c2r ? sign_backward : 0;
        p->split = interleaved_arrays;
        p->rank = 1;
        p->dims[0] = dim;
        p->r2r_kind[0] = r2r_kind;
        if (rows.n != no_batch) {
            p->howmany_rank = 1;
            p->howmany[0] = rows;
        }
        p->in = in;
        p->out = in_place ? in : out;
        p->flags = flags;
        p->nthreads = 1;
        return p;
    }
    // Null where the solver refuses.
    plan_pointer taken_by(int (*solver)(fft_plan*), float* in, float* out) const {
        plan_pointer p = record(in, out);
        return solver(p.get()) == accepted ? std::move(p) : nullptr;
    }
    // Through the table; null where every row refuses.
    plan_pointer plan(float* in, float* out) const {
        fft_plan* p = record(in, out).release();
        if (plan_problem(&p) == accepted) return plan_pointer(p);
        fft_plan_free(p);
        return nullptr;
    }

    // The floats of one row of results from those of its input.
    std::vector<double> expected(const std::vector<float>& row) const;
};

inline std::vector<double> real_problem::expected(const std::vector<float>& row) const {
    const int64_t n = dim.n;
    if (kind == kind_r2r) return reference::r2r({row.begin(), row.end()}, r2r_kind);
    std::vector<reference::complex> x(n);
    std::vector<double> result;
    if (kind == kind_r2c) {
        std::copy(row.begin(), row.end(), x.begin());
        x = reference::dft(x, -1);
        for (int64_t k = 0; k <= n / 2; ++k) result.insert(result.end(), {x[k].real(), x[k].imag()});
        result[1] = 0;
        if (n % 2 == 0) result[n + 1] = 0;
        return result;
    }
    for (int64_t k = 0; k <= n / 2; ++k) {
        x[k] = {row[2 * k], k == 0 || 2 * k == n ? 0 : row[2 * k + 1]};
        if (k) x[n - k] = std::conj(x[k]);
    }
    for (const reference::complex& v : reference::dft(x, 1)) result.push_back(v.real());
    return result;
}

inline std::ostream& operator<<(std::ostream& out, const real_problem& p) {
    out << "kind " << p.kind;
    if (p.kind == kind_r2r) out << " r2r " << p.r2r_kind;
    out << " n " << p.dim.n << ":" << p.dim.is << ":" << p.dim.os;
    if (p.rows.n != no_batch) out << " rows " << p.rows.n << ":" << p.rows.is << ":" << p.rows.os;
    return out << (p.in_place ? " in place" : " out of place") << " flags " << p.flags;
}
