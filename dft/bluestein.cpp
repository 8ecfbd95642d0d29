// SPDX-License-Identifier: Apache-2.0
// c2c_1d_bluestein_sve: one complex transform of any length with a prime factor above 37 that c2c_1d_rader_sve
// declined. The stage of that radix p, prime or not, is a linear convolution with a chirp, padded to a size M that is
// quick to transform (Bluestein, 1970).
#include "dft/bluestein.h"

#include "dft/convolution.h"
#include "dft/pointwise.h"
#include "dft/roots.h"
#include "dft/table_transform.h"
#include "planner/solvers.h"

#include <cstring>

namespace {

struct bluestein_tables {
    float* chirp;   // p complex
    float* kernel;  // M complex: the transformed conjugate chirp, divided by M
    float* twiddles;
};

bluestein_tables tables_in(void* aux, uint64_t p, uint64_t M) {
    float* chirp = solver_tables(aux);
    return {chirp, chirp + 2 * p, chirp + 2 * (p + M)};
}

bool fill_tables(fft_plan* plan, uint64_t stage_count, uint64_t p, uint64_t M) {
    stage_count_of(plan->aux) = stage_count;
    const bluestein_tables t = tables_in(plan->aux, p, M);
    bluestein_tables_fill(t.chirp, t.kernel, M, p, plan->sign);
    return transform_table(plan->subplans[0], t.kernel);
}

void fill(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t M) {
    const stage_list list = {counted_stages(plan->aux), tables_in(plan->aux, radices[0], M).twiddles};
    fill_convolution_stages(plan, stages_sve, list, stage_count, radices);
}

// One column. A forward transform between two exchanges of real and imaginary parts is a backward transform.
void bluestein_column(fft_plan* convolver, const bluestein_tables& t, uint64_t p, uint64_t M, const float* in,
                      int64_t in_step, float* out, int64_t out_step, float* work) {
    pointwise_multiply(in, t.chirp, work, p, in_step, 1, 1);
    memset(work + 2 * p, 0, 8 * (M - p));
    run_in_place(convolver, work);
    pointwise_multiply_swap(work, t.kernel, work, M, 1, 1, 1);
    run_in_place(convolver, work);
    pointwise_swap_multiply(work, t.chirp, out, p, 1, 1, out_step);
}

void bluestein_stage(fft_plan* plan, const stage_record& stage, const float* in, float* out, float* work) {
    fft_plan* convolver = plan->subplans[0];
    const uint64_t M = convolver->dims[0].n;
    const bluestein_tables t = tables_in(plan->aux, stage.radix, M);
    const int64_t columns = static_cast<int64_t>(stage.rest);
    for (int64_t l = 0; l < columns; ++l)
        bluestein_column(convolver, t, stage.radix, M, in + 2 * l * stage.is, columns * stage.is,
                         out + 2 * l * stage.os, columns * stage.os, work);
}

}  // namespace

void bluestein_tables_fill(float* chirp, float* kernel, uint64_t M, uint64_t p, int64_t sign) {
    const float scale = 1.0f / static_cast<float>(M);
    memset(kernel, 0, 8 * M);
    const root_circle roots(2 * p, 1, sign);
    uint64_t square = 0;  // k^2 modulo 2p, from one k to the next by 2k + 1
    for (uint64_t k = 0; k < p; ++k) {
        float* c = chirp + 2 * k;
        roots.take(square, c);
        float* mirrored = kernel + 2 * (k == 0 ? 0 : M - k);
        kernel[2 * k] = mirrored[0] = c[0] * scale;
        kernel[2 * k + 1] = mirrored[1] = -c[1] * scale;
        square = (square + 2 * k + 1) % (2 * p);
    }
}

int solve_problem_c2c_1d_bluestein_sve(fft_plan* plan) {
    radix_order order;
    if (!accepts_large_prime_factor(*plan) || !find_radix_order(plan, order)) return refused;
    const uint64_t p = order.radices[0], M = bluestein_padded_size(p);
    if (!attach_convolution(plan, M, order.stage_count, p + 1 + M) || !fill_tables(plan, order.stage_count, p, M))
        return refused;
    if (has_unit_strides(*plan))
        install(plan, execute_convolution<bluestein_stage, true>, "execute_1d_bluestein_sve");
    else
        install(plan, execute_convolution<bluestein_stage, false>, "execute_1d_bluestein_discrete_sve");
    build_stages(plan, order, fill, M, 1);
    return accepted;
}
