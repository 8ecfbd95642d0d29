// SPDX-License-Identifier: Apache-2.0
// dft_many_multithread: any batch for two or more threads, cut along its outermost dimension into one subplan per
// partition of the parallel loop. It leaves small problems on one thread, four complex transforms side by side to the
// four-lane form of the multi-stage solver, one-point problems in place to the rows that move data, and batches in
// place whose parts would overwrite each other's input.
#include "dft/sizes.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"
#include "threads/partition.h"
#include "threads/threads.h"

namespace {

bool is_complex(const fft_plan& p) { return p.kind == kind_c2c || p.kind == kind_c2c_large_piece; }

bool fills_four_lanes(const fft_plan& p) {
    return p.rank == 1 && p.howmany_rank == 1 && is_complex(p) && p.howmany[0].n == 4 && p.howmany[0].is == 1 &&
           p.howmany[0].os == 1 && !has_large_prime_factor(p.dims[0].n);
}

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.howmany_rank >= 1 && p.nthreads >= 2 && p.howmany[0].n >= 1 &&
           !fills_four_lanes(p) && !(p.rank == 0 && p.in == p.out) && may_run_in_pieces(p);
}

// The loop that the execute function runs, so that its partition i is subplan i.
uint64_t partition_multiple(const fft_plan& p) { return p.howmany[0].n > 16 * p.nthreads ? 16 : 4; }

partition_sizes partitions(const fft_plan& p) {
    return cut_into_partitions(p.howmany[0].n, p.nthreads, partition_multiple(p));
}

uint64_t total_elements(const fft_plan& p) {
    uint64_t total = 1;
    for (int i = 0; i < p.rank; ++i) total *= p.dims[i].n;
    for (int i = 0; i < p.howmany_rank; ++i) total *= p.howmany[i].n;
    return total;
}

bool worth_threads(uint64_t total, uint64_t parts) { return total / parts >= 257 || total >= 1281; }

// Little work per thread: workers on the caller's node share its caches. Else they spread over the memory channels.
void choose_affinity(const fft_plan& p) {
    if (thread_backend_type() != backend_pool) return;
    const int64_t per_thread = p.howmany[0].n * p.dims[0].n / p.nthreads;
    thread_set_affinity_mode(per_thread < 8192 ? affinity_close : affinity_spread);
}

void set_part(const fft_plan& plan, fft_plan* part, uint64_t index, partition_sizes sizes, int64_t nthreads) {
    const int64_t first = static_cast<int64_t>(sizes.chunk * index), count = plan.howmany[0].n;
    part->howmany[0].n = std::min<int64_t>(sizes.chunk, count - first);
    part->nthreads = nthreads;
    if (!plan.aux || !plan.aux_size) return;
    part->aux = static_cast<char*>(plan.aux) + plan.aux_size / count * first;  // borrowed: the size stays 0
    part->aux_size = 0;
}

struct part_steps {
    float* in;
    float* out;
    int64_t in_step;  // in floats
    int64_t out_step;
    fft_plan** subplans;
    const parts_scratch& scratch;
};

void execute_part(parallel_task* task) {
    const part_steps& steps = *static_cast<const part_steps*>(task->closure);
    const int64_t first = static_cast<int64_t>(task->index * task->chunk);
    fft_plan* part = steps.subplans[task->index];
    const parts_scratch::guard scratch(steps.scratch, task->index);
    part->execute(part, steps.in + first * steps.in_step, steps.out + first * steps.out_step);
}

void execute_multithread(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(plan->kind, &in_bytes, &out_bytes);
    const int64_t in_floats = in_bytes / sizeof(float), out_floats = out_bytes / sizeof(float);
    const parts_scratch scratch_of_parts(*plan);
    part_steps steps = {in,
                        out,
                        plan->howmany[0].is * in_floats,
                        doubled_stride(plan->double_os, plan->howmany[0].os) * out_floats,
                        plan->subplans,
                        scratch_of_parts};
    thread_refresh_binding();
    thread_parallel_for(plan->howmany[0].n, plan->nthreads, partition_multiple(*plan), execute_part, &steps);
}

}  // namespace

int solve_problem_dft_many_multithread(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    plan->nthreads = static_cast<int64_t>(thread_limit_nthreads(plan->nthreads));
    const partition_sizes sizes = partitions(*plan);
    if (!worth_threads(total_elements(*plan), sizes.parts)) return refused;
    // With placement off, threads that are left over go down to the subplans.
    const bool spare_threads = thread_get_affinity_mode() == affinity_none && sizes.parts != 1;
    const int64_t part_nthreads = spare_threads ? plan->nthreads / static_cast<int64_t>(sizes.parts) : 1;
    choose_affinity(*plan);
    install(plan, execute_multithread, "execute_multithread");
    if (!make_subplans(plan, static_cast<int>(sizes.parts))) return refused;
    for (uint64_t i = 0; i < sizes.parts; ++i) set_part(*plan, plan->subplans[i], i, sizes, part_nthreads);
    return plan_subplans(plan->subplans, plan->subplan_count);
}
