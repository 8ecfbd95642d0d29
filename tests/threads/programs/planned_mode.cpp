// SPDX-License-Identifier: Apache-2.0
// "planned_mode THREADS N BATCH ...": makes a plan for each pair of numbers, of a batch of complex rows or, for a batch
// of 0, of one r2c transform, and prints the affinity mode that stands then. A process decides on it once.
#include "include/qfftf.h"
#include "threads/threads.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

int main(int argc, char** argv) {
    qsl_fftf_plan_with_nthreads(atoi(argv[1]));
    for (int i = 2; i + 1 < argc; i += 2) {
        const int n = atoi(argv[i]), batch = atoi(argv[i + 1]);
        std::vector<float> in(2 * n * (batch + 1)), out(in.size());
        auto* from = reinterpret_cast<qsl_fftf_complex*>(in.data());
        auto* to = reinterpret_cast<qsl_fftf_complex*>(out.data());
        qsl_fftf_plan plan = batch == 0 ? qsl_fftf_plan_dft_r2c_1d(n, in.data(), to, QSL_FFTF_RULES)
                                        : qsl_fftf_plan_many_dft(1, &n, batch, from, nullptr, 1, n, to, nullptr, 1, n,
                                                                 QSL_FFTF_FORWARD, QSL_FFTF_RULES);
        printf("%s%u\n", plan ? "" : "no plan ", thread_get_affinity_mode());
        qsl_fftf_destroy_plan(plan);
    }
}
