// SPDX-License-Identifier: Apache-2.0
// The chain of stages of a multi-stage transform: how it stands in `aux`, how it is built, how it runs. The
// convolution solvers build and run the stages behind their first one with the same functions.
#pragma once
#include "dft/sizes.h"
#include "kernels/kernel_types.h"
#include "planner/measured.h"

#include <bit>
#include <span>

// What differs between the NEON chain and the SVE chain.
struct stage_isa {
    using lookup = void (*)(stage_record* stage, const fft_plan* plan);
    int64_t lanes;  // transforms of the batched form, one vector wide
    lookup first, other, last;
    lookup other_plain, last_plain;  // without batched form, for the convolution solvers
    void (*fill_last)(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
    bool copies_switches;
    bool passes_blocks;  // to a last stage: see word_of_blocks
};
extern const stage_isa stages_neon;
extern const stage_isa stages_sve;

constexpr uint64_t stage_record_words = sizeof(stage_record) / 8;

// A list of two stages starts with its records. Any other list starts with a word that counts the stages, and so does
// every list of a convolution solver.
inline uint64_t& stage_count_of(void* aux) { return *static_cast<uint64_t*>(aux); }
inline stage_record* counted_stages(void* aux) { return reinterpret_cast<stage_record*>(&stage_count_of(aux) + 1); }
inline stage_record* two_stages(void* aux) { return static_cast<stage_record*>(aux); }

// The stages of a plan of c2c_1d_sve or c2c_1d_neon, in order. A plan of any other solver has none.
std::span<stage_record> stages_of(const fft_plan& plan);

// Kernels that run whole transforms of a list's length, each null where there is none or it costs more than the stages.
// They stand in spare words of the first record: execution looks nothing up.
struct straight_kernels {
    many_kernel quad;       // four transforms side by side
    many_rows_kernel rows;  // any number of contiguous ones
};
inline straight_kernels straight_kernels_of(const stage_record& first) {
    return {std::bit_cast<many_kernel>(first.spare[0]), std::bit_cast<many_rows_kernel>(first.spare[1])};
}
inline void keep_straight_kernels(stage_record& first, const straight_kernels& kernels) {
    first.spare[0] = std::bit_cast<uint64_t>(kernels.quad);
    first.spare[1] = std::bit_cast<uint64_t>(kernels.rows);
}

// The records, and the tables of stages 1 and up that stand behind them in stage order. Multi-stage plans align the
// tables to 64 bytes.
struct stage_list {
    stage_record* stages;
    float* tables;
};
stage_list multi_stage_list(void* aux, uint64_t stage_count);

// A cut of the transform's length, in order of execution.
struct radix_order {
    uint64_t stage_count = 0;
    uint64_t radices[radix_list_words] = {};
};

// False when the length has no stages.
bool find_radix_order(const fft_plan* plan, radix_order& order);

// Build the stage list of a multi-stage plan for one order of radices (apply_radices; the argument is not used).
void stage_fill_neon(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t argument);
void stage_fill_sve(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t argument);

// Calls `fill` for this order or, in a measured plan, for the fastest order that leaves the radices in front of
// position `first_free` in place.
void build_stages(fft_plan* plan, const radix_order& order, apply_radices fill, uint64_t argument, uint64_t first_free);

// Writes records and tables of a chain whose first stage is carried out by the solver: that record has no kernel.
void fill_convolution_stages(const fft_plan* plan, const stage_isa& isa, const stage_list& list, uint64_t stage_count,
                             const uint64_t* radices);

// The arrays between which a chain alternates, so that the last stage ends in the output.
struct stage_targets {
    float* even;  // written by stages with an even number of stages behind them
    float* odd;
    float* behind(uint64_t stages_left) const { return stages_left % 2 ? odd : even; }
};

// Runs `count` stages from `in`. The last writes `out` whatever the targets are.
inline void run_stages(const stage_record* stage, uint64_t count, const float* in, const stage_targets& targets,
                       float* out) {
    while (count-- > 0) {
        float* to = count == 0 ? out : targets.behind(count);
        stage->kernel(stage, in, to);
        in = to;
        ++stage;
    }
}
