// SPDX-License-Identifier: Apache-2.0
// r2hc_many_direct, r2hc_direct, hc2r_direct, dht_direct and redft00_direct: half-complex, Hartley and type I cosine
// transforms whose length has a kernel of its own, one or a batch of any layout: one call does all rows, one row at a
// time or (r2hc_many_direct) four at a time, one a lane. The Hartley transform folds the pairs of a half-complex
// result, and takes contiguous input only.
#include "planner/solvers.h"
#include "real/alone.h"
#include "real/direct_tables.h"
#include "real/mirror.h"
#include "record/in_place.h"

namespace {

// A batch that isn't there is a batch of one.
int64_t row_count(const fft_plan& p) { return p.howmany_rank == 0 ? 1 : p.howmany[0].n; }

bool accepts(const fft_plan& p, uint32_t r2r_kind) {
    return p.kind == kind_r2r && p.r2r_kind[0] == r2r_kind && p.rank == 1 && p.howmany_rank < 2 &&
           may_run_in_pieces(p);  // rows written before later ones are read would spoil them
}

bool accepts_groups_of_four(const fft_plan& p) {
    return accepts(p, r2r_r2hc) && row_count(p) > 3 && row_count(p) % 4 == 0;
}

bool accepts_hartley(const fft_plan& p) { return accepts(p, r2r_dht) && p.dims[0].is == 1; }

void execute_r2hc(fft_plan* plan, float* in, float* out) {
    auto& aux = *static_cast<hc_direct_aux*>(plan->aux);
    const fft_dim rows = plan->howmany[0];
    aux.kernel(in, in + plan->dims[0].is, out, out + static_cast<int64_t>(aux.n_stride), aux.offsets(0), aux.offsets(1),
               aux.offsets(2), rows.n, rows.is, rows.os);
}

void execute_hc2r(fft_plan* plan, float* in, float* out) {
    auto& aux = *static_cast<hc_direct_aux*>(plan->aux);
    const fft_dim rows = plan->howmany[0];
    aux.kernel(out, out + plan->dims[0].os, in, in + static_cast<int64_t>(aux.n_stride), aux.offsets(0), aux.offsets(1),
               aux.offsets(2), rows.n, rows.is, rows.os);
}

// (Re, Im) of coefficient k, or of eight, becomes (Re - Im, Re + Im).
struct folded {
    complex4 low, high;
};

folded folded8(const float* h, int64_t n, int64_t k) {
    const complex4 re = load4(h + k), im = load8_down(h + n - k);
    return {sub(re, im), add(re, im)};
}

void store_folded8(float* h, int64_t n, int64_t k, const folded& f) {
    store4(h + k, f.low);
    store8_down(h + n - k, f.high);
}

// The last eight may begin inside the eight before: they are read before anything is written.
void fold_half_complex(float* h, int64_t n, int64_t stride) {
    const int64_t last = (n >> 1) - 1, final = last - 7;
    if (stride == 1 && final >= 1) {
        const folded held = folded8(h, n, final);
        for (int64_t k = 1; k < final; k += 8) store_folded8(h, n, k, folded8(h, n, k));
        return store_folded8(h, n, final, held);
    }
    for (int64_t k = 1; k <= last; ++k) {
        const float re = h[k * stride], im = h[(n - k) * stride];
        h[k * stride] = re - im;
        h[(n - k) * stride] = re + im;
    }
}

void execute_dht_direct(fft_plan* plan, float* in, float* out) {
    execute_r2hc(plan, in, out);
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    for (int64_t i = 0; i < rows.n; ++i) fold_half_complex(out + i * rows.os, dim.n, dim.os);
}

void execute_redft00_direct(fft_plan* plan, float* in, float* out) {
    auto& aux = *static_cast<redft00_direct_aux*>(plan->aux);
    const fft_dim rows = plan->howmany[0];
    aux.kernel(in, out, aux.offsets(0), aux.offsets(1), rows.n, rows.is, rows.os);
}

int keep_count_and_install(fft_plan* plan, execute_function execute, const char* name) {
    plan->howmany[0].n = row_count(*plan);
    return install(plan, execute, name);
}

}  // namespace

int solve_problem_r2hc_many_direct(fft_plan* plan) {
    if (!accepts_groups_of_four(*plan)) return refused;
    const fft_dim dim = plan->dims[0];
    const real_kernel kernel = kernel_of_size(r2hc_quad, dim.n);
    if (!kernel || !attach_hc_direct_aux(plan, kernel, dim.is, dim.os)) return refused;
    return install(plan, execute_r2hc, "execute_r2hc_many_direct");
}

int solve_problem_r2hc_direct(fft_plan* plan) {
    if (!accepts(*plan, r2r_r2hc)) return refused;
    const fft_dim dim = plan->dims[0];
    const real_kernel kernel = kernel_of_size(r2hc_loop, dim.n);
    if (!kernel || !attach_hc_direct_aux(plan, kernel, dim.is, dim.os)) return refused;
    const int64_t count = row_count(*plan);
    keep_count_and_install(plan, execute_r2hc, "execute_r2hc_direct");
    return run_short_alone<r2hc_alone_fwd>(plan, count);
}

int solve_problem_hc2r_direct(fft_plan* plan) {
    if (!accepts(*plan, r2r_hc2r)) return refused;
    const fft_dim dim = plan->dims[0];
    const real_kernel kernel = kernel_of_size(hc2r_loop, dim.n);
    if (!kernel || !attach_hc_direct_aux(plan, kernel, dim.os, dim.is)) return refused;
    const int64_t count = row_count(*plan);
    keep_count_and_install(plan, execute_hc2r, "execute_hc2r_direct");
    return run_short_alone<hc2r_alone_bwd>(plan, count);
}

int solve_problem_dht_direct(fft_plan* plan) {
    if (!accepts_hartley(*plan)) return refused;
    const fft_dim dim = plan->dims[0];
    const real_kernel kernel = kernel_of_size(r2hc_loop, dim.n);
    if (!kernel || !attach_hc_direct_aux(plan, kernel, dim.is, dim.os)) return refused;
    const int64_t count = row_count(*plan);
    keep_count_and_install(plan, execute_dht_direct, "execute_dht_direct");
    return run_short_alone<dht_alone_fwd>(plan, count);
}

int solve_problem_redft00_direct(fft_plan* plan) {
    if (!accepts(*plan, r2r_redft00)) return refused;
    const redft00_kernel kernel = kernel_of_size(redft00_loop, plan->dims[0].n);
    if (!kernel || !attach_redft00_direct_aux(plan, kernel)) return refused;
    return keep_count_and_install(plan, execute_redft00_direct, "execute_redft00_direct");
}
