// SPDX-License-Identifier: Apache-2.0
// Look-ups of kernels of real data, and the short lists that solvers search.
#include "declarations.h"  // generated
#include "kernels/level.h"
#include "kernels/real_kernels.h"
#include "tables.h"  // generated

namespace {

constexpr uint64_t slots = 128;

real_kernel pick(uint64_t size, const real_kernel (&table)[slots]) {
    return size - 1 < slots ? table[size - 1] : nullptr;  // size 0 too
}

}  // namespace

real_kernel lookup_r2c_direct(const fft_plan*, uint64_t size) { return pick(size, r2c_direct_fwd); }
real_kernel lookup_c2r_direct(const fft_plan*, uint64_t size) { return pick(size, c2r_direct_bwd); }
real_kernel lookup_r2c_many(const fft_plan*, uint64_t size) { return pick(size, r2c_many_fwd); }
real_kernel lookup_c2r_many(const fft_plan*, uint64_t size) { return pick(size, c2r_many_bwd); }

// Half-complex and complex storage differ by their offsets only: small sizes are the kernels of r2c_many.
const real_kernel_row r2hc_quad[5] = {{2, r2c_many_fwd_n02},
                                      {4, r2c_many_fwd_n04},
                                      {8, r2c_many_fwd_n08},
                                      {16, r2c_many_fwd_n16},
                                      {32, r2hc_quad_fwd_n32}};
const real_kernel_row r2hc_loop[5] = {{2, r2hc_loop_fwd_n02},
                                      {4, r2hc_loop_fwd_n04},
                                      {8, r2hc_loop_fwd_n08},
                                      {16, r2hc_loop_fwd_n16},
                                      {32, r2hc_loop_fwd_n32}};
const real_kernel_row hc2r_loop[5] = {{2, hc2r_loop_bwd_n02},
                                      {4, hc2r_loop_bwd_n04},
                                      {8, hc2r_loop_bwd_n08},
                                      {16, hc2r_loop_bwd_n16},
                                      {32, hc2r_loop_bwd_n32}};
const redft00_kernel_row redft00_loop[4] = {
    {2, redft00_loop_fwd_n02}, {3, redft00_loop_fwd_n03}, {4, redft00_loop_fwd_n04}, {17, redft00_loop_fwd_n17}};

namespace {

constexpr uint64_t stage_slots = 64;

void pick_stage(sorensen_stage_record* stage, const fft_plan* plan, const sorensen_kernel (&table)[stage_slots]) {
    const bool found =
        plan->dims[0].is == 1 && plan->dims[0].os == 1 && plan->sign == sign_backward && stage->radix - 1 < stage_slots;
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
