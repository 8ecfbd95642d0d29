// SPDX-License-Identifier: Apache-2.0
// Ends with 0 when the library can run on this machine, else with 1 and the reason.
#include "../tools/processor.h"

int main(void) { return processor_is_supported() ? 0 : 1; }
