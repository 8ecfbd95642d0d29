// SPDX-License-Identifier: Apache-2.0
// Any bytes as a planning call of any form: there is a plan or null and no byte is lost; a plan of small arrays
// computes what the sums in double precision say.
#include "tests/fuzz/fail.h"
#include "tests/planner/failing_memory.h"
#include "tests/planner/hostile_outcome.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <climits>
#include <iterator>

namespace {

// Mostly sizes that give plans, sometimes numbers that are about to wrap, sometimes any number.
int64_t number(FuzzedDataProvider& data) {
    static constexpr int64_t extremes[] = {0,         -1,       INT_MAX, INT_MIN, int64_t{1} << 31, int64_t{1} << 62,
                                           INT64_MAX, INT64_MIN};
    const auto how = data.ConsumeIntegral<uint8_t>();
    if (how < 180) return how % 45;
    if (how < 230) return data.ConsumeIntegralInRange<int>(0, 5000);
    if (how < 245) return extremes[how % std::size(extremes)];
    return data.ConsumeIntegral<int64_t>();
}

hostile_call call_of(FuzzedDataProvider& data) {
    hostile_call c = {};
    const auto narrow = [&] { return static_cast<int>(number(data)); };
    c.form = static_cast<enum hostile_call::form>(data.ConsumeIntegralInRange(0, 3));
    c.kind = data.ConsumeIntegralInRange<uint32_t>(0, 3);
    c.wide = data.ConsumeBool();
    c.split = data.ConsumeBool();
    c.rank = data.ConsumeIntegralInRange(-1, 5);
    c.howmany_rank = data.ConsumeIntegralInRange(-1, 5);
    c.sign = data.ConsumeIntegralInRange(-2, 2);
    c.flags = data.ConsumeBool() ? 0 : data.ConsumeIntegral<unsigned>() & ~32u;  // measuring needs real arrays
    const auto missing = data.ConsumeIntegral<uint8_t>();
    if (missing < 64) {
        bool* const lists[] = {&c.no_n, &c.no_inembed, &c.no_onembed, &c.no_kinds, &c.no_dims, &c.no_batch};
        for (size_t k = 0; k < std::size(lists); ++k) *lists[k] = missing >> k & 1;
    }
    if (c.form == hostile_call::form::many && data.ConsumeBool()) c.no_inembed = c.no_onembed = true;
    for (int k = 0; k < 4; ++k) {
        c.kinds[k] = data.ConsumeIntegralInRange<uint32_t>(0, 12);
        c.n[k] = narrow(), c.inembed[k] = narrow(), c.onembed[k] = narrow();
        c.dims[k] = {number(data), number(data), number(data)};
        c.batch[k] = {number(data), number(data), number(data)};
    }
    c.howmany = narrow(), c.istride = narrow(), c.idist = narrow(), c.ostride = narrow(), c.odist = narrow();
    c.shift_x = data.ConsumeFloatingPoint<float>(), c.shift_y = data.ConsumeFloatingPoint<float>();
    return c;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    memory_watch::set_largest_block(size_t{1} << 18);  // as on a small machine, so that no call takes long
    FuzzedDataProvider data(bytes, size);
    const hostile_arrays arrays = draw_arrays(data.ConsumeIntegral<uint8_t>());
    const hostile_call call = call_of(data);
    memory_watch watch(-1);
    qsl_fftf_plan plan = call.plan(arrays);
    watch.stop();
    if (plan) {
        const outcome o = execute_if_small(plan);
        if (!o.failure.empty()) fail(call.text() + "\n" + o.failure);
    }
    qsl_fftf_destroy_plan(plan);
    if (memory_watch::blocks_alive() != 0) fail(call.text() + ": blocks are lost");
    return 0;
}
