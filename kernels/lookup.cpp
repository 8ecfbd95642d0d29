// SPDX-License-Identifier: Apache-2.0
#include "kernels/lookup.h"

#include "kernels/level.h"
#include "record/fft_plan.h"
#include "tables.h"  // generated

namespace {

template <class Kernel, uint64_t slots>
Kernel pick(const fft_plan* plan, uint64_t size, const Kernel (&forward)[slots], const Kernel (&backward)[slots]) {
    if (size - 1 >= slots) return nullptr;  // size 0 too
    return (plan->sign == -1 ? forward : backward)[size - 1];
}

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
    return size == 64 ? lookup_many_quad_sve(plan, size)
                      : pick(plan, size, straight_quad_sve_fwd, straight_quad_sve_bwd);
}
many_rows_kernel lookup_straight_rows_neon(const fft_plan* plan, uint64_t size) {
    if (size == 64) return lookup_many_rows_neon(plan, size);
    return pick(plan, size, straight_rows_neon_fwd, straight_rows_neon_bwd);
}
