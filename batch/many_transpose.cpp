// SPDX-License-Identifier: Apache-2.0
// dft_many_transpose and dft_many_transpose_rotate: long transforms stored by columns. A block of columns is packed
// into groups of four with interleaved elements, each group is transformed at once, and the block is unpacked to the
// output. The first takes complex batches whose columns reach over so much memory that strided stages would suffer. The
// second takes the column pass of a large transform, which lends it the twiddles that it multiplies by while unpacking;
// without them it refuses.
#include "dft/sizes.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

#include <algorithm>

namespace {

constexpr int64_t complex_bytes = 8;

bool is_batch_of_columns(const fft_plan& p) {
    return p.rank == 1 && p.split != split_arrays && p.howmany[0].is == 1 && p.howmany[0].os == 1 &&
           may_run_in_pieces(p);
}

// Two tuned spans; else only far strides: a span of 97867094 bytes, or 2 MiB by a power of two, where columns collide
// in the caches. Short columns never.
bool reaches_far(const fft_plan& p) {
    const int64_t stride = p.dims[0].is, elements = p.dims[0].n * stride, bytes = elements * complex_bytes;
    if (bytes == 24219648 || bytes == 57212928) return true;
    if (bytes < 97867094 && !(elements >= 262144 && is_power_of_two(stride))) return false;
    return p.dims[0].n >= 2049;
}

bool accepts_columns(const fft_plan& p) {
    return p.kind == kind_c2c && p.howmany_rank == 1 && p.howmany[0].n >= 5 && is_batch_of_columns(p) &&
           !has_large_prime_factor(p.dims[0].n) && (is_measured(p) || reaches_far(p));
}

bool accepts_piece(const fft_plan& p) {
    return p.kind == kind_c2c_large_piece && p.howmany_rank <= 1 && is_batch_of_columns(p) && p.aux;
}

int64_t column_count(const fft_plan& p) { return p.howmany_rank == 0 ? 1 : p.howmany[0].n; }

// Both subplans run in place on the scratch: four interleaved transforms, and one of those behind the last group.
int plan_on_scratch(fft_plan* plan) {
    const int64_t n = plan->dims[0].n, count = column_count(*plan), kinds = count % 4 == 0 ? 1 : 2;
    // Measuring the first subplan takes room for four, even where there are fewer columns.
    if (!attach_buffer(plan, std::max<int64_t>(count, 4) * n * complex_bytes)) return refused;
    if (!make_subplans(plan, static_cast<int>(kinds))) return refused;
    for (int64_t i = 0; i < kinds; ++i) {
        fft_plan* s = plan->subplans[i];
        const bool four = i == 0;
        s->kind = kind_c2c;
        s->in = s->out = static_cast<float*>(plan->buffer);
        s->dims[0] = four ? fft_dim{n, 4, 4} : fft_dim{n, 1, 1};
        s->howmany_rank = four ? 1 : 0;
        s->howmany[0] = four ? fft_dim{4, 1, 1} : fft_dim{};
    }
    return plan_subplans(plan->subplans, static_cast<int>(kinds));
}

// `count` columns, multiplied by `twiddles` where there are any.
void transform_block(fft_plan* plan, const float* in, float* out, int64_t count, float* scratch,
                     const float* twiddles) {
    const int64_t n = plan->dims[0].n, grouped = count & ~int64_t{3};
    pack_lanes4(in, scratch, n, count, n, plan->dims[0].is);
    for (int64_t i = 0; i < count; i += i < grouped ? 4 : 1) {
        fft_plan* s = plan->subplans[i < grouped ? 0 : 1];
        s->execute(s, scratch + 2 * n * i, scratch + 2 * n * i);
    }
    if (twiddles)
        unpack_lanes4_twiddle(scratch, twiddles, out, n, count, n, plan->dims[0].os);
    else
        unpack_lanes4(scratch, out, n, count, n, plan->dims[0].os);
}

// Every block is worked on at the start of the scratch, where the last one has left it in the caches.
void transform_by_blocks(fft_plan* plan, float* in, float* out, int64_t block, const float* twiddles) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const int64_t count = column_count(*plan);
    for (int64_t p = 0; p < count; p += block)
        transform_block(plan, in + 2 * p, out + 2 * p, std::min(block, count - p), scratch.data(),
                        twiddles ? twiddles + 2 * p * plan->dims[0].n : nullptr);
}

void execute_many_transpose(fft_plan* plan, float* in, float* out) { transform_by_blocks(plan, in, out, 64, nullptr); }

void execute_many_transpose_rotate(fft_plan* plan, float* in, float* out) {
    transform_by_blocks(plan, in, out, 16, static_cast<const float*>(plan->aux));
}

}  // namespace

int solve_problem_dft_many_transpose(fft_plan* plan) {
    if (!accepts_columns(*plan) || plan_on_scratch(plan) != accepted) return refused;
    return install(plan, execute_many_transpose, "execute_many_transpose");
}

int solve_problem_dft_many_transpose_rotate(fft_plan* plan) {
    if (!accepts_piece(*plan) || plan_on_scratch(plan) != accepted) return refused;
    return install(plan, execute_many_transpose_rotate, "execute_many_transpose_rotate");
}
