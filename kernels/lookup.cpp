// SPDX-License-Identifier: Apache-2.0
// Look-ups of complex kernels: a table by the plan's form, a slot by the size, null where there is no kernel.
#include "kernels/lookup.h"

#include "dft/problem.h"
#include "dft/sizes.h"
#include "kernels/level.h"
#include "kernels/two_pairs.h"
#include "tables.h"  // generated

namespace {

template <class Kernel, uint64_t slots>
Kernel pick(const fft_plan* plan, uint64_t size, const Kernel (&forward)[slots], const Kernel (&backward)[slots]) {
    if (size - 1 >= slots) return nullptr;  // size 0 too
    return (plan->sign == -1 ? forward : backward)[size - 1];
}

template <uint64_t slots>
void pick_stage(stage_record* stage, const fft_plan* plan, const stage_kernel (&forward)[slots],
                const stage_kernel (&backward)[slots]) {
    stage->kernel = pick(plan, stage->radix, forward, backward);
}

// Four lanes in one register, or in two.
template <const auto& forward, const auto& backward, const auto& forward_pair, const auto& backward_pair>
void pick_quad_stage(stage_record* stage, const fft_plan* plan) {
    if constexpr (has_registers_of_four) {
        pick_stage(stage, plan, forward, backward);
    } else {
        pick_stage(stage, plan, forward_pair, backward_pair);
        set_stage_on_two_pairs(stage);
    }
}

// Neither the kind nor the length matters to the pair form.
bool pair_batch(const fft_plan* plan) {
    return plan->howmany_rank == 1 && plan->howmany[0].n == 2 && plan->howmany[0].is == 1 && plan->howmany[0].os == 1;
}

bool quad_batch(const fft_plan* plan) { return is_batch_of_lanes(*plan, 4); }

}  // namespace

direct_contig_kernel lookup_direct_neon(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, direct_contig_neon_fwd, direct_contig_neon_bwd);
}
direct_strided_kernel lookup_direct_discrete_neon(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, direct_strided_neon_fwd, direct_strided_neon_bwd);
}
direct_contig_kernel lookup_direct_sve(const fft_plan* plan, uint64_t size) {
    if constexpr (!has_registers_of_four) return lookup_direct_neon(plan, size);
    return pick(plan, size, direct_contig_sve_fwd, direct_contig_sve_bwd);
}
direct_contig_kernel lookup_direct_scalar(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, direct_scalar_fwd, direct_scalar_bwd);
}
many_kernel lookup_many_pair_neon(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, many_pair_neon_fwd, many_pair_neon_bwd);
}
many_kernel lookup_many_quad_sve(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, many_quad_sve_fwd, many_quad_sve_bwd);
}
many_assemble_kernel lookup_many_assemble_neon(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, many_assemble_neon_fwd, many_assemble_neon_bwd);
}
many_rows_kernel lookup_many_rows_neon(const fft_plan* plan, uint64_t size) {
    return pick(plan, size, many_rows_neon_fwd, many_rows_neon_bwd);
}

many_kernel lookup_straight_quad_sve(const fft_plan* plan, uint64_t size) {
    return size == 64 ? lookup_many_quad_sve(plan, size) : pick(plan, size, long_quad_sve_fwd, long_quad_sve_bwd);
}
many_rows_kernel lookup_straight_rows(const fft_plan* plan, uint64_t size) {
    if (size == 64) return lookup_many_rows_neon(plan, size);
    return pick(plan, size, long_rows_neon_fwd, long_rows_neon_bwd);
}

static void stage_lookup_first_plain_neon(stage_record* stage, const fft_plan* plan) {
    if (has_unit_strides(*plan)) return pick_stage(stage, plan, first_contig_neon_fwd, first_contig_neon_bwd);
    pick_stage(stage, plan, first_strided_neon_fwd, first_strided_neon_bwd);
}
void stage_lookup_first_neon(stage_record* stage, const fft_plan* plan) {
    if (pair_batch(plan)) return pick_stage(stage, plan, first_pair_neon_fwd, first_pair_neon_bwd);
    stage_lookup_first_plain_neon(stage, plan);
}
void stage_lookup_other_plain_neon(stage_record* stage, const fft_plan* plan) {
    pick_stage(stage, plan, other_plain_neon_fwd, other_plain_neon_bwd);
}
void stage_lookup_other_neon(stage_record* stage, const fft_plan* plan) {
    if (pair_batch(plan)) return pick_stage(stage, plan, other_pair_neon_fwd, other_pair_neon_bwd);
    stage_lookup_other_plain_neon(stage, plan);
}
void stage_lookup_last_plain_neon(stage_record* stage, const fft_plan* plan) {
    if (has_unit_strides(*plan)) return pick_stage(stage, plan, last_contig_neon_fwd, last_contig_neon_bwd);
    pick_stage(stage, plan, last_strided_neon_fwd, last_strided_neon_bwd);
}
void stage_lookup_last_neon(stage_record* stage, const fft_plan* plan) {
    if (pair_batch(plan)) return pick_stage(stage, plan, last_pair_neon_fwd, last_pair_neon_bwd);
    stage_lookup_last_plain_neon(stage, plan);
}

// The outer stages of an SVE plan with strides run NEON kernels, on purpose.
void stage_lookup_first_sve(stage_record* stage, const fft_plan* plan) {
    if (quad_batch(plan))
        return pick_quad_stage<first_quad_sve_fwd, first_quad_sve_bwd, first_pair_neon_fwd, first_pair_neon_bwd>(stage,
                                                                                                                 plan);
    if constexpr (has_registers_of_four)
        if (has_unit_strides(*plan)) return pick_stage(stage, plan, first_contig_sve_fwd, first_contig_sve_bwd);
    stage_lookup_first_plain_neon(stage, plan);
}
void stage_lookup_other_plain_sve(stage_record* stage, const fft_plan* plan) {
    if constexpr (!has_registers_of_four) return stage_lookup_other_plain_neon(stage, plan);
    pick_stage(stage, plan, other_plain_sve_fwd, other_plain_sve_bwd);
}
void stage_lookup_other_sve(stage_record* stage, const fft_plan* plan) {
    if (quad_batch(plan))
        return pick_quad_stage<other_quad_sve_fwd, other_quad_sve_bwd, other_pair_neon_fwd, other_pair_neon_bwd>(stage,
                                                                                                                 plan);
    stage_lookup_other_plain_sve(stage, plan);
}
void stage_lookup_last_plain_sve(stage_record* stage, const fft_plan* plan) {
    if constexpr (has_registers_of_four)
        if (has_unit_strides(*plan)) return pick_stage(stage, plan, last_contig_sve_fwd, last_contig_sve_bwd);
    stage_lookup_last_plain_neon(stage, plan);
}
void stage_lookup_last_sve(stage_record* stage, const fft_plan* plan) {
    if (quad_batch(plan))
        return pick_quad_stage<last_quad_sve_fwd, last_quad_sve_bwd, last_pair_neon_fwd, last_pair_neon_bwd>(stage,
                                                                                                             plan);
    stage_lookup_last_plain_sve(stage, plan);
}
