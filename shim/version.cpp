// SPDX-License-Identifier: Apache-2.0
// Programs copy these objects at start by the sizes that they were linked with, so none may be longer than it was
// there.
#include "shim/include/fftw3.h"

extern "C" {
QFFTF_FFTW3_API extern const char fftwf_version[] = "qfftf-" QFFTF_VERSION;
QFFTF_FFTW3_API extern const char fftwf_cc[] = "clang or gcc, -O2";
QFFTF_FFTW3_API extern const char fftwf_codelet_optim[] = "";
}
