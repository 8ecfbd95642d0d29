// SPDX-License-Identifier: Apache-2.0
// kernel_generator DIR: writes DIR/<family>/nNN.cpp and unit.cpp for every family of the forms table, the constant
// pools, the declarations, the pointer tables and the registry of them all.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "kernels/generator/emit/kernel.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/emit/tables.h"

namespace generator {

void write_if_changed(const std::string& path, const std::string& content) {
    std::ifstream old(path, std::ios::binary);
    const std::string had{std::istreambuf_iterator<char>(old), {}};
    if (old && had == content) return;
    std::ofstream(path, std::ios::binary) << content;
}

// FNV-1a: tells one text from another.
std::string fingerprint(const std::string& content) {
    uint64_t h = 0xcbf29ce484222325u;
    for (unsigned char c : content) h = (h ^ c) * 0x100000001b3u;
    char s[20];
    std::snprintf(s, sizeof s, "%016llx", static_cast<unsigned long long>(h));
    return s;
}

// The unit names its texts' fingerprints, so that it changes with each of them: the build knows units as outputs of
// the generator, but learns of the included texts only from the compiler, too late to see them change in this run.
void write_family(const std::string& dir, const form& f) {
    std::filesystem::create_directories(dir + "/" + f.name);
    std::string unit =
        "// Written by kernels/generator.\n#include \"kernels/ops/ops.h\"\n#include \"../declarations.h\"\n";
    for (int size : f.sizes) {
        const std::string file = numbered(size) + ".cpp";
        const std::string source = kernel_source(f, size).str();
        write_if_changed(dir + "/" + f.name + "/" + file, source);
        unit += "#include \"" + file + "\"  // " + fingerprint(source) + "\n";
    }
    write_if_changed(dir + "/" + f.name + "/unit.cpp", unit);
}

}  // namespace generator

int main(int argc, char** argv) {
    using namespace generator;
    if (argc != 2) return std::fprintf(stderr, "usage: kernel_generator DIR\n"), 2;
    const std::string dir = argv[1];
    for (const form& f : forms()) write_family(dir, f);
    write_if_changed(dir + "/declarations.h", declarations_text());
    write_if_changed(dir + "/tables.h", tables_header_text());
    write_if_changed(dir + "/tables.cpp", tables_text());
    write_if_changed(dir + "/registry.cpp", registry_text());
    write_if_changed(dir + "/pools.cpp", pools_text());
}
