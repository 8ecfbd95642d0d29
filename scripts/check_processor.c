// SPDX-License-Identifier: Apache-2.0
// Ends with 0 where the library can run, and else with a sentence. Built for the build machine ahead of everything
// else.
#include "../tools/processor.h"

int main(void) { return processor_is_supported() ? 0 : 1; }
