// SPDX-License-Identifier: Apache-2.0
#include "tools/plan_size.h"

#include <cmath>

uint64_t plan_bytes(const fft_plan& plan) {
    uint64_t bytes = sizeof(fft_plan) + static_cast<uint64_t>(plan.subplan_count) * sizeof(fft_plan*);
    if (plan.buffer) bytes += plan.buffer_size;
    if (plan.aux && plan.aux_owned) bytes += plan.aux_size;
    for (int i = 0; i < plan.subplan_count; ++i) bytes += plan_bytes(*plan.subplans[i]);
    return bytes;
}

uint64_t execution_bytes(const fft_plan& plan) {
    constexpr uint64_t alignment = 64;  // of each record's share in the one block that is allocated
    uint64_t bytes = plan.buffer ? (plan.buffer_size + alignment - 1) / alignment * alignment : 0;
    for (int i = 0; i < plan.subplan_count; ++i) bytes += execution_bytes(*plan.subplans[i]);
    return bytes;
}

double plan_operations(const fft_plan& plan) {
    const auto product = [](const fft_dim* dims, int count) {
        double result = 1;
        for (int k = 0; k < count; ++k) result *= static_cast<double>(dims[k].n);
        return result;
    };
    const double n = product(plan.dims, plan.rank), batch = product(plan.howmany, plan.howmany_rank);
    return (plan.kind == kind_c2c ? 5 : 2.5) * n * batch * std::log2(n);
}
