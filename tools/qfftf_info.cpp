// SPDX-License-Identifier: Apache-2.0
// qfftf-info: what machine this is, at which level the library works here, which version it is and how it will use
// threads.
#include "include/qfftf.h"
#include "interface/level.h"
#include "threads/threads.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

std::string first_line(const char* file) {
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line.empty() ? "unknown" : line.substr(0, line.find('\0'));
}

void show(const char* what, const std::string& value) { printf("%-14s %s\n", what, value.c_str()); }

std::string backend_text() {
    switch (thread_backend_type()) {
        case backend_openmp:
            return "OpenMP";
        case backend_tarn:
            return "tarn library";
        default:
            return "threads of the library";
    }
}

std::string placement_text() {
    qsl_fftf_plan_with_nthreads(1);  // the mode is read from the environment here
    switch (thread_get_affinity_mode()) {
        case affinity_spread:
            return "spread over clusters";
        case affinity_close:
            return "close to the caller";
        default:
            return "none";
    }
}

std::string environment_text(const char* name) {
    const char* value = getenv(name);
    return std::string(name) + (value ? std::string("=") + value : " not set");
}

void show_machine() {
    utsname system = {};
    uname(&system);
    show("machine", first_line("/sys/firmware/devicetree/base/model"));
    show("system", std::string(system.sysname) + " " + system.release + " " + system.machine);
    show("processors", std::to_string(sysconf(_SC_NPROCESSORS_ONLN)));
#ifdef __aarch64__
    const int bytes = sve_register_bytes();
    show("SVE", bytes ? std::to_string(8 * bytes) + " bits" : "none");
#endif
}

std::string level_text() {
    const inner_library& level = level_at_work();
    return std::string(level.name) + ", " + level.description + " (" + environment_text("QSL_FFT_LEVEL") + ")";
}

}  // namespace

int main() {
    qfft_version version;
    QFFTGetVersion(&version);
    show_machine();
    show("version", std::string(version.module_name) + " " + version.module_version + ", " + qsl_fftf_version);
    show("level", level_text());
    show("threads", backend_text() + " (" + environment_text("QSL_FFT_THREAD_TYPE") + ")");
    show("placement", placement_text() + " (" + environment_text("QSL_FFT_AFFINITY") + ")");
    puts("The library can run here.");
    return 0;
}
