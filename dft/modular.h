// SPDX-License-Identifier: Apache-2.0
// Arithmetic modulo a prime below 2^62, exact.
#pragma once
#include <cstdint>

// a b modulo p, for a and b below p.
uint64_t mul_mod(uint64_t a, uint64_t b, uint64_t p);
// a to the power e modulo p.
uint64_t pow_mod(uint64_t a, uint64_t e, uint64_t p);
// The smallest g whose powers run through 1 to p - 1, for an odd prime p.
uint64_t smallest_primitive_root(uint64_t p);
