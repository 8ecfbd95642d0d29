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
#ifdef __cplusplus
}
#endif
#endif
