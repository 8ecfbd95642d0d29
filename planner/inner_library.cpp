// SPDX-License-Identifier: Apache-2.0
// What this copy of the inner library gives to the rest. Compiled once for each level, whose name is QFFTF_LEVEL; its
// record is the only name of the copy that the others see.
#include "planner/inner_library.h"

#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

struct level_words {
    const char* name;
    const char* description;
    processor_needs needs;
};

[[maybe_unused]] constexpr level_words sve = {"SVE", "SVE registers of 256 bits and complex instructions",
                                              processor_needs::sve_of_256_bits};
[[maybe_unused]] constexpr level_words fcma = {"FCMA", "NEON and complex instructions",
                                               processor_needs::complex_instructions};
[[maybe_unused]] constexpr level_words neon = {"NEON", "NEON without complex instructions", processor_needs::nothing};
[[maybe_unused]] constexpr level_words portable = {"PORTABLE", "portable code, right on any machine and slow",
                                                   processor_needs::nothing};

// A problem as a caller gave it: by the table or else by the last resort.
int plan_callers_problem(fft_plan** slot) {
    if (plan_problem(slot) == accepted) return accepted;
    if (solve_problem_compact_input(*slot) != accepted) return refused;
    settle_storage(*slot);
    return accepted;
}

}  // namespace

#define QFFTF_NAME_OF(level) qfftf_inner_##level
#define QFFTF_RECORD_OF(level)                                                                    \
    extern const inner_library QFFTF_NAME_OF(level);                                              \
    const inner_library QFFTF_NAME_OF(level) = {(level).name, (level).description, (level).needs, \
                                                plan_callers_problem, plan_finish};
extern "C" {
QFFTF_RECORD_OF(QFFTF_LEVEL)
}
