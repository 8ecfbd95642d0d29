// SPDX-License-Identifier: Apache-2.0
// Any bytes as a planning call of the interface of FFTW 3: there is a plan or null; a plan of small arrays runs within
// arrays of exactly the addressed length, from the lowest address on.
#include "shim/include/fftw3.h"
#include "tests/fuzz/fail.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <vector>

namespace {

constexpr int64_t largest_array = 1 << 12;  // elements

enum class kind { c2c, r2c, c2r, r2r };

struct call {
    kind what;
    int sign;
    unsigned flags;
    bool in_place;
    std::vector<fftwf_iodim64> dims, batch;
    std::vector<fftwf_r2r_kind> kinds;
};

call call_of(FuzzedDataProvider& data) {
    call c;
    c.what = static_cast<kind>(data.ConsumeIntegralInRange(0, 3));
    c.sign = data.ConsumeBool() ? 1 : -1;
    static constexpr unsigned flags[] = {FFTW_ESTIMATE,
                                         FFTW_MEASURE,
                                         FFTW_ESTIMATE | FFTW_UNALIGNED,
                                         FFTW_ESTIMATE | FFTW_DESTROY_INPUT,
                                         FFTW_ESTIMATE | FFTW_PRESERVE_INPUT,
                                         FFTW_MEASURE | FFTW_WISDOM_ONLY,
                                         FFTW_ESTIMATE | FFTW_CONSERVE_MEMORY};
    c.flags = flags[data.ConsumeIntegralInRange(0, 6)];
    c.in_place = data.ConsumeBool();
    const auto triples = [&](std::vector<fftwf_iodim64>& list, int most) {
        list.resize(static_cast<size_t>(data.ConsumeIntegralInRange(0, most)));
        for (auto& d : list) {
            d.n = data.ConsumeIntegralInRange(0, 40);
            d.is = data.ConsumeIntegralInRange(-60, 200);
            d.os = c.in_place && data.ConsumeBool() ? d.is : data.ConsumeIntegralInRange(-60, 200);
        }
    };
    triples(c.dims, 6);
    triples(c.batch, 6);
    for (size_t k = 0; k < c.dims.size(); ++k)
        c.kinds.push_back(static_cast<fftwf_r2r_kind>(data.ConsumeIntegralInRange(0, 10)));
    return c;
}

// The lowest and the highest element that a side addresses.
struct extent {
    int64_t low = 0, high = 0;
    int64_t elements() const { return high - low + 1; }
};

extent extent_of(const call& c, bool input) {
    extent e;
    const auto reach = [&](const fftwf_iodim64& d, int64_t n) {
        if (n < 1) return;
        const int64_t last = (n - 1) * (input ? d.is : d.os);
        (last < 0 ? e.low : e.high) += last;
    };
    const bool half_side = c.what == (input ? kind::c2r : kind::r2c);
    for (size_t k = 0; k < c.dims.size(); ++k)
        reach(c.dims[k], half_side && k + 1 == c.dims.size() ? c.dims[k].n / 2 + 1 : c.dims[k].n);
    for (const auto& d : c.batch) reach(d, d.n);
    return e;
}

int64_t transforms_elements(const call& c) {
    int64_t count = 1;
    for (const auto* list : {&c.dims, &c.batch})
        for (const auto& d : *list) count = std::min<int64_t>(count * d.n, 8 * largest_array);
    return count;
}

fftwf_plan plan_of(const call& c, float* in, float* out) {
    const int rank = static_cast<int>(c.dims.size()), batch_rank = static_cast<int>(c.batch.size());
    const auto pairs = [](float* p) { return reinterpret_cast<fftwf_complex*>(p); };
    const auto *dims = c.dims.data(), *batch = c.batch.data();
    switch (c.what) {
        case kind::c2c:
            return fftwf_plan_guru64_dft(rank, dims, batch_rank, batch, pairs(in), pairs(out), c.sign, c.flags);
        case kind::r2c:
            return fftwf_plan_guru64_dft_r2c(rank, dims, batch_rank, batch, in, pairs(out), c.flags);
        case kind::c2r:
            return fftwf_plan_guru64_dft_c2r(rank, dims, batch_rank, batch, pairs(in), out, c.flags);
        default:
            return fftwf_plan_guru64_r2r(rank, dims, batch_rank, batch, in, out, c.kinds.data(), c.flags);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    FuzzedDataProvider data(bytes, size);
    const call c = call_of(data);
    const extent in = extent_of(c, true), out = extent_of(c, false);
    if (in.elements() > largest_array || out.elements() > largest_array || transforms_elements(c) > 4 * largest_array)
        return 0;
    const int64_t in_floats = c.what == kind::c2c || c.what == kind::c2r ? 2 : 1;
    const int64_t out_floats = c.what == kind::c2c || c.what == kind::r2c ? 2 : 1;
    // In place both sides begin at the same float, and the array holds what either of them reaches.
    const int64_t low_in = in.low * in_floats, low_out = out.low * out_floats;
    const int64_t high_in = (in.high + 1) * in_floats, high_out = (out.high + 1) * out_floats;
    const int64_t front = c.in_place ? -std::min(low_in, low_out) : -low_in;
    std::vector<float> first(static_cast<size_t>(front + (c.in_place ? std::max(high_in, high_out) : high_in)), 0.5f);
    std::vector<float> second(static_cast<size_t>(c.in_place ? 1 : high_out - low_out), 0.25f);
    float* const from = first.data() + front;
    float* const to = c.in_place ? from : second.data() - low_out;
    const fftwf_plan plan = plan_of(c, from, to);
    if (plan) {
        fftwf_execute(plan);
        double add = -1, multiply = -1, fused = -1;
        fftwf_flops(plan, &add, &multiply, &fused);
        if (!(add >= 0 && multiply >= 0 && fused >= 0)) fail("operations below nothing");
        free(fftwf_sprint_plan(plan));
    }
    fftwf_destroy_plan(plan);
    fftwf_forget_wisdom();
    return 0;
}
