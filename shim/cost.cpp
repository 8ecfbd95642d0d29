// SPDX-License-Identifier: Apache-2.0
// Operations by the usual convention, 5 N log2 N for N complex points and half of it for real ones: an estimate for
// programs that print rates or compare plans, not a count.
#include "shim/plan.h"

#include <cmath>

namespace {

double conventional_operations(const problem& p) {
    double points = 1.0, batch = p.empty ? 0.0 : 1.0;
    for (int d = 0; d < p.rank; ++d) points *= static_cast<double>(p.dims[d].n);
    for (int b = 0; b < p.batch_rank; ++b) batch *= static_cast<double>(p.batch[b].n);
    return (p.kind == kind_c2c ? 5.0 : 2.5) * points * log2(points) * batch;
}

}  // namespace

// Of five operations three are additions, as in a radix-2 butterfly.
void fftwf_flops(const fftwf_plan plan, double* add, double* mul, double* fmas) {
    const double all = plan ? conventional_operations(plan->p) : 0.0;
    *add = 0.6 * all;
    *mul = 0.4 * all;
    *fmas = 0.0;
}

double fftwf_estimate_cost(const fftwf_plan plan) { return plan ? conventional_operations(plan->p) : 0.0; }
double fftwf_cost(const fftwf_plan plan) { return fftwf_estimate_cost(plan); }
