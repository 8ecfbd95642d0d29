// SPDX-License-Identifier: Apache-2.0
// upsampling_2d: a real image of n0 by n1 samples interpolated to m0 by m1 by the Fourier method, with a sub-sample
// shift. The spectrum F of the source (n0 rows of c = n1 / 2 + 1) is scaled, turned by the shift, laid into the zeroed
// spectrum P of the target (m0 rows of r = m1 / 2 + 1) and transformed back; of P only the c columns that aren't zero.
// P is cleared by its allocation alone: a second execution on the plan's own buffer finds what the first left there.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numbers>

#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

struct image_sizes {
    int64_t n0, n1, m0, m1, c, r;
};

image_sizes sizes_of(const fft_plan& p) {
    const int64_t n1 = p.dims[1].n, m1 = p.howmany[1].n;
    return {p.dims[0].n, n1, p.howmany[0].n, m1, n1 / 2 + 1, m1 / 2 + 1};
}

bool accepts(const fft_plan& p) { return p.kind == kind_upsampling_2d && p.rank == 2 && p.howmany_rank == 2; }

enum upsampling_subplan { source_spectrum = 0, target_columns = 1, target_rows = 2 };

bool make_upsampling_subplans(fft_plan* plan) {
    const image_sizes s = sizes_of(*plan);
    if (!make_subplans(plan, 3)) return false;
    float *const f = static_cast<float*>(plan->buffer), *const p = f + 2 * s.n0 * s.c;

    fft_plan* const source = plan->subplans[source_spectrum];
    source->kind = kind_r2c;
    source->sign = sign_forward;
    source->dims[0] = {s.n0, s.n1, s.c};
    source->dims[1] = {s.n1, 1, 1};
    source->howmany_rank = 0;
    source->out = f;

    fft_plan* const columns = plan->subplans[target_columns];
    columns->kind = kind_c2c;
    columns->sign = sign_backward;
    columns->rank = 1;
    columns->dims[0] = {s.m0, s.r, s.r};
    columns->howmany_rank = 1;
    columns->howmany[0] = {s.c, 1, 1};
    columns->in = columns->out = p;

    fft_plan* const rows = plan->subplans[target_rows];
    rows->kind = s.m1 == 2 * s.n1 ? kind_c2r_upsampling : kind_c2r;
    rows->sign = sign_backward;
    rows->rank = 1;
    rows->dims[0] = {s.m1, 1, 1};
    rows->howmany_rank = 1;
    rows->howmany[0] = {s.m0, s.r, s.m1};
    rows->in = p;
    return true;
}

void run(fft_plan* plan, upsampling_subplan which, float* in, float* out) {
    plan->subplans[which]->execute(plan->subplans[which], in, out);
}

// Running sums of one step from 0, for `n` frequencies.
void rising_angles(float* angle, int64_t n, float step) {
    angle[0] = 0;
    for (int64_t i = 1; i < n; ++i) angle[i] = angle[i - 1] + step;
}

// And from the other end, for the negative frequencies: only above the middle.
void falling_angles(float* angle, int64_t n, float step) {
    float sum = 0;
    for (int64_t i = n - 1; i > n / 2; --i) angle[i] = sum -= step;
}

void phases_of(const float* angle, float* phase, int64_t n) {
    for (int64_t i = 0; i < n; ++i) {
        phase[2 * i] = static_cast<float>(cos(static_cast<double>(angle[i])));
        phase[2 * i + 1] = static_cast<float>(sin(static_cast<double>(angle[i])));
    }
}

float angle_step(int64_t size, float shift) {
    return static_cast<float>(2 * std::numbers::pi / static_cast<double>(size)) * shift;
}

// F[i][j] = scale F[i][j] times (px[i] py[j]). Without memory for the phases F stays as it is.
void scale_and_shift(const fft_plan& plan, const image_sizes& s, float* f) {
    float* const work = static_cast<float*>(malloc((s.n0 + s.c) * 12));
    if (!work) return;
    float *const ax = work, *const ay = ax + s.n0, *const px = ay + s.c, *const py = px + 2 * s.n0;
    const float scale = 1.0f / static_cast<float>(static_cast<int32_t>(static_cast<uint32_t>(s.m0 * s.m1)));
    const float dx = angle_step(s.m0, plan.upsample_shift_x);
    rising_angles(ax, std::min(s.n0, s.n0 / 2 + 1), dx);
    falling_angles(ax, s.n0, dx);
    rising_angles(ay, s.c, angle_step(s.m1, plan.upsample_shift_y));
    phases_of(ax, px, s.n0);
    phases_of(ay, py, s.c);
    for (int64_t i = 0; i < s.n0; ++i)
        for (int64_t j = 0; j < s.c; ++j) {
            const float *x = px + 2 * i, *y = py + 2 * j;
            const float re = x[0] * y[0] - x[1] * y[1], im = x[0] * y[1] + x[1] * y[0];
            float* const z = f + 2 * (i * s.c + j);
            const float z_re = scale * z[0], z_im = scale * z[1];
            z[0] = z_re * re - z_im * im;
            z[1] = z_re * im + z_im * re;
        }
    free(work);
}

// The source's rows to the top and the bottom of the target spectrum.
void pad_rows(const image_sizes& s, const float* f, float* p) {
    const int64_t low = s.n0 / 2 + 1;
    for (int64_t i = 0; i < s.n0; ++i) {
        const int64_t target = i < low ? i : s.m0 - s.n0 + i;
        memcpy(p + 2 * target * s.r, f + 2 * i * s.c, 8 * s.c);
    }
}

// The coefficient in the middle of an even source stands for two of the target, its mirror images: half for each.
void share_middle_column(const image_sizes& s, float* p) {
    for (int64_t i = 0; i < s.m0; ++i) {
        p[2 * (i * s.r + s.n1 / 2)] *= 0.5f;
        p[2 * (i * s.r + s.n1 / 2) + 1] *= 0.5f;
    }
}

void share_middle_row(const image_sizes& s, float* p) {
    float *const middle = p + 2 * (s.n0 / 2) * s.r, *const mirror = p + 2 * (s.m0 - s.n0 / 2) * s.r;
    for (int64_t j = 0; j < 2 * s.r; ++j) mirror[j] = middle[j] *= 0.5f;
}

void execute_upsampling_2d(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const image_sizes s = sizes_of(*plan);
    float *const f = scratch.data(), *const p = f + 2 * s.n0 * s.c;
    run(plan, source_spectrum, in, f);
    scale_and_shift(*plan, s, f);
    pad_rows(s, f, p);
    if (s.n1 < s.m1 && s.n1 % 2 == 0) share_middle_column(s, p);
    if (s.n0 < s.m0 && s.n0 % 2 == 0) share_middle_row(s, p);
    run(plan, target_columns, p, p);
    run(plan, target_rows, p, out);
}

}  // namespace

int solve_problem_upsampling_2d(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const image_sizes s = sizes_of(*plan);
    const int64_t elements = s.n0 * s.c + s.m0 * s.r;  // below 2^62, since the sizes came in 32 bits
    if (elements > INT64_MAX / 8 || !attach_buffer(plan, 8 * elements)) return refused;
    if (!make_upsampling_subplans(plan) || plan_subplans(plan->subplans, 3) != accepted) return refused;
    return install(plan, execute_upsampling_2d, "execute_upsampling_2d");
}
