// SPDX-License-Identifier: Apache-2.0
#include "start_program.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

static std::string contents(const std::string& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

program_result start_program(const std::string& environment, const std::string& command) {
    const std::string base = testing::TempDir() + "started_" + std::to_string(getpid());
    // Before the watchdog of main.cpp bites, which would leave the program running.
    const std::string line = "timeout -k 5 80 env " + environment + " " EMULATOR " " + command + " >" + base +
                             ".out 2>" + base + ".err </dev/null";
    const int status = system(line.c_str());
    program_result result = {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(base + ".out"),
                             contents(base + ".err")};
    unlink((base + ".out").c_str());
    unlink((base + ".err").c_str());
    return result;
}
