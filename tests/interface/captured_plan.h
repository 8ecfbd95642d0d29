// SPDX-License-Identifier: Apache-2.0
// Runs a plan call whose planner accepts everything, and shows the record that reached the first solver as text.
// For programs that link fake_solvers.cpp.
#pragma once
#include "include/qfftf.h"
#include "tests/planner/fake_solvers.h"

#include <sstream>
#include <string>

inline std::string describe(const fft_plan& p) {
    std::ostringstream s;
    const auto dims = [&](const char* name, const fft_dim* d, int count) {
        s << name;
        for (int k = 0; k < count; ++k) s << " (" << d[k].n << "," << d[k].is << "," << d[k].os << ")";
    };
    s << "kind " << p.kind << " sign " << p.sign << " split " << p.split << " flags " << p.flags << " threads "
      << p.nthreads;
    dims(" dims", p.dims, 4);
    s << " rank " << p.rank << " r2r";
    for (uint32_t kind : p.r2r_kind) s << " " << kind;
    dims(" howmany", p.howmany, 4);
    s << " rank " << p.howmany_rank;
    s << " arrays " << p.in << " " << p.in_imag << " " << p.out << " " << p.out_imag;
    s << " shifts " << p.upsample_shift_x << " " << p.upsample_shift_y;
    return s.str();
}

// The record as text, or "null" when no plan came back. The first row accepts whatever reaches it.
template <class Call>
std::string captured(Call call) {
    fake::clear();
    std::string text;
    fake::rows[0] = [&](fft_plan* plan) {
        if (text.empty()) text = describe(*plan);
        return fake::accept(plan);
    };
    qsl_fftf_plan plan = call();
    if (!plan) text = "null";
    qsl_fftf_destroy_plan(plan);
    return text;
}
