// SPDX-License-Identifier: Apache-2.0
// Regions of known content for test_cycle_model.py.
static float memory[64] __attribute__((aligned(64)));

// 8 dependent additions, each awaits the one before it.
__attribute__((noinline)) void dependent_additions(void) {
    asm volatile(".rept 8\n fadd v0.4s, v0.4s, v1.4s\n .endr" ::: "v0");
}

int main(void) {
    // Region 0: a loop of 1000 rounds of 8 instructions: 2 loads, 1 store, 2 floating-point, a move, 2 for the loop.
    asm volatile(
        "mov x9, #1000\n hint #42\n"
        "1: ldr q0, [%0]\n ld1 {v1.4s}, [%0]\n fadd v2.4s, v0.4s, v1.4s\n fmla v3.4s, v0.4s, v1.4s\n fmov w10, s0\n"
        "str q2, [%0, #16]\n subs x9, x9, #1\n b.ne 1b\n hint #43" ::"r"(memory)
        : "x9", "x10", "v0", "v1", "v2", "v3", "memory", "cc");
    // Region 1: straight code over more than a page, longer than any piece that the emulator translates at once.
    asm volatile("hint #42\n .rept 3000\n add x9, x9, #1\n .endr\n hint #43" ::: "x9");
    // Region 2: a function; compilers keep the call, and the markers next to it.
    asm volatile("mov x19, #500\n hint #42\n 1: bl dependent_additions\n subs x19, x19, #1\n b.ne 1b\n hint #43" ::
                     : "x19", "x30", "v0", "memory", "cc");
    // Region 3: spills. Two vector stores and two vector loads by sp; the integer pair doesn't count as one.
    asm volatile(
        "sub sp, sp, #64\n hint #42\n str q0, [sp]\n stp d8, d9, [sp, #16]\n stp x0, x1, [sp, #32]\n ldr q0, [sp]\n"
        "ldp d8, d9, [sp, #16]\n ldr q1, [%0]\n hint #43\n add sp, sp, #64" ::"r"(memory)
        : "v0", "v1", "memory");
    return 0;
}
