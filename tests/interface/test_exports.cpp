// SPDX-License-Identifier: Apache-2.0
// The shared object's dynamic symbol table holds exactly the documented names. The table is read from the file, since
// the loader shows only names that one asks for.
#include "qfftf.h"

#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace {

using names = std::set<std::string>;

std::vector<char> library_file() {
    Dl_info info;
    if (!dladdr(reinterpret_cast<const void*>(qsl_fftf_execute), &info)) return {};
    std::ifstream file(info.dli_fname, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

template <class T>
T read_at(const std::vector<char>& file, uint64_t offset) {
    T value = {};
    if (offset + sizeof value <= file.size()) memcpy(&value, file.data() + offset, sizeof value);
    return value;
}

names exported_names() {
    const std::vector<char> file = library_file();
    const auto header = read_at<Elf64_Ehdr>(file, 0);
    names found;
    for (int i = 0; i < header.e_shnum; ++i) {
        const auto section = read_at<Elf64_Shdr>(file, header.e_shoff + i * sizeof(Elf64_Shdr));
        if (section.sh_type != SHT_DYNSYM) continue;
        const auto strings = read_at<Elf64_Shdr>(file, header.e_shoff + section.sh_link * sizeof(Elf64_Shdr));
        for (uint64_t k = 0; k < section.sh_size / sizeof(Elf64_Sym); ++k) {
            const auto symbol = read_at<Elf64_Sym>(file, section.sh_offset + k * sizeof(Elf64_Sym));
            if (symbol.st_shndx != SHN_UNDEF && symbol.st_name)
                found.insert(file.data() + strings.sh_offset + symbol.st_name);
        }
    }
    return found;
}

const char* const with_twins[] = {
    // planning
    "plan_dft", "plan_dft_1d", "plan_dft_2d", "plan_dft_3d", "plan_dft_r2c", "plan_dft_r2c_1d", "plan_dft_r2c_2d",
    "plan_dft_r2c_3d", "plan_dft_c2r", "plan_dft_c2r_1d", "plan_dft_c2r_2d", "plan_dft_c2r_3d", "plan_r2r",
    "plan_r2r_1d", "plan_r2r_2d", "plan_r2r_3d", "plan_many_dft", "plan_many_dft_r2c", "plan_many_dft_c2r",
    "plan_many_r2r",
    // guru planning
    "plan_guru_dft", "plan_guru_dft_r2c", "plan_guru_dft_c2r", "plan_guru_r2r", "plan_guru_split_dft",
    "plan_guru_split_dft_r2c", "plan_guru_split_dft_c2r", "plan_guru64_dft", "plan_guru64_dft_r2c",
    "plan_guru64_dft_c2r", "plan_guru64_r2r", "plan_guru64_split_dft", "plan_guru64_split_dft_r2c",
    "plan_guru64_split_dft_c2r",
    // execution
    "execute", "execute_dft", "execute_dft_r2c", "execute_dft_c2r", "execute_r2r", "execute_split_dft",
    "execute_split_dft_r2c", "execute_split_dft_c2r",
    // housekeeping
    "destroy_plan", "malloc", "free", "init_threads", "cleanup_threads", "plan_with_nthreads"};

const char* const without_twins[] = {"plan_upsampling_2d", "plan_with_nthreads_local", "set_timelimit", "cleanup"};

names documented_names() {
    names all = {"QFFTGetVersion", "qsl_fftf_version"};
    for (const char* name : with_twins) {
        all.insert(std::string("qsl_fftf_") + name);
        all.insert(std::string("qsl_fftf_") + name + "_");
    }
    for (const char* name : without_twins) all.insert(std::string("qsl_fftf_") + name);
    return all;
}

}  // namespace

TEST(Exports, AreExactlyTheDocumentedNames) {
    EXPECT_EQ(documented_names().size(), 102u);
    EXPECT_EQ(exported_names(), documented_names());
}

// The module has an interface for every call that isn't a twin; a compiler and a program test that they are right.
TEST(Exports, FortranModuleDeclaresEveryCall) {
    std::ifstream file(FORTRAN_MODULE);
    const std::string module{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    for (const std::string& name : documented_names()) {
        if (name.ends_with('_') || name == "qsl_fftf_version") continue;
        EXPECT_NE(module.find(" " + name + "("), std::string::npos) << name;
    }
    // Linked by lld or gold, a Fortran program finds a variable of the shared object empty.
    EXPECT_EQ(module.find(":: qsl_fftf_version"), std::string::npos);
}

TEST(Exports, EveryNameResolves) {
    for (const std::string& name : documented_names()) EXPECT_NE(dlsym(RTLD_DEFAULT, name.c_str()), nullptr) << name;
}
