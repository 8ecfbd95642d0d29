// SPDX-License-Identifier: Apache-2.0
// kernel_generator DIR: writes DIR/<family>/nNN.cpp and unit.cpp for every family of the forms table, the constant
// pools, the declarations, the pointer tables, the lists and the registry of them all, and removes what it wrote for a
// table that had others.
// kernel_generator --list: prints the families. kernel_generator --show NAME: prints one kernel, such as
// direct_contig_sve_fwd_n05, with what each pass did.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

#include "kernels/generator/emit/kernel.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/emit/tables.h"

namespace generator {

namespace {

// Leaves a file alone that has this text already, so that what depends on it isn't built again.
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

bool was_written_here(const std::filesystem::path& file) {
    std::ifstream text(file);
    std::string line;
    return std::getline(text, line) && line.ends_with("Written by kernels/generator.");
}

// Texts of families and sizes that the table has no more.
void remove_leftovers(const std::filesystem::path& dir) {
    for (const auto& folder : std::filesystem::directory_iterator(dir)) {
        if (!was_written_here(folder.path() / "unit.cpp")) continue;
        std::set<std::string> files;
        for (const form& f : forms())
            if (folder.path().filename() == f.name)
                for (int size : f.sizes) files.insert(numbered(size) + ".cpp");
        if (!files.empty()) files.insert("unit.cpp");
        for (const auto& file : std::filesystem::directory_iterator(folder))
            if (!files.contains(file.path().filename()) && was_written_here(file)) std::filesystem::remove(file);
        if (files.empty() && std::filesystem::is_empty(folder)) std::filesystem::remove(folder);
    }
}

// What keeps kernels of the table from being written, family by family and size by size.
bool tell_refusals() {
    bool any = false;
    for (const form& f : forms())
        for (int size : f.sizes)
            if (const std::string reason = refusal(f, size); !reason.empty()) {
                std::fprintf(stderr, "kernel_generator: %s, size %d: %s\n", f.name, size, reason.c_str());
                any = true;
            }
    return any;
}

int write_all(const std::string& dir) {
    if (tell_refusals()) return 1;
    for (const form& f : forms()) write_family(dir, f);
    remove_leftovers(dir);
    write_if_changed(dir + "/declarations.h", declarations_text());
    write_if_changed(dir + "/tables.h", tables_header_text());
    write_if_changed(dir + "/tables.cpp", tables_text());
    write_if_changed(dir + "/lists.cpp", lists_text());
    write_if_changed(dir + "/registry.cpp", registry_text());
    write_if_changed(dir + "/pools.cpp", pools_text());
    return 0;
}

int list() {
    for (const form& f : forms()) std::puts(f.name);
    return 0;
}

int show(const std::string& name) {
    const std::string shown = shown_kernel(name);
    if (shown.empty()) return std::fprintf(stderr, "kernel_generator: no kernel is named %s\n", name.c_str()), 1;
    std::fputs(shown.c_str(), stdout);
    return 0;
}

}  // namespace

}  // namespace generator

int main(int argc, char** argv) try {
    const std::string first = argc > 1 ? argv[1] : "";
    if (argc == 2 && first == "--list") return generator::list();
    if (argc == 3 && first == "--show") return generator::show(argv[2]);
    if (argc == 2 && !first.starts_with("-")) return generator::write_all(first);
    std::fputs("usage: kernel_generator DIR | --list | --show NAME\n", stderr);
    return 2;
} catch (const std::exception& e) {
    std::fprintf(stderr, "kernel_generator: %s\n", e.what());
    return 1;
}
