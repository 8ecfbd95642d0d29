// SPDX-License-Identifier: Apache-2.0
// Printing a problem in full, and making it smaller.
#include <sstream>

#include "tests/batch/differential/problem.h"

namespace {

const char* kind_name(const transform_problem& p) {
    switch (p.kind) {
        case kind_c2c:
            return "c2c";
        case kind_c2r:
            return "c2r";
        case kind_r2c:
            return "r2c";
        default:
            return "r2r";
    }
}

template <class List, class Text>
std::string joined(const List& list, Text text_of) {
    std::string text;
    for (const auto& item : list) text += (text.empty() ? "" : ",") + text_of(item);
    return text;
}

std::string triples(const std::vector<fft_dim>& axes) {
    return joined(axes, [](const fft_dim& d) {
        return std::to_string(d.n) + ":" + std::to_string(d.is) + ":" + std::to_string(d.os);
    });
}

std::string numbers(const std::vector<int>& list) {
    return joined(list, [](int n) { return std::to_string(n); });
}

void print_many_side(std::ostream& s, char side, const many_layout& many) {
    s << " " << side << "nembed=" << numbers(many.embed) << " " << side << "stride=" << many.stride << " " << side
      << "dist=" << many.distance;
}

void print_many(std::ostream& s, const transform_problem& p) {
    s << "many " << kind_name(p) << " n=" << joined(p.dims, [](const fft_dim& d) { return std::to_string(d.n); })
      << " howmany=" << p.transforms();
    print_many_side(s, 'i', p.many_in);
    print_many_side(s, 'o', p.many_out);
}

void print_guru(std::ostream& s, const transform_problem& p) {
    s << "guru " << kind_name(p);
    s << " dims=" << triples(p.dims) << " batch=" << triples(p.batch) << (p.split ? " split" : "")
      << (p.call == plan_call::guru64 ? " wide" : "");
}

// The same lengths, stored without gaps: batches outermost, the last dimension innermost.
void make_compact(transform_problem& p, bool input) {
    int64_t span = 1;
    for (size_t d = p.dims.size(); d-- > 0;) {
        (input ? p.dims[d].is : p.dims[d].os) = span;
        span *= p.stored_length(d, input);
    }
    for (size_t b = p.batch.size(); b-- > 0;) {
        (input ? p.batch[b].is : p.batch[b].os) = span;
        span *= p.batch[b].n;
    }
}

template <class Change>
void offer(std::vector<transform_problem>& list, const transform_problem& p, Change change) {
    transform_problem q = p;
    change(q);
    if (q.text() != p.text()) list.push_back(std::move(q));
}

void offer_shorter(std::vector<transform_problem>& list, const transform_problem& p,
                   std::vector<fft_dim> transform_problem::* axes) {
    for (size_t i = 0; i < (p.*axes).size(); ++i) {
        const int64_t n = (p.*axes)[i].n;
        for (int64_t shorter : {int64_t{1}, n / 2, n - 1})
            if (shorter >= 1 && shorter < n) offer(list, p, [&](transform_problem& q) { (q.*axes)[i].n = shorter; });
    }
}

}  // namespace

std::string transform_problem::call_text() const {
    std::ostringstream s;
    call == plan_call::many ? print_many(s, *this) : print_guru(s, *this);
    if (kind == kind_c2c && !split) s << " sign=" << sign;
    if (kind == kind_r2r) s << " kinds=" << joined(r2r_kinds, [](uint32_t k) { return std::to_string(k); });
    s << (in_place ? " inplace" : "");
    return s.str();
}

std::string transform_problem::text() const {
    std::ostringstream s;
    s << "'" << call_text() << "'" << (outputs_overlap ? " onto overlapping outputs" : "")
      << (measured ? " measured" : "") << (guarded ? " guarded" : "") << (new_arrays ? " on new arrays" : "")
      << (stranger ? " on a thread that never planned" : "") << " threads " << nthreads << " data " << data_seed;
    return s.str();
}

std::vector<transform_problem> simpler_problems(const transform_problem& p) {
    std::vector<transform_problem> list;
    if (p.call != plan_call::guru64)
        offer(list, p, [](transform_problem& q) {
            q.call = plan_call::guru64;
            q.many_in = q.many_out = {};
        });
    offer(list, p, [](transform_problem& q) { q.measured = false; });
    offer(list, p, [](transform_problem& q) { q.new_arrays = false; });
    offer(list, p, [](transform_problem& q) { q.stranger = false; });
    offer(list, p, [](transform_problem& q) { q.nthreads = 1; });
    if (p.call == plan_call::many) return list;  // its lengths and strides depend on each other
    const size_t least_batch = p.dims.empty() ? 1 : 0;
    for (size_t b = 0; b < p.batch.size() && p.batch.size() > least_batch; ++b)
        offer(list, p, [&](transform_problem& q) { q.batch.erase(q.batch.begin() + b); });
    for (size_t d = 0; d + 1 < p.dims.size(); ++d)
        offer(list, p, [&](transform_problem& q) {
            q.dims.erase(q.dims.begin() + d);
            if (!q.r2r_kinds.empty()) q.r2r_kinds.erase(q.r2r_kinds.begin() + d);
        });
    offer_shorter(list, p, &transform_problem::dims);
    offer_shorter(list, p, &transform_problem::batch);
    if (!p.in_place) {
        offer(list, p, [](transform_problem& q) { make_compact(q, true); });
        offer(list, p, [](transform_problem& q) { make_compact(q, false); });
    }
    return list;
}
