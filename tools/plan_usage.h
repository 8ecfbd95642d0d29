// SPDX-License-Identifier: Apache-2.0
// What qfftf-plan --help prints. Every text between quotation marks is a problem that it plans.
#pragma once

constexpr char plan_usage[] = R"(usage: qfftf-plan [--line | --json] [--legend] PROBLEM...
       qfftf-plan --good N...
       qfftf-plan --help | --version
Shows at which level of processors the library works, and how it solves each problem: the tree of solvers that takes it,
the storage that the plan owns and the operations that the transform counts for. For a problem that is refused, says
which documented demand it fails.

  --line     each tree as one line
  --json     each plan as one line of JSON
  --legend   explains the notation of the tree
  --good N   the next length from N up that runs well (no prime factor above 7)

A problem is one argument, KIND SIZES [WORD ...]:
    'c2c 1024'   'r2c 64x100 inplace'   'redft10/dht 32x32'   'c2c 100 batch=8 interleaved backward'
    'c2c 360 measured'   'c2c 256 batch=1000 threads=4'   'c2c 16 istride=2 ostride=3'   'transpose 100x200'
or a planning call with its arguments, whatever they are; lists that are not given are null pointers, dims= is empty:
    'many r2c n=4,8 howmany=3 idist=40 odist=20 onembed=4,5 inplace'   'many r2r n=4,5 kinds=redft10,dht'
    'guru c2c dims=16:1:1 batch=10:16:16,2:160:160 sign=1 split wide'   'guru c2c batch=100:1:200,200:100:1'
    'guru c2c dims=16:1:1 batch=2:160:160,10:16:16 sign=1 split'
Triples are size:istride:ostride. The 32-bit complex calls want batch dimensions slowest first, the word wide means the
64-bit call, and split the call of separate real and imaginary parts (with sign=1 the parts are exchanged).
)";

constexpr char plan_legend[] = R"(A tree shows a problem, and under it what takes it:

    c2c- 1024                       complex, forward (- or +: the exponent's sign), 1024 contiguous points
    c2c+ 6:2:3 *5:40:60             backward, 6 points at input stride 2 and output stride 3; a batch (*) of 5, which are
                                    40 and 60 apart. Several dimensions: 4x6, or 4:12:6x6:2:1, slowest first
    r2r redft10/dht 4x6             a kind for each dimension;  point: no dimension;  piece: a part of a long transform
    =                               in place;  split: real and imaginary parts in two arrays
    8 x c2c- 64                     eight equal subproblems, as the threads of a batch have them

        c2c_1d_sve > 1d_two_stages_sve 32 32  buffer 8192  aux 8520
        the solver > the function that it runs, the radices of its stages, and its storage in bytes:
        buffer  scratch of executions;  aux  tables and kernel pointers, or borrowed: another record's
        [words]  what really runs, where several functions share the name

Subproblems are indented below. owned: all that the plan holds until it is destroyed. per execution: what a thread that
has never made a plan allocates while it executes one (a thread that has made one works in the plan's buffers).
operations: the usual count, 5 N log2 n for n points each of N in all, half of it for real data.
)";
