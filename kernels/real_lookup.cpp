// SPDX-License-Identifier: Apache-2.0
// Look-ups of kernels of real data. The short lists that solvers search are generated.
#include "kernels/level.h"
#include "kernels/real_kernels.h"
#include "record/fft_plan.h"
#include "tables.h"  // generated

namespace {

template <uint64_t slots>
real_kernel pick(uint64_t size, const real_kernel (&table)[slots]) {
    return size - 1 < slots ? table[size - 1] : nullptr;  // size 0 too
}

}  // namespace

real_kernel lookup_r2c_direct(const fft_plan*, uint64_t size) { return pick(size, r2c_direct_fwd); }
real_kernel lookup_c2r_direct(const fft_plan*, uint64_t size) { return pick(size, c2r_direct_bwd); }
real_kernel lookup_r2c_many(const fft_plan*, uint64_t size) { return pick(size, r2c_many_fwd); }
real_kernel lookup_c2r_many(const fft_plan*, uint64_t size) { return pick(size, c2r_many_bwd); }

namespace {

template <uint64_t slots>
void pick_stage(sorensen_stage_record* stage, const fft_plan* plan, const sorensen_kernel (&table)[slots]) {
    const bool found =
        plan->dims[0].is == 1 && plan->dims[0].os == 1 && plan->sign == sign_backward && stage->radix - 1 < slots;
    stage->kernel = found ? table[stage->radix - 1] : nullptr;
}

}  // namespace

void stage_lookup_sorensen_first_neon(sorensen_stage_record* stage, const fft_plan* plan) {
    pick_stage(stage, plan, sorensen_first_neon_bwd);
}
void stage_lookup_sorensen_other_neon(sorensen_stage_record* stage, const fft_plan* plan) {
    pick_stage(stage, plan, sorensen_other_neon_bwd);
}
void stage_lookup_sorensen_last_neon(sorensen_stage_record* stage, const fft_plan* plan) {
    pick_stage(stage, plan, sorensen_last_neon_bwd);
}
void stage_lookup_sorensen_first_sve(sorensen_stage_record* stage, const fft_plan* plan) {
    if constexpr (!has_registers_of_four) return stage_lookup_sorensen_first_neon(stage, plan);
    pick_stage(stage, plan, sorensen_first_sve_bwd);
}
void stage_lookup_sorensen_other_sve(sorensen_stage_record* stage, const fft_plan* plan) {
    if constexpr (!has_registers_of_four) return stage_lookup_sorensen_other_neon(stage, plan);
    pick_stage(stage, plan, sorensen_other_sve_bwd);
}
void stage_lookup_sorensen_last_sve(sorensen_stage_record* stage, const fft_plan* plan) {
    if constexpr (!has_registers_of_four) return stage_lookup_sorensen_last_neon(stage, plan);
    pick_stage(stage, plan, sorensen_last_sve_bwd);
}
