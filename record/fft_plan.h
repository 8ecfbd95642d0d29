// SPDX-License-Identifier: Apache-2.0
// The plan record: problem, finished plan and the caller's handle in one. A plan of any depth is a tree of these.
#pragma once
#include "record/what_runs.h"

#include <cstdint>

// One dimension of a transform or of a batch. Strides count elements of their side's own type: complex pairs on an
// interleaved complex side, floats on a real side and on each array of a split side.
struct fft_dim {
    int64_t n;   // length of the dimension, or count of the batch
    int64_t is;  // distance between consecutive indices on the input side
    int64_t os;  // distance between consecutive indices on the output side
};

enum plan_kind : uint32_t {
    kind_c2c = 0,
    kind_c2r = 1,
    kind_r2c = 2,
    kind_r2r = 3,
    kind_c2c_large_piece = 5,  // like c2c; made by the large-transform solver for its subplans
    kind_upsampling_2d = 12,
    kind_c2r_upsampling = 13,
};

enum r2r_transform : uint32_t {
    r2r_r2hc = 0,
    r2r_hc2r = 1,
    r2r_dht = 2,
    r2r_redft00 = 3,
    r2r_redft01 = 4,
    r2r_redft10 = 5,
    r2r_redft11 = 6,
    r2r_rodft00 = 7,
    r2r_rodft01 = 8,
    r2r_rodft10 = 9,
    r2r_rodft11 = 10,
};

enum plan_flag : uint32_t {
    plan_flag_measured = 32,   // solvers test it by equality: they lift their size exclusions and run timed searches
    plan_flag_fast_pass = 64,  // the rule pass of a measured plan; no solver tests it
};

constexpr int64_t split_arrays = 1;
constexpr int64_t interleaved_arrays = -1;
constexpr int64_t sign_forward = -1;
constexpr int64_t sign_backward = 1;
constexpr int max_rank = 4;

struct fft_plan;
using execute_function = void (*)(fft_plan* plan, float* in, float* out);
using execute_split_function = void (*)(fft_plan* plan, float* in_re, float* in_im, float* out_re, float* out_im);

struct fft_plan {
    uint32_t kind;     // plan_kind
    uint32_t lending;  // storage_lending, in padding like the next two; see planner/scratch.h
    int64_t sign;      // -1 forward, +1 backward, 0 where a transform has no direction
    int64_t split;     // split_arrays or interleaved_arrays
    int32_t rank;
    uint32_t scratch_lines;  // what the tree takes, in lines of 64 bytes, plus 1; 0: not added up
    fft_dim dims[max_rank];  // dims[rank - 1] varies fastest
    uint32_t r2r_kind[max_rank];
    int32_t howmany_rank;
    uint32_t brought_lines;     // what every execution brings itself, in lines of 64 bytes
    fft_dim howmany[max_rank];  // howmany[0] is the batch that a batch solver peels off first
    float* in;                  // in split form the real part
    float* in_imag;
    float* out;
    float* out_imag;
    uint32_t flags;  // plan_flag
    what_runs runs;  // what `execute` does, in padding
    void* spare_buffer;
    int32_t blocked_is;  // this group is set only on the subplans of solve_bufferized_problem
    int32_t blocked_os;
    uint64_t blocked_count;
    int32_t blocked_row;
    int32_t blocked_child;
    uint32_t private_copy;
    uint32_t double_is;
    uint32_t double_os;
    int64_t private_copy_stride;
    float upsample_shift_x;
    float upsample_shift_y;
    const char* solver_name;  // the row of solver_table that won
    execute_function execute;
    execute_split_function execute_split;
    const char* execute_name;
    void* buffer;  // working storage, from the aligned allocator
    uint64_t buffer_size;
    void* aux;  // the solver's private data: kernel pointer, tables, stage list
    uint64_t aux_size;
    uint32_t aux_owned;
    int32_t subplan_count;
    fft_plan** subplans;
    int64_t nthreads;  // thread count that stood when the plan call was made
};

// A new record holding the problem of `plan`; null when memory is short; a blank record when `plan` is null.
fft_plan* fft_plan_clone(const fft_plan* plan);

// Allocates `subplans` and its `subplan_count` records, each a copy of the problem; there are no older subplans.
// Returns 0, or -1 when memory is short; what was made so far then stays for fft_plan_clear.
int fft_plan_alloc_subplans(fft_plan* plan);

// Releases the subplans alone; their number becomes 0.
void fft_plan_clear_subplans(fft_plan* plan);

// Releases what a solver attached and leaves the problem in place, so that the next solver can try.
void fft_plan_clear(fft_plan* plan);

// Clears and frees the record. Null is allowed.
void fft_plan_free(fft_plan* plan);

void fft_plan_copy_dims(fft_dim* dst, const fft_dim* src, int count);
void fft_plan_copy_r2r_kinds(uint32_t* dst, const uint32_t* src, int count);

// Bytes of one element on each side of a problem of this kind.
void fft_element_sizes(uint32_t kind, uint64_t* in_bytes, uint64_t* out_bytes);

// Twice `stride` when `switch_value` is 1, else `stride`.
inline int64_t doubled_stride(uint32_t switch_value, int64_t stride) { return switch_value == 1 ? 2 * stride : stride; }
