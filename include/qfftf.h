/* SPDX-License-Identifier: Apache-2.0 */
#ifndef QFFTF_H
#define QFFTF_H
#include <stdint.h>
#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#define QFFTF_API __attribute__((visibility("default")))
#else
#define QFFTF_API
#endif
QFFTF_API void* qsl_fftf_malloc(uint64_t size);
QFFTF_API void qsl_fftf_free(void* pointer);

/* Prepares the thread back-end. Optional, but for the tarn back-end, whose executor groups it makes room for.
 * Returns 1. */
QFFTF_API int qsl_fftf_init_threads(void);

/* Ends the threads that the library keeps. No plan may be executing. Plans stay valid; those with several threads run
 * again after qsl_fftf_init_threads or qsl_fftf_plan_with_nthreads. */
QFFTF_API void qsl_fftf_cleanup_threads(void);

/* Sets how many threads the plans made from now on use, whichever thread makes them: n is cut to 1 to 512. Finished
 * plans keep the count that stood when they were made. */
QFFTF_API void qsl_fftf_plan_with_nthreads(int n);

/* The same for plans made by the calling thread only. It wins over the count for all threads from then on. */
QFFTF_API void qsl_fftf_plan_with_nthreads_local(int n);
#ifdef __cplusplus
}
#endif
#endif
