// SPDX-License-Identifier: Apache-2.0
// c2r_multidimension: complex-to-real of two or more dimensions without a batch. The slowest dimension runs first,
// complex, as a batch over everything else, into an intermediate; then the rest runs as a batch of complex-to-real
// problems (rows). The intermediate stands in the array itself where input and padded output are the same complex
// elements. Elsewhere the padding may hold anything, such as other outputs of a batch, and the intermediate has the
// plan's buffer.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/subplans.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_c2r && p.howmany_rank == 0 && p.rank >= 2;
}

int64_t half_spectrum(int64_t n) { return (n >> 1) + 1; }

// In place, with padded rows, every complex input element lying on the floats where it is an intermediate.
bool array_holds_intermediate(const fft_plan& p) {
    const int last = p.rank - 1;
    bool same_elements = p.in == p.out && p.dims[last].is == 1 && p.dims[last].os == 1;
    for (int k = 0; k < last; ++k) same_elements = same_elements && p.dims[k].os == 2 * p.dims[k].is;
    return same_elements && p.dims[last - 1].os == (p.dims[last].n | 1) + 1;
}

// Strides of the intermediate, in complex elements: those of the input in the array, or a compact row-major block.
struct intermediate_strides {
    int64_t of[max_rank];
};

intermediate_strides strides_in_array(const fft_plan& p) {
    intermediate_strides strides;
    for (int k = 0; k < p.rank; ++k) strides.of[k] = p.dims[k].is;
    return strides;
}

intermediate_strides strides_in_buffer(const fft_plan& p) {
    intermediate_strides strides;
    const int last = p.rank - 1;
    strides.of[last] = 1;
    int64_t span = half_spectrum(p.dims[last].n);
    for (int k = last - 1; k >= 0; --k) {
        strides.of[k] = span;
        span *= p.dims[k].n;
    }
    return strides;
}

// The told size of the buffer, which the compact block never exceeds.
uint64_t buffer_bytes(const fft_plan& p) {
    uint64_t bytes = 8;
    for (int k = 0; k < p.rank; ++k) bytes *= p.dims[k].n;
    return bytes;
}

void set_rows(fft_plan* rows, const fft_plan* plan, const intermediate_strides& strides, float* intermediate) {
    rows->rank = plan->rank - 1;
    for (int k = 0; k < rows->rank; ++k) rows->dims[k] = {plan->dims[k + 1].n, strides.of[k + 1], plan->dims[k + 1].os};
    rows->howmany_rank = 1;
    rows->howmany[0] = {plan->dims[0].n, strides.of[0], plan->dims[0].os};
    rows->in = intermediate;
}

void set_columns(fft_plan* columns, const fft_plan* plan, const intermediate_strides& strides, float* intermediate) {
    columns->kind = kind_c2c;
    columns->rank = 1;
    columns->dims[0] = {plan->dims[0].n, plan->dims[0].is, strides.of[0]};
    columns->howmany_rank = plan->rank - 1;
    for (int k = 0; k < columns->howmany_rank; ++k)
        columns->howmany[k] = {plan->dims[k + 1].n, plan->dims[k + 1].is, strides.of[k + 1]};
    int64_t& n = columns->howmany[columns->howmany_rank - 1].n;
    n = half_spectrum(n);
    columns->out = intermediate;
}

void run(fft_plan* plan, float* in, float* intermediate, float* out) {
    fft_plan *rows = plan->subplans[0], *columns = plan->subplans[1];
    columns->execute(columns, in, intermediate);
    rows->execute(rows, intermediate, out);
}

void execute_c2r_multidimension(fft_plan* plan, float* in, float* out) {
    if (scratch_below scratch{plan}) run(plan, in, out, out);
}

void execute_c2r_multidimension_bufferized(fft_plan* plan, float* in, float* out) {
    if (plan_scratch scratch{plan}) run(plan, in, scratch.data(), out);
}

}  // namespace

int solve_problem_c2r_multidimension(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const bool in_array = array_holds_intermediate(*plan);
    if (!in_array && !attach_buffer(plan, buffer_bytes(*plan))) return refused;
    if (!make_subplans(plan, 2)) return refused;
    const intermediate_strides strides = in_array ? strides_in_array(*plan) : strides_in_buffer(*plan);
    float* intermediate = in_array ? plan->out : static_cast<float*>(plan->buffer);
    set_rows(plan->subplans[0], plan, strides, intermediate);
    set_columns(plan->subplans[1], plan, strides, intermediate);
    if (in_array)
        install(plan, execute_c2r_multidimension, "execute_c2r_multidimension");
    else
        install(plan, execute_c2r_multidimension_bufferized, "execute_c2r_multidimension_bufferized");
    return plan_subplans(plan->subplans, 2);
}
