// SPDX-License-Identifier: Apache-2.0
#include "problems/refusal_reason.h"

#include "interface/plan_call.h"
#include "problems/stand_in_arrays.h"

#include <array>
#include <cstring>
#include <span>

namespace {

std::string text(int64_t value) { return std::to_string(value); }

std::string item(const char* list, int k) { return list + ("[" + text(k) + "]"); }

// "NAME = VALUE is below BOUND" when it is, else empty.
std::string below(const std::string& name, int64_t value, int64_t bound) {
    return value < bound ? name + " = " + text(value) + " is below " + text(bound) : "";
}

std::string out_of_rank(const char* name, int value, int least) {
    if (value < least) return below(name, value, least);
    return name + (" = " + text(value)) + " is above " + text(max_rank);
}

// The first of the texts that says something.
template <class... Texts>
std::string first_of(Texts... texts) {
    for (const std::string& t : {texts...})
        if (!t.empty()) return t;
    return "";
}

// ---- many calls ----

std::string small_size(const many_arguments& a) {
    for (int k = 0; k < a.rank; ++k)
        if (a.n[k] < 1) return below(item("n", k), a.n[k], 1);
    return "";
}

std::string small_embed(const many_arguments& a, const char* name, const int* embed, bool complex_half) {
    for (int k = 1; k < a.rank; ++k) {
        const bool half = complex_half && k == a.rank - 1;
        const int least = half ? a.n[k] / 2 + 1 : a.n[k];
        if (embed[k] < least)
            return item(name, k) + " = " + text(embed[k]) + " is below " + item("n", k) + (half ? " / 2 + 1" : "") +
                   " = " + text(least);
    }
    return "";
}

std::string small_distance(const many_arguments& a) {
    const std::string reason = first_of(below("idist", a.idist, 1), below("odist", a.odist, 1));
    return reason + ", and howmany = " + text(a.howmany) + " is above 1";
}

std::string mixed_side(const many_arguments& a, const char* stride_name, int stride, const char* dist_name, int dist) {
    const auto named = [](const char* name, int value) { return name + (" = " + text(value)); };
    if (stride == 1) {
        if (a.rank != 2 || dist >= a.n[1]) return "";
        return named(dist_name, dist) + " is below n[1] = " + text(a.n[1]);
    }
    uint32_t points = 1;
    for (int k = 0; k < a.rank; ++k) points *= static_cast<uint32_t>(a.n[k]);
    const int32_t all = multiply_32(dist, a.howmany), span = multiply_32(points - 1, stride);
    if (stride >= all || dist > span) return "";
    return named(stride_name, stride) + " is below " + dist_name + " * howmany = " + text(all) + ", and " +
           named(dist_name, dist) + " is not above (points - 1) * " + stride_name + " = " + text(span);
}

std::string mixed_batch(const many_arguments& a) {
    return "in place, the transforms of the batch interleave in part: " +
           first_of(mixed_side(a, "istride", a.istride, "idist", a.idist),
                    mixed_side(a, "ostride", a.ostride, "odist", a.odist));
}

// What the numbers of the call say about a demand of interface/many_arguments.cpp.
struct many_detail {
    const char* demand;
    std::string (*reason)(const many_arguments& a);
};

constexpr many_detail many_details[] = {
    {"n is not null", [](const many_arguments&) -> std::string { return "n is null"; }},
    {"sign is -1 or +1", [](const many_arguments& a) { return "sign = " + text(a.sign) + " is neither -1 nor +1"; }},
    {"rank is 1 to 4", [](const many_arguments& a) { return out_of_rank("rank", a.rank, 1); }},
    {"every size is at least 1", small_size},
    {"inembed holds the input's sizes",
     [](const many_arguments& a) { return small_embed(a, "inembed", a.inembed, a.kind == kind_c2r); }},
    {"onembed holds the output's sizes",
     [](const many_arguments& a) { return small_embed(a, "onembed", a.onembed, a.kind == kind_r2c); }},
    {"kinds is not null", [](const many_arguments&) -> std::string { return "kinds is null"; }},
    {"howmany is at least 1", [](const many_arguments& a) { return below("howmany", a.howmany, 1); }},
    {"strides are at least 1",
     [](const many_arguments& a) { return first_of(below("istride", a.istride, 1), below("ostride", a.ostride, 1)); }},
    {"distances are at least 1 where howmany is above 1", small_distance},
    {"in place, the transforms of a batch do not interleave in part", mixed_batch},
};

// ---- guru calls ----

struct named_dims {
    const char* name;
    const dim_list& dims;
    std::string field(int k, const char* field) const { return item(name, k) + "." + field; }
};

std::string small_triple(const named_dims& d, int count) {
    for (int k = 0; k < count; ++k) {
        const fft_dim t = d.dims[k];
        const std::string reason = first_of(below(d.field(k, "n"), t.n, 1), below(d.field(k, "is"), t.is, 1),
                                            below(d.field(k, "os"), t.os, 1));
        if (!reason.empty()) return reason;
    }
    return "";
}

// One side of the triples.
struct dims_side {
    const named_dims& d;
    const char* field;
    int64_t fft_dim::* stride;

    int64_t step(int k) const { return d.dims[k].*stride; }
    std::string step_name(int k) const { return d.field(k, field); }

    // Block `inner` doesn't fit between two elements of the dimension ahead of it.
    std::string overlong(int inner) const {
        const int32_t length = multiply_32(d.dims[inner].n, step(inner));
        if (length <= step(inner - 1)) return "";
        return d.field(inner, "n") + " * " + step_name(inner) + " = " + text(length) + " is above " +
               step_name(inner - 1) + " = " + text(step(inner - 1));
    }
    std::string reach_text(int k) const {
        return "(" + d.field(k, "n") + " - 1) * " + step_name(k) + " = " + text(multiply_32(d.dims[k].n - 1, step(k)));
    }
};

template <class Reason>
std::string on_either_side(const named_dims& d, Reason reason) {
    return first_of(reason(dims_side{d, "is", &fft_dim::is}), reason(dims_side{d, "os", &fft_dim::os}));
}

std::string mixed_dims(const guru_arguments& a) {
    return on_either_side(
               {"dims", a.dims},
               [&](const dims_side& s) -> std::string {
                   const std::string middle = s.step_name(1) + " = " + text(s.step(1)),
                                     outer = s.step_name(0) + " = " + text(s.step(0));
                   if (a.rank == 4) {
                       const bool reaches = multiply_32(a.dims[2].n - 1, s.step(2)) >= s.step(1);
                       return first_of(reaches ? s.reach_text(2) + " is not below " + middle : "", s.overlong(1));
                   }
                   const bool mixed = s.step(1) < s.step(0) && s.step(0) <= multiply_32(a.dims[1].n - 1, s.step(1));
                   return mixed ? middle + " is below " + outer + ", and that is not above " + s.reach_text(1) : "";
               }) +
           ": the dimensions interleave";
}

std::string unordered_batch(const guru_arguments& a) {
    return on_either_side({"howmany_dims", a.howmany_dims},
                          [&](const dims_side& s) {
                              return a.howmany_rank == 3 ? first_of(s.overlong(2), s.overlong(1)) : s.overlong(1);
                          }) +
           ": batch dimensions stand slowest first, the fastest one last";
}

struct guru_detail {
    const char* demand;
    std::string (*reason)(const guru_arguments& a);
};

constexpr guru_detail guru_details[] = {
    {"dims is not null", [](const guru_arguments&) -> std::string { return "dims is null"; }},
    {"howmany_dims is not null", [](const guru_arguments&) -> std::string { return "howmany_dims is null"; }},
    {"rank is 0 to 4", [](const guru_arguments& a) { return out_of_rank("rank", a.rank, 0); }},
    {"all of dims are at least 1", [](const guru_arguments& a) { return small_triple({"dims", a.dims}, a.rank); }},
    {"howmany_rank is 0 to 4", [](const guru_arguments& a) { return out_of_rank("howmany_rank", a.howmany_rank, 0); }},
    {"all of howmany_dims are at least 1",
     [](const guru_arguments& a) { return small_triple({"howmany_dims", a.howmany_dims}, a.howmany_rank); }},
    {"kinds is not null", [](const guru_arguments&) -> std::string { return "kinds is null"; }},
    {"rank is at least 1 but for interleaved complex and r2r",
     [](const guru_arguments&) -> std::string {
         return "rank = 0 is below 1; only interleaved c2c and r2r move data";
     }},
    {"dimensions do not interleave", mixed_dims},
    {"batch dimensions stand slowest first, each at least as far apart as the ones behind it are long",
     unordered_batch},
    {"a single r2r in place has equal strides",
     [](const guru_arguments& a) {
         return "in place, dims[0].is = " + text(a.dims[0].is) + " is not dims[0].os = " + text(a.dims[0].os);
     }},
};

// A demand without a detail is a reason of its own.
template <class Details, class Arguments>
std::string detailed(const Details& details, const char* demand, const Arguments& a) {
    if (!demand) return "";
    for (const auto& d : details)
        if (!strcmp(d.demand, demand)) return d.reason(a);
    return std::string("the call demands: ") + demand;
}

// ---- layouts and kinds ----

std::string overlong_dimension(const char* list, const fft_dim& d, int k) {
    if (d.n == 1) return "";
    const struct {
        const char* side;
        int64_t stride;
    } sides[] = {{"input", d.is}, {"output", d.os}};
    for (const auto& s : sides)
        if (saturating_multiply(d.n, s.stride) > largest_extent)
            return list + (" dimension " + text(k)) + " has " + text(d.n) + " elements, on the " + s.side + " side " +
                   text(s.stride) + " apart: its extent is above " + text(largest_extent) + " elements (2^48)";
    return "";
}

std::string unaddressable(const fft_plan& p) {
    if (layout_is_addressable(p)) return "";
    for (int k = 0; k < p.rank; ++k)
        if (const auto reason = overlong_dimension("transform", p.dims[k], k); !reason.empty()) return reason;
    for (int k = 0; k < p.howmany_rank; ++k)
        if (const auto reason = overlong_dimension("batch", p.howmany[k], k); !reason.empty()) return reason;
    return "the product of all sizes is above " + text(largest_extent) + " (2^48)";
}

constexpr std::array r2r_names = {"r2hc",    "hc2r",    "dht",     "redft00", "redft01", "redft10",
                                  "redft11", "rodft00", "rodft01", "rodft10", "rodft11"};

std::string wrong_kind(const fft_plan& p) {
    if (p.kind != kind_r2r) return "";
    for (int k = 0; k < p.rank; ++k) {
        const std::string kind = item("kinds", k) + " = " + text(p.r2r_kind[k]);
        if (p.r2r_kind[k] > r2r_rodft11) return kind + " is above 10, the last kind of transform";
        if (p.r2r_kind[k] == r2r_redft00 && p.dims[k].n == 1)
            return kind + " (redft00) needs two points, and " + item("n", k) + " = 1 is below 2";
    }
    return "";
}

// ---- what no solver takes ----

// The dimension that differs between the two sides of a problem in place, in elements of each side.
std::string different_sides(const fft_plan& p) {
    const struct {
        const char* name;
        const fft_dim* dims;
        int count;
    } lists[] = {{"transform", p.dims, p.rank}, {"batch", p.howmany, p.howmany_rank}};
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(p.kind, &in_bytes, &out_bytes);
    for (const auto& list : lists)
        for (int k = 0; k < list.count; ++k) {
            const fft_dim& d = list.dims[k];
            const bool last = list.dims == p.dims && k == p.rank - 1;  // r2c and c2r have it on their own terms
            const uint64_t in_step = in_bytes * static_cast<uint64_t>(d.is),
                           out_step = out_bytes * static_cast<uint64_t>(d.os);
            if (d.n == 1 || in_step == out_step || (last && d.is == 1 && d.os == 1)) continue;
            return std::string(": ") + list.name + " dimension " + text(k) + " steps by " + text(int64_t(in_step)) +
                   " bytes on the input side and by " + text(int64_t(out_step)) + " on the output side";
        }
    return "";
}

// Plans the problem with its output elsewhere.
bool is_solved_apart(const fft_plan& problem) {
    fft_plan* apart = fft_plan_clone(&problem);
    if (!apart) return false;
    apart->flags = 0;
    apart->out = stand_in_array(stand_in::out);
    if (apart->out_imag) apart->out_imag = stand_in_array(stand_in::out_imag);
    apart = finish_plan_call(apart);
    fft_plan_free(apart);
    return apart != nullptr;
}

}  // namespace

std::string unsolved_reason(const fft_plan& p) {
    if (p.in == p.out && is_solved_apart(p))
        return "in place, no solver takes this layout without overwriting input that it has yet to read (out of place "
               "it is planned)" +
               different_sides(p);
    return "memory is short for the tables and the working storage of this problem";
}

std::string r2r_kind_name(uint32_t kind) { return kind < r2r_names.size() ? r2r_names[kind] : std::to_string(kind); }

std::string many_reason(const many_arguments& a) { return detailed(many_details, many_refusal(a), a); }

std::string guru_reason(const guru_arguments& a) { return detailed(guru_details, guru_refusal(a), a); }

std::string problem_reason(const fft_plan& p) {
    if (p.rank == 0 && p.howmany_rank == 0)
        return "there is nothing to transform or move: no dimension of two points or more, and howmany_rank = 0";
    return first_of(wrong_kind(p), unaddressable(p));
}
