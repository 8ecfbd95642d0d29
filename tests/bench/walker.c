// SPDX-License-Identifier: Apache-2.0
// Walks of known lines between the markers of bench/caches, for test_cache_lines.py. It takes the arguments of
// qfftf_bench and passes them over; a walk's row names so many elements that lines come out in 1,000.
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

enum { line = 64, kib = 1024, walks = 2 };

static char small[128 * kib] __attribute__((aligned(4096))), large[2048 * kib] __attribute__((aligned(4096))),
    gaps[2048 * kib] __attribute__((aligned(4096)));

static void load_all(volatile char* array, size_t bytes, size_t step) {
    for (size_t at = 0; at < bytes; at += step) (void)array[at];
}

static void store_all(volatile char* array, size_t bytes, size_t step) {
    for (size_t at = 0; at < bytes; at += step) array[at] = 1;
}

// Each access takes the end of a line and the start of the next one.
static void load_across(volatile char* array, size_t bytes, size_t step) {
    for (size_t at = line - 4; at + 8 < bytes; at += step) (void)*(volatile uint64_t*)(array + at);
}

static int region;

static void measure(void (*walk)(volatile char*, size_t, size_t), volatile char* array, size_t bytes, size_t step) {
    walk(array, bytes, step);
    asm volatile("nopl 0x71666642(%%rax)" ::: "memory");
    for (int i = 0; i < walks; ++i) walk(array, bytes, step);
    asm volatile("nopl 0x71666643(%%rax)" ::: "memory");
    printf("%d,c2c 1000,walk,%d,0,0\n", region++, walks);
}

int main(void) {
    puts("region,problem,library,executions,nominal_flops,bytes");
    measure(load_all, small, 32 * kib, 8);
    measure(load_all, small, 128 * kib, line);
    measure(store_all, small, 128 * kib, line);
    measure(load_all, large, 2048 * kib, 16);
    measure(store_all, gaps, 2048 * kib, 2 * line);
    measure(load_across, small, 128 * kib, 2 * line);
    return 0;
}
