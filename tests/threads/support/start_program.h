// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

struct program_result {
    int exit_code;  // -1 when a signal ended it
    std::string out;
    std::string err;
};

// Runs a command line ("path arguments") with these additions to the environment ("A=b C=d"), under the emulator where
// the tests run under one.
program_result start_program(const std::string& environment, const std::string& command);
