// SPDX-License-Identifier: Apache-2.0
// differential SHIM PEER COUNT [SEED]
// Random problems through the shim and through the library whose interface it has: equal to rounding, untouched where
// the other leaves memory untouched, and a plan wherever the other has one. Ends with 77 where there is no peer.
#include "tests/shim/random_problem.h"
#include "tests/shim/transform_library.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr ptrdiff_t guard = 8;
constexpr double worst_allowed = 2e-6;  // relative, over the whole output

// The floats of one side, with guards, and where the caller's pointers stand.
struct memory {
    std::vector<float> floats;
    ptrdiff_t real;
    ptrdiff_t imag;
};

struct range {
    ptrdiff_t low = 0, high = 0;
    void include(const std::vector<ptrdiff_t>& places, ptrdiff_t width) {
        for (ptrdiff_t at : places) low = std::min(low, at), high = std::max(high, at + width);
    }
};

ptrdiff_t width_of(const random_problem& p, bool is_complex) { return is_complex && (!p.split() || p.joined) ? 2 : 1; }

memory memory_for(const random_problem& p, const range& r, bool is_complex, std::mt19937_64& random) {
    const ptrdiff_t one = r.high - r.low + 2 * guard;
    const bool two = p.split() && is_complex && !p.joined;
    memory m;
    m.floats.resize((two ? 2 : 1) * one);
    for (float& f : m.floats) f = static_cast<float>(static_cast<int>(random() % 2001) - 1000) / 1000;
    m.real = guard - r.low;
    m.imag = p.split() && is_complex ? m.real + (two ? one : 1) : -1;
    return m;
}

struct run_result {
    bool planned = false;
    memory in, out;  // after execution; in place `out` alone
};

std::vector<fftwf_iodim64> wide(const std::vector<random_dim>& list) {
    std::vector<fftwf_iodim64> result;
    for (const random_dim& d : list) result.push_back({d.n, d.is, d.os});
    return result;
}
std::vector<fftwf_iodim> narrow(const std::vector<random_dim>& list) {
    std::vector<fftwf_iodim> result;
    for (const random_dim& d : list) result.push_back({int(d.n), int(d.is), int(d.os)});
    return result;
}

fftwf_complex* as_complex(float* f) { return reinterpret_cast<fftwf_complex*>(f); }

struct pointers {
    float *in, *in_imag, *out, *out_imag;
};

fftwf_plan plan_many(const transform_library& l, const random_problem& p, const pointers& a) {
    std::vector<int> n;
    for (const random_dim& d : p.dims) n.push_back(int(d.n));
    const int rank = int(n.size()), many = int(p.batch[0].n), idist = int(p.batch[0].is), odist = int(p.batch[0].os);
    const int is = rank ? int(p.dims.back().is) : 1, os = rank ? int(p.dims.back().os) : 1;
    const int *ie = p.in_embed.empty() ? nullptr : p.in_embed.data(),
              *oe = p.out_embed.empty() ? nullptr : p.out_embed.data();
    switch (p.kind) {
        case transform::c2c:
            return l.plan_many_dft(rank, n.data(), many, as_complex(a.in), ie, is, idist, as_complex(a.out), oe, os,
                                   odist, p.sign, p.flags);
        case transform::r2c:
            return l.plan_many_dft_r2c(rank, n.data(), many, a.in, ie, is, idist, as_complex(a.out), oe, os, odist,
                                       p.flags);
        case transform::c2r:
            return l.plan_many_dft_c2r(rank, n.data(), many, as_complex(a.in), ie, is, idist, a.out, oe, os, odist,
                                       p.flags);
        default:
            return l.plan_many_r2r(rank, n.data(), many, a.in, ie, is, idist, a.out, oe, os, odist, p.kinds.data(),
                                   p.flags);
    }
}

template <class Dim, class C2c, class R2c, class C2r, class R2r>
fftwf_plan plan_guru(const random_problem& p, const pointers& a, const std::vector<Dim>& dims,
                     const std::vector<Dim>& batch, C2c* c2c, R2c* r2c, C2r* c2r, R2r* r2r) {
    const int rank = int(dims.size()), many = int(batch.size());
    switch (p.kind) {
        case transform::c2c:
            return c2c(rank, dims.data(), many, batch.data(), as_complex(a.in), as_complex(a.out), p.sign, p.flags);
        case transform::r2c:
            return r2c(rank, dims.data(), many, batch.data(), a.in, as_complex(a.out), p.flags);
        case transform::c2r:
            return c2r(rank, dims.data(), many, batch.data(), as_complex(a.in), a.out, p.flags);
        default:
            return r2r(rank, dims.data(), many, batch.data(), a.in, a.out, p.kinds.data(), p.flags);
    }
}

fftwf_plan plan_split(const transform_library& l, const random_problem& p, const pointers& a) {
    const auto dims = wide(p.dims), batch = wide(p.batch);
    const int rank = int(dims.size()), many = int(batch.size());
    if (p.kind == transform::r2c)
        return l.plan_guru64_split_dft_r2c(rank, dims.data(), many, batch.data(), a.in, a.out, a.out_imag, p.flags);
    if (p.kind == transform::c2r)
        return l.plan_guru64_split_dft_c2r(rank, dims.data(), many, batch.data(), a.in, a.in_imag, a.out, p.flags);
    return l.plan_guru64_split_dft(rank, dims.data(), many, batch.data(), a.in, a.in_imag, a.out, a.out_imag, p.flags);
}

// A backward split transform has its real and imaginary parts exchanged.
pointers turned(const random_problem& p, pointers a) {
    if (p.split() && p.kind == transform::c2c && p.sign == FFTW_BACKWARD) {
        std::swap(a.in, a.in_imag);
        std::swap(a.out, a.out_imag);
    }
    return a;
}

fftwf_plan plan(const transform_library& l, const random_problem& p, const pointers& a) {
    switch (p.call) {
        case plan_call::many:
            return plan_many(l, p, a);
        case plan_call::guru:
            return plan_guru(p, a, narrow(p.dims), narrow(p.batch), l.plan_guru_dft, l.plan_guru_dft_r2c,
                             l.plan_guru_dft_c2r, l.plan_guru_r2r);
        case plan_call::guru64:
            return plan_guru(p, a, wide(p.dims), wide(p.batch), l.plan_guru64_dft, l.plan_guru64_dft_r2c,
                             l.plan_guru64_dft_c2r, l.plan_guru64_r2r);
        default:
            return plan_split(l, p, a);
    }
}

void execute_on(const transform_library& l, const random_problem& p, fftwf_plan plan, const pointers& a) {
    if (p.split()) switch (p.kind) {
            case transform::r2c:
                return l.execute_split_dft_r2c(plan, a.in, a.out, a.out_imag);
            case transform::c2r:
                return l.execute_split_dft_c2r(plan, a.in, a.in_imag, a.out);
            default:
                return l.execute_split_dft(plan, a.in, a.in_imag, a.out, a.out_imag);
        }
    switch (p.kind) {
        case transform::c2c:
            return l.execute_dft(plan, as_complex(a.in), as_complex(a.out));
        case transform::r2c:
            return l.execute_dft_r2c(plan, a.in, as_complex(a.out));
        case transform::c2r:
            return l.execute_dft_c2r(plan, as_complex(a.in), a.out);
        default:
            return l.execute_r2r(plan, a.in, a.out);
    }
}

float* at(memory& m, ptrdiff_t place) { return place < 0 ? nullptr : m.floats.data() + place; }

// New arrays lie as far from a 16-byte boundary as the planned ones: the copies of a vector do.
run_result run(const transform_library& l, const random_problem& p, memory in, memory out) {
    run_result r;
    memory planned_in = in, planned_out = out;
    const auto sides = [&](memory& i, memory& o) {
        memory& first = p.in_place ? o : i;
        return turned(p, {at(first, first.real), at(first, first.imag), at(o, o.real), at(o, o.imag)});
    };
    const pointers own = sides(in, out);
    fftwf_plan handle = plan(l, p, p.new_arrays ? sides(planned_in, planned_out) : own);
    if (!handle) return r;
    r.planned = true;
    p.new_arrays ? execute_on(l, p, handle, own) : l.execute(handle);
    l.destroy_plan(handle);
    r.in = std::move(in);
    r.out = std::move(out);
    return r;
}

// In place or not is no difference to what should come out.
run_result run_apart(const transform_library& l, random_problem p, const memory& array) {
    p.in_place = false;
    p.flags &= ~FFTW_PRESERVE_INPUT;
    if (p.call == plan_call::many) p.call = plan_call::guru64;  // which pads no rows that it isn't told to
    return run(l, p, array, array);
}

struct comparison {
    double error = 0;  // of the output elements
    bool strays = false;
    bool input_changed = false;
};

comparison compare(const random_problem& p, const run_result& ours, const run_result& theirs, const memory& in,
                   const memory& out_before, bool in_place) {
    comparison c;
    std::vector<bool> is_output(out_before.floats.size());
    double difference = 0, norm = 0;
    const auto element = [&](ptrdiff_t place, ptrdiff_t other) {
        is_output[place] = true;
        const double a = ours.out.floats[place], b = theirs.out.floats[other];
        difference += (a - b) * (a - b);
        norm += b * b;
    };
    const ptrdiff_t shift = theirs.out.real - ours.out.real;
    const ptrdiff_t imag = !p.complex_out() ? 0 : p.split() ? ours.out.imag - ours.out.real : 1;
    const ptrdiff_t their_imag = !p.complex_out() ? 0 : p.split() ? theirs.out.imag - theirs.out.real : 1;
    for (ptrdiff_t place : p.places(false)) {
        element(ours.out.real + place, ours.out.real + place + shift);
        if (imag) element(ours.out.real + place + imag, ours.out.real + place + shift + their_imag);
    }
    c.error = difference == 0 ? 0 : std::sqrt(difference / norm);
    if (!std::isfinite(c.error)) c.error = 1e9;
    if (!in_place || !p.overwrites_input() || p.kind == transform::c2c || p.kind == transform::r2r) {
        std::vector<bool> may_change = is_output;
        if (in_place)  // input elements that aren't outputs may be scratch
            for (ptrdiff_t place : p.places(true))
                for (ptrdiff_t k = 0; k < width_of(p, p.complex_in()); ++k)
                    may_change[out_before.real + place + k] = true;
        if (in_place && p.split() && !p.joined)
            for (ptrdiff_t place : p.places(true)) may_change[out_before.imag + place] = true;
        for (size_t i = 0; i < is_output.size(); ++i)
            if (!may_change[i] && ours.out.floats[i] != out_before.floats[i]) c.strays = true;
    }
    c.input_changed = !in_place && !p.overwrites_input() && ours.in.floats != in.floats;
    return c;
}

struct tally {
    int both_null = 0, planned_here_alone = 0, wrong_there = 0, compared = 0, failures = 0;
    double worst = 0;
};

void report(tally& t, long i, const random_problem& p, const char* what, double error = 0) {
    ++t.failures;
    printf("FAILED problem %ld: %s: %s (%g)\n", i, p.text().c_str(), what, error);
}

void check(tally& t, long i, const random_problem& p, const transform_library& shim, const transform_library& peer,
           std::mt19937_64& random) {
    range in_range, out_range;
    in_range.include(p.places(true), width_of(p, p.complex_in()));
    out_range.include(p.places(false), width_of(p, p.complex_out()));
    if (p.in_place) {
        in_range.low = out_range.low = std::min(in_range.low, out_range.low);
        in_range.high = out_range.high = std::max(in_range.high, out_range.high);
    }
    const memory in = memory_for(p, in_range, p.complex_in(), random);
    memory out = memory_for(p, out_range, p.complex_out(), random);
    const run_result ours = run(shim, p, in, p.in_place && !p.split() ? memory{out} : out);
    run_result theirs = run(peer, p, in, out);
    if (!ours.planned && !theirs.planned) {
        ++t.both_null;
        return;
    }
    if (!ours.planned) return report(t, i, p, "a plan there, null here");
    if (!theirs.planned) {  // allowed in place alone: what ours computes is what theirs computes out of place
        ++t.planned_here_alone;
        if (!p.in_place) return report(t, i, p, "null there, a plan here");
        theirs = run_apart(peer, p, out);
        if (!theirs.planned) return report(t, i, p, "no plan there out of place either");
    }
    ++t.compared;
    comparison c = compare(p, ours, theirs, in, out, p.in_place);
    if (p.in_place && !(c.error < worst_allowed)) {  // in place between two layouts the peer's plan may be wrong
        ++t.wrong_there;
        c = compare(p, ours, run_apart(peer, p, out), in, out, p.in_place);
    }
    t.worst = std::max(t.worst, c.error);
    if (!(c.error < worst_allowed)) report(t, i, p, "other results", c.error);
    if (c.strays) report(t, i, p, "memory between or beside the outputs was written");
    if (c.input_changed) report(t, i, p, "the input was changed");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) return 2;
    if (access(argv[2], R_OK) != 0) {
        printf("skipped: there is no %s\n", argv[2]);
        return 77;
    }
    const transform_library shim(argv[1]), peer(argv[2]);
    const long count = atol(argv[3]);
    const uint64_t seed = argc > 4 ? strtoull(argv[4], nullptr, 10) : 2026;
    tally t;
    for (long i = 0; i < count; ++i) {
        std::mt19937_64 random(seed * 1000003 + i);
        check(t, i, draw_problem(random), shim, peer, random);
    }
    printf(
        "%ld problems: %d compared, worst relative difference %.3g; %d null in both, %d planned here alone (in place "
        "between two layouts), %d wrong there in place between two layouts; %d failures\n",
        count, t.compared, t.worst, t.both_null, t.planned_here_alone, t.wrong_there, t.failures);
    return t.failures == 0 && t.compared > count / 2 ? 0 : 1;
}
