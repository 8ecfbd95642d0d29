// SPDX-License-Identifier: Apache-2.0
// How a fuzz target says that a promise is broken.
#pragma once
#include <cstdio>
#include <cstdlib>
#include <string>

[[noreturn]] inline void fail(const std::string& what) {
    fprintf(stderr, "FAILED: %s\n", what.c_str());
    abort();
}
