// SPDX-License-Identifier: Apache-2.0
#include "real/sorensen_stages.h"

#include "dft/twiddles.h"

constinit const sorensen_isa sorensen_neon = {stage_lookup_sorensen_first_neon, stage_lookup_sorensen_other_neon,
                                              stage_lookup_sorensen_last_neon, twiddle_fill_sorensen_neon};
constinit const sorensen_isa sorensen_sve = {stage_lookup_sorensen_first_sve, stage_lookup_sorensen_other_sve,
                                             stage_lookup_sorensen_last_sve, twiddle_fill_sorensen_sve};

namespace {

// Counts of a stage that makes sequences of length `rest`.
void fill_counts(sorensen_stage_record& stage, const fft_plan* plan, uint64_t radix, uint64_t done, uint64_t rest) {
    stage = {};
    stage.done = done;
    stage.rest = rest;
    stage.half = (rest + 1) / 2;
    stage.has_middle = rest % 2 == 0;
    stage.is = stage.os = 1;
    stage.radix = radix;
    stage.sign = plan->sign;
}

void fill_stages(const fft_plan* plan, const sorensen_isa& isa, uint64_t count, const uint64_t* radices) {
    const sorensen_stage_list list = sorensen_stages(plan->aux);
    *list.count = count;
    float* table = reinterpret_cast<float*>(list.stages + count);
    const uint64_t n = plan->dims[0].n;
    uint64_t done = 1, rest = n;
    for (uint64_t q = 0; q < count; ++q) {
        sorensen_stage_record& stage = list.stages[q];
        const uint64_t r = radices[count - 1 - q];
        rest /= r;
        fill_counts(stage, plan, r, done, rest);
        if (q + 1 == count) {
            isa.last(&stage, plan);
        } else {
            stage.twiddles = table;
            (q == 0 ? isa.first : isa.other)(&stage, plan);
            // The first stage runs across its rows, several at a time; it has a row for each coefficient that it
            // handles in general. The others run along their `done` branches.
            if (q == 0)
                isa.fill_first(table, n, r, stage.half, done, stage.sign);
            else
                twiddle_fill_rows(table, n, r, rest, done, stage.sign);
            table += 2 * (r - 1) * rest;
        }
        done *= r;
    }
    list.stages[0].is = plan->dims[0].is;
    list.stages[count - 1].os = plan->dims[0].os;
}

}  // namespace

void sorensen_stage_fill_neon(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t) {
    fill_stages(plan, sorensen_neon, stage_count, radices);
}

void sorensen_stage_fill_sve(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t) {
    fill_stages(plan, sorensen_sve, stage_count, radices);
}
