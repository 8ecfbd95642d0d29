// SPDX-License-Identifier: Apache-2.0
// What the look-ups have to know of the level that this copy of the library is compiled for.
#pragma once

// Four complex numbers fill one register: SVE of 256 bits, and the portable vectors, which follow it. Without it they
// take two NEON registers, and what a look-up is asked for in SVE kernels it takes from the NEON families wherever two
// lanes do as well.
#if defined(__aarch64__) && !defined(__ARM_FEATURE_SVE)
constexpr bool has_registers_of_four = false;
#else
constexpr bool has_registers_of_four = true;
#endif
