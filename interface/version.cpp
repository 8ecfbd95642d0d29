// SPDX-License-Identifier: Apache-2.0
// What build of the library this is.
#include "include/qfftf.h"

extern "C" const char qsl_fftf_version[50] = "fft version: 2.0.2.B001";

namespace {

// At most 99 characters and the terminator; bytes behind it keep what they held.
void copy_text(char* field, const char* text) {
    int length = 0;
    for (; length < 99 && text[length]; ++length) field[length] = text[length];
    field[length] = '\0';
}

}  // namespace

int QFFTGetVersion(qfft_version* record) {
    if (!record) return 0;
    copy_text(record->product_name, "Morwen Lathe");
    copy_text(record->product_version, "26.1.RC1");
    copy_text(record->component_name, "Lathe-qsl");
    copy_text(record->component_version, "26.1.RC1");
    copy_text(record->component_revision, "1");
    copy_text(record->compiler, "gcc");
    copy_text(record->module_name, "lathe-qsl-fft");
    copy_text(record->module_version, "26.1.RC1");
    return 1;
}
