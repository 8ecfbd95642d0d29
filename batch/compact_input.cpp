// SPDX-License-Identifier: Apache-2.0
// The last resort of a problem in place, which planner/solvers.h tells of.
#include "batch/split_arrays.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool is_split(const fft_plan& p) { return p.split == split_arrays; }
bool reads_complex(const fft_plan& p) { return p.kind == kind_c2c || p.kind == kind_c2r; }

bool is_transform(const fft_plan& p) { return p.kind <= kind_r2r && p.rank >= 1; }

// Split arrays may also have changed places.
bool is_in_place(const fft_plan& p) {
    if (p.in == p.out) return true;
    return is_split(p) && (p.in == p.out_imag || (p.in_imag && (p.in_imag == p.out || p.in_imag == p.out_imag)));
}

// The axes of the input as it is stored, from its own strides to those without gaps: the batch outside, the last
// dimension inside.
struct input_axes {
    fft_dim axis[2 * max_rank];
    int32_t count = 0;
    int64_t elements = 1;  // of each array

    explicit input_axes(const fft_plan& p) : count(p.howmany_rank + p.rank) {
        for (int d = p.rank - 1; d >= 0; --d) {
            const bool hermitian = p.kind == kind_c2r && d == p.rank - 1;
            set(p.howmany_rank + d, hermitian ? p.dims[d].n / 2 + 1 : p.dims[d].n, p.dims[d].is);
        }
        for (int b = p.howmany_rank - 1; b >= 0; --b) set(b, p.howmany[b].n, p.howmany[b].is);
    }

private:
    void set(int at, int64_t n, int64_t stride) {
        axis[at] = {n, stride, elements};
        elements *= n;
    }
};

bool has_two_arrays(const fft_plan& p) { return reads_complex(p) && is_split(p); }

void execute_compact_input(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const input_axes input(*plan);
    (reads_complex(*plan) ? copy_nd_cpx : copy_nd_fp)(in, scratch.data(), input.count, input.axis);
    plan->subplans[0]->execute(plan->subplans[0], scratch.data(), out);
}

void execute_split_compact_input(fft_plan* plan, float* in_re, float* in_im, float* out_re, float* out_im) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const input_axes input(*plan);
    float* const compact_im = has_two_arrays(*plan) ? scratch.data() + input.elements : nullptr;
    copy_nd_fp(in_re, scratch.data(), input.count, input.axis);
    if (compact_im) copy_nd_fp(in_im, compact_im, input.count, input.axis);
    plan->subplans[0]->execute_split(plan->subplans[0], scratch.data(), compact_im, out_re, out_im);
}

bool plan_from_compact(fft_plan* plan, const input_axes& input) {
    fft_plan* s = plan->subplans[0];
    s->in = static_cast<float*>(plan->buffer);
    s->in_imag = has_two_arrays(*plan) ? s->in + input.elements : nullptr;
    for (int b = 0; b < plan->howmany_rank; ++b) s->howmany[b].is = input.axis[b].os;
    for (int d = 0; d < plan->rank; ++d) s->dims[d].is = input.axis[plan->howmany_rank + d].os;
    return plan_subplans(plan->subplans, 1) == accepted;
}

}  // namespace

int solve_problem_compact_input(fft_plan* plan) {
    if (!is_transform(*plan) || !is_in_place(*plan)) return refused;
    const input_axes input(*plan);
    const uint64_t element_bytes = reads_complex(*plan) ? 2 * sizeof(float) : sizeof(float);
    if (!attach_buffer(plan, static_cast<uint64_t>(input.elements) * element_bytes) || !make_subplans(plan, 1) ||
        !plan_from_compact(plan, input))
        return refused;
    plan->solver_name = "solve_problem_compact_input";
    if (!is_split(*plan)) return install(plan, execute_compact_input, "execute_compact_input");
    plan->execute_split = execute_split_compact_input;
    return install(plan, execute_by_split, "execute_split_compact_input");
}
