// SPDX-License-Identifier: Apache-2.0
// The emulator runs vector code a hundred times slower. Long sweeps are thinned there; the portable build, whose
// kernels and solvers come from the same source, runs them whole.
#pragma once

#if TESTS_ARE_EMULATED
constexpr bool is_emulated = true;
#else
constexpr bool is_emulated = false;
#endif
