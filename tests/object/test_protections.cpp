// SPDX-License-Identifier: Apache-2.0
// The shared object leaves an attacker little to work with: nothing that is executed can be written, the tables of
// addresses are read-only once it is loaded, its functions begin with landing pads, and those that any processor may
// run sign their return addresses.
#include "tests/object/elf_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace {

constexpr uint32_t landing_pads = 1, signed_returns = 2;

const elf_file& the_library() {
    static const elf_file file(path_of_library());
    return file;
}

std::vector<std::string> lines_of(const char* path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

bool needs(const elf_file& file, uint32_t table, const std::string& name) {
    return std::ranges::any_of(file.symbols(table), [&](const auto& s) { return s.name == name && !s.defined(); });
}

}  // namespace

TEST(TheSharedObject, HasNoSegmentThatIsWrittenAndExecuted) {
    ASSERT_FALSE(the_library().segments().empty());
    int executable = 0;
    for (const Elf64_Phdr& segment : the_library().segments()) {
        EXPECT_FALSE((segment.p_flags & PF_W) && (segment.p_flags & PF_X)) << "at " << segment.p_vaddr;
        executable += (segment.p_flags & PF_X) != 0;
    }
    EXPECT_EQ(executable, 1);
}

TEST(TheSharedObject, AsksForAStackThatIsNotExecutable) {
    const auto& segments = the_library().segments();
    const auto stack = std::ranges::find(segments, uint32_t{PT_GNU_STACK}, &Elf64_Phdr::p_type);
    ASSERT_NE(stack, segments.end());  // without this segment the stack would be executable
    EXPECT_EQ(stack->p_flags & PF_X, 0u);
}

TEST(TheSharedObject, BindsAllSymbolsAtLoadingAndMakesTheirTableReadOnly) {
    ASSERT_EQ(the_library().dynamic(DT_FLAGS).size(), 1u);
    EXPECT_NE(the_library().dynamic(DT_FLAGS)[0] & DF_BIND_NOW, 0u);
    const auto& segments = the_library().segments();
    const auto relro = std::ranges::find(segments, uint32_t{PT_GNU_RELRO}, &Elf64_Phdr::p_type);
    ASSERT_NE(relro, segments.end());
    for (const auto& s : the_library().sections()) {
        const bool addresses = s.name == ".got" || s.name == ".got.plt" || s.name == ".data.rel.ro" ||
                               s.name == ".dynamic" || s.name == ".init_array" || s.name == ".fini_array";
        if (!addresses || s.header.sh_size == 0) continue;
        EXPECT_GE(s.header.sh_addr, relro->p_vaddr) << s.name;
        EXPECT_LE(s.header.sh_addr + s.header.sh_size, relro->p_vaddr + relro->p_memsz) << s.name;
    }
}

TEST(TheSharedObject, HasNoRelocationInItsText) {
    EXPECT_TRUE(the_library().dynamic(DT_TEXTREL).empty());
    for (const uint64_t flags : the_library().dynamic(DT_FLAGS)) EXPECT_EQ(flags & DF_TEXTREL, 0u);
}

TEST(TheSharedObject, StaysLoaded) {
    ASSERT_EQ(the_library().dynamic(DT_FLAGS_1).size(), 1u);
    EXPECT_NE(the_library().dynamic(DT_FLAGS_1)[0] & DF_1_NODELETE, 0u);
}

TEST(TheSharedObject, GuardsTheStackOfItsOuterFunctions) {
    EXPECT_TRUE(needs(the_library(), SHT_DYNSYM, "__stack_chk_fail"));
}

TEST(EveryObjectFile, AsksForAStackThatIsNotExecutable) {
    const auto objects = lines_of(OBJECT_LIST);
    ASSERT_GT(objects.size(), 100u);
    for (const std::string& path : objects) {
        const elf_file object(path);
        ASSERT_TRUE(object.readable()) << path;
        const auto mark =
            std::ranges::find(object.sections(), std::string(".note.GNU-stack"), &elf_file::section::name);
        ASSERT_NE(mark, object.sections().end()) << path;
        EXPECT_EQ(mark->header.sh_flags & SHF_EXECINSTR, 0u) << path;
    }
}

#ifdef __aarch64__
// Of the two levels whose compiler would sign by instructions that some of their processors lack.
bool is_of_armv8_3(const std::string& object) {
    for (const char* folder : {"/qfftf_inner_sve.dir/", "/qfftf_inner_fcma.dir/", "/qfftf_kernels_sve.dir/",
                               "/qfftf_kernels_fcma.dir/", "/qfftf_kernels_shared.dir/", "/levels/sve_and_fcma.o"})
        if (object.find(folder) != std::string::npos) return true;
    return false;
}

// One object without would take the mark from whatever it is linked into.
TEST(EveryObjectFile, IsMarkedAsHavingLandingPads) {
    const auto objects = lines_of(OBJECT_LIST);
    ASSERT_GT(objects.size(), 100u);
    int signing = 0;
    for (const std::string& path : objects) {
        const uint32_t features = elf_file(path).processor_features();
        EXPECT_EQ(features & landing_pads, landing_pads) << path;
        if (is_of_armv8_3(path)) continue;
        EXPECT_EQ(features & signed_returns, signed_returns) << path;
        ++signing;
    }
    EXPECT_GT(signing, 50);
}

// The linker adds the system's start files, and marks the library only where those are marked too.
TEST(TheSharedObject, IsMarkedWhereTheStartFilesOfTheSystemAre) {
    uint32_t start_files = landing_pads;
    for (const std::string& path : lines_of(START_FILE_LIST)) {
        const elf_file file(path);
        ASSERT_TRUE(file.readable()) << path;
        start_files &= file.processor_features();
    }
    EXPECT_EQ(the_library().processor_features() & landing_pads, start_files);
    RecordProperty("features_of_the_start_files", static_cast<int>(start_files));
}
#endif
