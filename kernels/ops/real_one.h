// SPDX-License-Identifier: Apache-2.0
// One real number in a scalar register: as it is, or in double precision between the load and the store.
#pragma once
#include "kernels/ops/inline.h"

namespace real_one {

using vec = float;
OPS_INLINE vec load(const float* p) { return *p; }
OPS_INLINE void store(float* p, vec a) { *p = a; }
OPS_INLINE void store_complex(float* p, vec a) { p[0] = a, p[1] = 0; }
OPS_INLINE vec same(float k) { return k; }
OPS_INLINE vec add(vec a, vec b) { return a + b; }
OPS_INLINE vec sub(vec a, vec b) { return a - b; }
OPS_INLINE vec neg(vec a) { return -a; }
OPS_INLINE vec scale_all(vec a, vec k) { return k * a; }
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return __builtin_fmaf(k, b, a); }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return __builtin_fmaf(-k, b, a); }

}  // namespace real_one

namespace real_double {

using vec = double;
OPS_INLINE vec load(const float* p) { return *p; }
OPS_INLINE void store(float* p, vec a) { *p = float(a); }
OPS_INLINE vec same(double k) { return k; }
OPS_INLINE vec add(vec a, vec b) { return a + b; }
OPS_INLINE vec sub(vec a, vec b) { return a - b; }
OPS_INLINE vec neg(vec a) { return -a; }
OPS_INLINE vec scale_all(vec a, vec k) { return k * a; }
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return __builtin_fma(k, b, a); }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return __builtin_fma(-k, b, a); }

}  // namespace real_double
