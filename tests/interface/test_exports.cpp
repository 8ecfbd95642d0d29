// SPDX-License-Identifier: Apache-2.0
// The shared object's dynamic symbol table holds exactly the documented names.
#include "tests/object/elf_file.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

using names = std::set<std::string>;

names exported_names() {
    names found;
    for (const auto& symbol : elf_file(path_of_library()).symbols(SHT_DYNSYM))
        if (symbol.defined() && !symbol.name.empty()) found.insert(symbol.name);
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
