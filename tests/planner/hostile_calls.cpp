// SPDX-License-Identifier: Apache-2.0
#include "tests/planner/hostile_calls.h"

#include "record/fft_plan.h"
#include "tests/support/guru_calls.h"

#include <climits>
#include <cmath>
#include <iterator>
#include <sstream>

namespace {

qsl_fftf_complex* pairs(float* p) { return reinterpret_cast<qsl_fftf_complex*>(p); }

void print_list(std::ostream& s, const char* name, const auto* list, bool missing) {
    s << " " << name << "=";
    if (missing) s << "null";
    for (int k = 0; k < 4 && !missing; ++k) s << (k ? "," : "") << list[k];
}

void print_triples(std::ostream& s, const char* name, const fft_iodim64* list, bool missing) {
    s << " " << name << "=";
    if (missing) s << "null";
    for (int k = 0; k < 4 && !missing; ++k) s << (k ? "," : "") << list[k].n << ":" << list[k].is << ":" << list[k].os;
}

qsl_fftf_plan plan_many(const hostile_call& c, const hostile_arrays& a) {
    const int* n = c.no_n ? nullptr : c.n;
    const int *ie = c.no_inembed ? nullptr : c.inembed, *oe = c.no_onembed ? nullptr : c.onembed;
    switch (c.kind) {
        case kind_c2c:
            return qsl_fftf_plan_many_dft(c.rank, n, c.howmany, pairs(a.in), ie, c.istride, c.idist, pairs(a.out), oe,
                                          c.ostride, c.odist, c.sign, c.flags);
        case kind_r2c:
            return qsl_fftf_plan_many_dft_r2c(c.rank, n, c.howmany, a.in, ie, c.istride, c.idist, pairs(a.out), oe,
                                              c.ostride, c.odist, c.flags);
        case kind_c2r:
            return qsl_fftf_plan_many_dft_c2r(c.rank, n, c.howmany, pairs(a.in), ie, c.istride, c.idist, a.out, oe,
                                              c.ostride, c.odist, c.flags);
        default:
            return qsl_fftf_plan_many_r2r(c.rank, n, c.howmany, a.in, ie, c.istride, c.idist, a.out, oe, c.ostride,
                                          c.odist, c.no_kinds ? nullptr : c.kinds, c.flags);
    }
}

qsl_fftf_plan plan_basic(const hostile_call& c, const hostile_arrays& a) {
    const int* n = c.no_n ? nullptr : c.n;
    switch (c.kind) {
        case kind_c2c:
            return qsl_fftf_plan_dft(c.rank, n, pairs(a.in), pairs(a.out), c.sign, c.flags);
        case kind_r2c:
            return qsl_fftf_plan_dft_r2c(c.rank, n, a.in, pairs(a.out), c.flags);
        case kind_c2r:
            return qsl_fftf_plan_dft_c2r(c.rank, n, pairs(a.in), a.out, c.flags);
        default:
            return qsl_fftf_plan_r2r(c.rank, n, a.in, a.out, c.no_kinds ? nullptr : c.kinds, c.flags);
    }
}

template <class Calls>
qsl_fftf_plan plan_guru(const hostile_call& c, const hostile_arrays& a) {
    typename Calls::triple dims[4], batch[4];
    using number = decltype(Calls::triple::n);
    for (int k = 0; k < 4; ++k) {
        dims[k] = {number(c.dims[k].n), number(c.dims[k].is), number(c.dims[k].os)};
        batch[k] = {number(c.batch[k].n), number(c.batch[k].is), number(c.batch[k].os)};
    }
    const auto* d = c.no_dims ? nullptr : dims;
    const auto* b = c.no_batch ? nullptr : batch;
    const auto call = [&](auto function, auto... arrays) {
        return function(c.rank, d, c.howmany_rank, b, arrays..., c.flags);
    };
    switch (c.kind) {
        case kind_c2c:
            if (c.split) return call(Calls::split_dft, a.in, a.in_imag, a.out, a.out_imag);
            return Calls::dft(c.rank, d, c.howmany_rank, b, pairs(a.in), pairs(a.out), c.sign, c.flags);
        case kind_r2c:
            if (c.split) return call(Calls::split_r2c, a.in, a.out, a.out_imag);
            return call(Calls::r2c, a.in, pairs(a.out));
        case kind_c2r:
            if (c.split) return call(Calls::split_c2r, a.in, a.in_imag, a.out);
            return call(Calls::c2r, pairs(a.in), a.out);
        default:
            return Calls::r2r(c.rank, d, c.howmany_rank, b, a.in, a.out, c.no_kinds ? nullptr : c.kinds, c.flags);
    }
}

}  // namespace

std::string hostile_call::text() const {
    static constexpr const char* forms[] = {"basic", "many", "guru", "upsampling"};
    std::ostringstream s;
    s << forms[static_cast<int>(form)] << " kind " << kind << (wide ? " wide" : "") << (split ? " split" : "")
      << " rank=" << rank << " sign=" << sign << " flags=" << flags;
    print_list(s, "kinds", kinds, no_kinds);
    if (form == form::guru) {
        print_triples(s, "dims", dims, no_dims);
        s << " howmany_rank=" << howmany_rank;
        print_triples(s, "batch", batch, no_batch);
        return s.str();
    }
    print_list(s, "n", n, no_n);
    if (form != form::many) return s.str();
    print_list(s, "inembed", inembed, no_inembed);
    print_list(s, "onembed", onembed, no_onembed);
    s << " howmany=" << howmany << " istride=" << istride << " idist=" << idist << " ostride=" << ostride
      << " odist=" << odist;
    return s.str();
}

qsl_fftf_plan hostile_call::plan(const hostile_arrays& a) const {
    switch (form) {
        case form::basic:
            return plan_basic(*this, a);
        case form::many:
            return plan_many(*this, a);
        case form::guru:
            return wide ? plan_guru<guru64_calls>(*this, a) : plan_guru<guru_calls>(*this, a);
        default:
            return qsl_fftf_plan_upsampling_2d(n[0], n[1], n[2], n[3], a.in, a.out, flags, shift_x, shift_y);
    }
}

uint32_t hostile_source::bits() {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<uint32_t>(state_ >> 33);
}

int hostile_source::tame_number() {
    static constexpr int numbers[] = {1,  1,  1,  2,  2,  3,  4,  5,  6,  7,  8,  9,
                                      11, 12, 13, 16, 17, 20, 32, 37, 41, 64, 97, 100};
    return numbers[below(std::size(numbers))];
}

int hostile_source::number() {
    static constexpr int numbers[] = {
        0,           -1,      INT_MIN, INT_MAX, INT_MAX - 1,   INT_MIN + 1, 65536,     65537,      46341,
        32768,       1 << 20, 1 << 24, 1 << 30, (1 << 30) + 1, 1'000'003,   1'048'583, 16'777'213, 2'147'483'629,
        998'244'353, 131072,  262144,  999'983, 1'500'450'271, 77'777'777,  -65536};
    if (mood_ == 0 || below(100) >= 15 * mood_) return tame_number();
    return one_in(4) ? static_cast<int>(bits() << 1) : numbers[below(std::size(numbers))];
}

int64_t hostile_source::wide_number() {
    static constexpr int64_t numbers[] = {INT64_MAX,
                                          INT64_MIN,
                                          INT64_MAX - 1,
                                          int64_t{1} << 32,
                                          (int64_t{1} << 32) + 1,
                                          int64_t{1} << 48,
                                          int64_t{1} << 47,
                                          int64_t{1} << 62,
                                          -1,
                                          0};
    if (mood_ > 0 && one_in(12)) return numbers[below(std::size(numbers))];
    return number();
}

hostile_call hostile_source::draw() {
    mood_ = below(4);  // from tame to wild
    hostile_call c = {};
    static constexpr enum hostile_call::form forms[] = {hostile_call::form::basic, hostile_call::form::many,
                                                        hostile_call::form::many,  hostile_call::form::guru,
                                                        hostile_call::form::guru,  hostile_call::form::upsampling};
    c.form = forms[below(std::size(forms))];
    c.kind = below(4);
    c.wide = one_in(2);
    c.split = one_in(3) && c.kind != kind_r2r;
    c.rank = one_in(20) ? number() : static_cast<int>(below(4)) + (c.form == hostile_call::form::guru ? 0 : 1);
    c.howmany_rank = one_in(20) ? number() : static_cast<int>(below(4));
    c.sign = one_in(10) ? number() : one_in(2) ? 1 : -1;
    c.flags = one_in(6) ? bits() & ~32u : 0;
    for (bool* missing : {&c.no_n, &c.no_kinds, &c.no_dims, &c.no_batch}) *missing = one_in(30);
    c.no_inembed = one_in(2);
    c.no_onembed = one_in(2);
    c.howmany = one_in(3) ? 1 : number();
    for (int* value : {&c.istride, &c.ostride}) *value = one_in(2) ? 1 : number();
    for (int* value : {&c.idist, &c.odist}) *value = number();
    for (int k = 0; k < 4; ++k) {
        c.n[k] = number();
        c.inembed[k] = one_in(3) ? number() : c.n[k];
        c.onembed[k] = one_in(3) ? number() : c.n[k];
        c.kinds[k] = one_in(20) ? bits() : below(11);
        c.dims[k] = {wide_number(), wide_number(), wide_number()};
        c.batch[k] = {wide_number(), wide_number(), wide_number()};
    }
    c.shift_x = one_in(5) ? INFINITY : 0.5f;
    c.shift_y = one_in(5) ? NAN : -1e30f;
    return c;
}
