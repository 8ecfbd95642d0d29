// SPDX-License-Identifier: Apache-2.0
// The chain of Hermitian stages: how it stands in `aux` and how it is built. A word with the number of stages, the
// records in order of execution, then the tables of all stages but the last.
#pragma once
#include "kernels/real_kernels.h"
#include "record/fft_plan.h"

// What differs between the NEON chain and the SVE chain.
struct sorensen_isa {
    using lookup = void (*)(sorensen_stage_record* stage, const fft_plan* plan);
    lookup first, other, last;
    void (*fill_first)(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
};
extern const sorensen_isa sorensen_neon;
extern const sorensen_isa sorensen_sve;

struct sorensen_stage_list {
    uint64_t* count;
    sorensen_stage_record* stages;
};
inline sorensen_stage_list sorensen_stages(void* aux) {
    auto* const count = static_cast<uint64_t*>(aux);
    return {count, reinterpret_cast<sorensen_stage_record*>(count + 1)};
}

// Bytes of `aux` for a transform of length n in this many stages.
constexpr uint64_t sorensen_list_bytes(uint64_t n, uint64_t stage_count) {
    return 8 * (n + 1 + sizeof(sorensen_stage_record) / 8 * stage_count);
}

// Builds the list for one cut of the length (apply_radices; the argument is not used). The radix that stands last is
// that of the first stage.
void sorensen_stage_fill_neon(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t argument);
void sorensen_stage_fill_sve(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t argument);
