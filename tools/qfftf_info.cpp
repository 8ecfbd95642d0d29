// SPDX-License-Identifier: Apache-2.0
// qfftf-info: what machine this is, at which level the library works here, which version it is and how it will use
// threads.
#include "include/qfftf.h"
#include "interface/level.h"
#include "problems/near_word.h"
#include "threads/threads.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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

// A value that the library doesn't know does what no value does; whoever set it meant something else.
void flag_unknown_value(const char* name, std::span<const std::string_view> known, bool capitals_count) {
    const char* value = getenv(name);
    if (!value) return;
    std::string list;
    for (const std::string_view word : known) {
        if (capitals_count ? word == value : problems::word_distance(word, value) == 0) return;
        list += (list.empty() ? "" : ", ") + std::string(word);
    }
    printf("%-14s %s=%s is unknown and does nothing%s (known: %s)\n", "warning", name, value,
           problems::did_you_mean(value, known).c_str(), list.c_str());
}

void flag_unknown_values() {
    constexpr std::string_view teams[] = {"OMP", "TARN"}, places[] = {"SPREAD", "CLOSE", "NO"},
                               idle[] = {"SPIN", "SLEEP"};
    flag_unknown_value("QSL_FFT_THREAD_TYPE", teams, true);
    flag_unknown_value("QSL_FFT_AFFINITY", places, false);
    flag_unknown_value("QSL_FFT_IDLE", idle, false);
    std::vector<std::string_view> levels;
    for (const inner_library* const* level = inner_libraries; *level; ++level) levels.emplace_back((*level)->name);
    flag_unknown_value("QSL_FFT_LEVEL", levels, true);
}

constexpr char usage[] =
    "usage: qfftf-info [--help | --version]\n"
    "Tells what machine this is and whether the library can run here, the versions of the package and of what the\n"
    "library reports, which team of threads it will use and where it will place them, and environment variables of "
    "the\n"
    "library that have a value which it doesn't know.\n";

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

int main(int argc, char** argv) {
    if (argc > 1) {
        const std::string word = argv[1];
        const bool help = word == "--help" || word == "-h", known = help || word == "--version";
        fputs(help ? usage : known ? "qfftf-info " QFFTF_VERSION "\n" : usage, known ? stdout : stderr);
        return known ? 0 : 2;
    }
    qfft_version version;
    QFFTGetVersion(&version);
    show_machine();
    show("package", "qfftf " QFFTF_VERSION);
    show("version", std::string(version.module_name) + " " + version.module_version + ", " + qsl_fftf_version);
    show("level", level_text());
    show("threads", backend_text() + " (" + environment_text("QSL_FFT_THREAD_TYPE") + ")");
    show("placement", placement_text() + " (" + environment_text("QSL_FFT_AFFINITY") + ")");
    flag_unknown_values();
    puts("The library can run here.");
    return 0;
}
