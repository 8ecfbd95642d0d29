// SPDX-License-Identifier: Apache-2.0
// Any values of the environment variables that are read after loading: unknown ones do nothing, threaded plans run.
#include "include/qfftf.h"
#include "tests/fuzz/fail.h"
#include "threads/pool.h"
#include "threads/threads.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <strings.h>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    FuzzedDataProvider data(bytes, size);
    qsl_fftf_cleanup_threads();
    std::string affinity, idle;
    for (auto& [name, value] :
         {std::pair<const char*, std::string&>{"QSL_FFT_AFFINITY", affinity}, {"QSL_FFT_IDLE", idle}}) {
        static constexpr const char* words[] = {"CLOSE", "NO", "SLEEP", "SPREAD"};
        value = data.ConsumeBool() ? words[data.ConsumeIntegralInRange(0, 3)] : data.ConsumeRandomLengthString(40);
        setenv(name, value.c_str(), 1);
    }
    qsl_fftf_plan_with_nthreads(data.ConsumeIntegralInRange(-2, 4));
    const bool close = strcasecmp(affinity.c_str(), "CLOSE") == 0, none = strcasecmp(affinity.c_str(), "NO") == 0;
    if (thread_get_affinity_mode() != (close ? affinity_close : none ? affinity_none : affinity_spread))
        fail("QSL_FFT_AFFINITY=" + affinity);
    if (pool_workers_nap.load() != (strcasecmp(idle.c_str(), "SLEEP") == 0)) fail("QSL_FFT_IDLE=" + idle);
    static float in[64 * 32], out[64 * 32];
    in[2] = 1;
    const int n = 16;
    qsl_fftf_plan plan = qsl_fftf_plan_many_dft(1, &n, 64, reinterpret_cast<qsl_fftf_complex*>(in), nullptr, 1, 16,
                                                reinterpret_cast<qsl_fftf_complex*>(out), nullptr, 1, 16, -1, 0);
    memset(out, 0, sizeof out);
    qsl_fftf_execute(plan);
    if (out[0] != 1 || out[1] != 0 || out[2 * 8] != -1) fail("a transform of an impulse, QSL_FFT_AFFINITY=" + affinity);
    qsl_fftf_destroy_plan(plan);
    return 0;
}
