// SPDX-License-Identifier: Apache-2.0
// c2c_1d_rader_sve and c2c_1d_rader_neon: one complex transform whose length is a prime p above 37 times a smooth
// number, where p - 1 is smooth too. The stage of radix p is a cyclic convolution of length q = p - 1 (Rader, 1968).
// SVE leaves lengths with 47 and 59 to Bluestein, which is faster there, unless the clock is asked; NEON stands behind
// Bluestein and is reached only by measuring.
#include "dft/rader.h"
#include "dft/convolution.h"
#include "dft/modular.h"
#include "dft/pointwise.h"
#include "dft/roots.h"
#include "dft/table_transform.h"
#include "planner/solvers.h"

namespace {

// A complex number that is only moved; the caller's arrays need be aligned to a float alone.
typedef uint64_t packed_complex __attribute__((may_alias, aligned(4)));
constexpr packed_complex sign_of_imaginary_part = packed_complex{1} << 63;

struct rader_tables {
    float* kernel;       // q complex: the transformed sequence of roots, divided by q
    uint64_t* perm_in;   // q powers of the primitive root g
    uint64_t* perm_out;  // q powers of its inverse
    float* twiddles;
};

rader_tables tables_in(void* aux, uint64_t q) {
    float* kernel = solver_tables(aux);
    uint64_t* perm_in = reinterpret_cast<uint64_t*>(kernel + 2 * q);
    return {kernel, perm_in, perm_in + q, reinterpret_cast<float*>(perm_in + 2 * q)};
}

// The greedy cut leaves all primes above 37 in the first radix; a product of several isn't a case for Rader.
bool accepts_radix(uint64_t p) { return !has_large_prime_factor(p - 1) && is_prime(p); }

bool is_faster_by_bluestein(const fft_plan& p) {
    return !is_measured(p) && (p.dims[0].n % 47 == 0 || p.dims[0].n % 59 == 0);
}

bool fill_tables(fft_plan* plan, uint64_t stage_count, uint64_t q) {
    stage_count_of(plan->aux) = stage_count;
    const rader_tables t = tables_in(plan->aux, q);
    rader_tables_fill(t.kernel, q + 1, plan->sign, t.perm_in, t.perm_out);
    return transform_table(plan->subplans[0], t.kernel);
}

void fill(fft_plan* plan, const stage_isa& isa, uint64_t stage_count, const uint64_t* radices, uint64_t q) {
    const stage_list list = {counted_stages(plan->aux), tables_in(plan->aux, q).twiddles};
    fill_convolution_stages(plan, isa, list, stage_count, radices);
}

void fill_sve(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t q) {
    fill(plan, stages_sve, stage_count, radices, q);
}

void fill_neon(fft_plan* plan, uint64_t stage_count, const uint64_t* radices, uint64_t q) {
    fill(plan, stages_neon, stage_count, radices, q);
}

void gather(const packed_complex* in, const uint64_t* permutation, int64_t step, packed_complex* out, uint64_t count) {
    for (uint64_t i = 0; i < count; ++i) out[i] = in[static_cast<int64_t>(permutation[i]) * step];
}

void scatter_conj(const packed_complex* in, const uint64_t* permutation, int64_t step, packed_complex* out,
                  uint64_t count) {
    for (uint64_t i = 0; i < count; ++i)
        out[static_cast<int64_t>(permutation[i]) * step] = in[i] ^ sign_of_imaginary_part;
}

// One column: x0 takes no part in the convolution and is added to every output. In front of the second transform it is
// added to the sum of the convolution's input, which is the first element.
void rader_column(fft_plan* convolver, const rader_tables& t, uint64_t q, const float* in, int64_t in_step, float* out,
                  int64_t out_step, float* work) {
    const float re = in[0], im = in[1];
    packed_complex* packed_work = reinterpret_cast<packed_complex*>(work);
    gather(reinterpret_cast<const packed_complex*>(in), t.perm_in, in_step, packed_work, q);
    run_in_place(convolver, work);
    out[0] = work[0] + re;
    out[1] = work[1] + im;
    pointwise_multiply_conj(work, t.kernel, work, q, 1, 1, 1);
    work[0] += re;
    work[1] -= im;
    run_in_place(convolver, work);  // forward of the conjugate stands in for the inverse
    scatter_conj(packed_work, t.perm_out, out_step, reinterpret_cast<packed_complex*>(out), q);
}

void rader_stage(fft_plan* plan, const stage_record& stage, const float* in, float* out, float* work) {
    const uint64_t q = stage.radix - 1;
    const rader_tables t = tables_in(plan->aux, q);
    const int64_t columns = static_cast<int64_t>(stage.rest);
    for (int64_t l = 0; l < columns; ++l)
        rader_column(plan->subplans[0], t, q, in + 2 * l * stage.is, columns * stage.is, out + 2 * l * stage.os,
                     columns * stage.os, work);
}

int solve(fft_plan* plan, apply_radices fill_stages, const char* contiguous, const char* discrete) {
    radix_order order;
    if (!accepts_large_prime_factor(*plan) || !find_radix_order(plan, order) || !accepts_radix(order.radices[0]))
        return refused;
    const uint64_t p = order.radices[0], q = p - 1;
    if (!attach_convolution(plan, q, order.stage_count, p + 2 * q) || !fill_tables(plan, order.stage_count, q))
        return refused;
    if (has_unit_strides(*plan))
        install(plan, execute_convolution<rader_stage, true>, contiguous);
    else
        install(plan, execute_convolution<rader_stage, false>, discrete);
    build_stages(plan, order, fill_stages, q, 1);
    return accepted;
}

}  // namespace

void rader_tables_fill(float* kernel_table, uint64_t p, int64_t sign, uint64_t* perm_in, uint64_t* perm_out) {
    const uint64_t q = p - 1, g = smallest_primitive_root(p), h = pow_mod(g, p - 2, p);
    const float scale = 1.0f / static_cast<float>(q);
    const root_circle roots(p, 1, sign);
    uint64_t a = 1, b = 1;  // powers of h and of g
    for (uint64_t i = 0; i < q; ++i) {
        roots.take(a, kernel_table + 2 * i);
        kernel_table[2 * i] *= scale;
        kernel_table[2 * i + 1] *= scale;
        perm_out[i] = a;
        perm_in[i] = b;
        a = mul_mod(a, h, p);
        b = mul_mod(b, g, p);
    }
}

int solve_problem_c2c_1d_rader_sve(fft_plan* plan) {
    if (is_faster_by_bluestein(*plan)) return refused;
    return solve(plan, fill_sve, "execute_1d_rader_sve", "execute_1d_rader_discrete_sve");
}

int solve_problem_c2c_1d_rader_neon(fft_plan* plan) {
    return solve(plan, fill_neon, "execute_1d_rader_neon", "execute_1d_rader_discrete_neon");
}
