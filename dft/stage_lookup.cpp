// SPDX-License-Identifier: Apache-2.0
#include "dft/stage_lookup.h"

#include "dft/sizes.h"
#include "kernels/level.h"
#include "kernels/two_pairs.h"
#include "record/problem.h"
#include "tables.h"  // generated

namespace {

// Slot r - 1 holds the kernel of radix r.
struct stage_family {
    const stage_kernel* forward;
    const stage_kernel* backward;
    uint64_t slots;
};

#define FAMILY(name) \
    stage_family { name##_fwd, name##_bwd, sizeof name##_fwd / sizeof *name##_fwd }

// The families that serve one place in the chain.
struct place {
    stage_family contiguous, strided;  // one transform, by its strides
    stage_family lanes;                // a batch that fills the lanes of a vector
};

constexpr place first_neon = {FAMILY(first_contig_neon), FAMILY(first_strided_neon), FAMILY(first_pair_neon)};
constexpr place other_neon = {FAMILY(other_plain_neon), FAMILY(other_plain_neon), FAMILY(other_pair_neon)};
constexpr place last_neon = {FAMILY(last_contig_neon), FAMILY(last_strided_neon), FAMILY(last_pair_neon)};

// The outer stages of an SVE plan with strides run NEON kernels, on purpose.
constexpr place with_registers_of_four(const place& sve, const place& neon) {
    return has_registers_of_four ? sve : neon;
}
constexpr place first_sve =
    with_registers_of_four({FAMILY(first_contig_sve), FAMILY(first_strided_neon), FAMILY(first_quad_sve)}, first_neon);
constexpr place other_sve =
    with_registers_of_four({FAMILY(other_plain_sve), FAMILY(other_plain_sve), FAMILY(other_quad_sve)}, other_neon);
constexpr place last_sve =
    with_registers_of_four({FAMILY(last_contig_sve), FAMILY(last_strided_neon), FAMILY(last_quad_sve)}, last_neon);

#undef FAMILY

void pick(stage_record* stage, const fft_plan* plan, const stage_family& family) {
    const stage_kernel* const kernels = plan->sign == sign_forward ? family.forward : family.backward;
    stage->kernel = stage->radix - 1 < family.slots ? kernels[stage->radix - 1] : nullptr;  // null for radix 0 too
}

void pick_plain(stage_record* stage, const fft_plan* plan, const place& place) {
    pick(stage, plan, has_unit_strides(*plan) ? place.contiguous : place.strided);
}

// Neither the kind nor the length matters to the pair form.
bool is_pair_batch(const fft_plan& p) {
    return p.howmany_rank == 1 && p.howmany[0].n == 2 && p.howmany[0].is == 1 && p.howmany[0].os == 1;
}

void pick_neon(stage_record* stage, const fft_plan* plan, const place& place) {
    if (!is_pair_batch(*plan)) return pick_plain(stage, plan, place);
    pick(stage, plan, place.lanes);
}

// Four lanes in one register, or in two.
void pick_sve(stage_record* stage, const fft_plan* plan, const place& place) {
    if (!is_batch_of_lanes(*plan, 4)) return pick_plain(stage, plan, place);
    pick(stage, plan, place.lanes);
    if constexpr (!has_registers_of_four) set_stage_on_two_pairs(stage);
}

}  // namespace

void stage_lookup_first_neon(stage_record* stage, const fft_plan* plan) { pick_neon(stage, plan, first_neon); }
void stage_lookup_other_neon(stage_record* stage, const fft_plan* plan) { pick_neon(stage, plan, other_neon); }
void stage_lookup_last_neon(stage_record* stage, const fft_plan* plan) { pick_neon(stage, plan, last_neon); }
void stage_lookup_other_plain_neon(stage_record* stage, const fft_plan* plan) { pick_plain(stage, plan, other_neon); }
void stage_lookup_last_plain_neon(stage_record* stage, const fft_plan* plan) { pick_plain(stage, plan, last_neon); }
void stage_lookup_first_sve(stage_record* stage, const fft_plan* plan) { pick_sve(stage, plan, first_sve); }
void stage_lookup_other_sve(stage_record* stage, const fft_plan* plan) { pick_sve(stage, plan, other_sve); }
void stage_lookup_last_sve(stage_record* stage, const fft_plan* plan) { pick_sve(stage, plan, last_sve); }
void stage_lookup_other_plain_sve(stage_record* stage, const fft_plan* plan) { pick_plain(stage, plan, other_sve); }
void stage_lookup_last_plain_sve(stage_record* stage, const fft_plan* plan) { pick_plain(stage, plan, last_sve); }
