// SPDX-License-Identifier: Apache-2.0
// Of every kernel the shared object holds as many copies as there are levels that need code of their own for it, and it
// costs little more than its levels' machines make necessary.
#include "kernels/generator/forms/forms.h"
#include "tests/object/elf_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string_view>

namespace {

using generator::form;

// Kept for tests alone: no look-up that a solver calls reaches them.
constexpr std::string_view run_by_nobody[] = {"direct_scalar", "first_strided_sve", "last_strided_sve"};
// Run at all levels, in two registers where there is none for four complex numbers. Of other families over SVE's
// registers the lower levels take the NEON sisters.
constexpr std::string_view run_in_two_registers[] = {"many_quad_sve", "straight_quad_sve"};

int copies(const form& f) {
    if (std::ranges::find(run_by_nobody, f.name) != std::end(run_by_nobody)) return 0;
    if (std::ranges::find(run_in_two_registers, f.name) != std::end(run_in_two_registers)) return 3;
    return std::string_view(f.in->vocabulary).starts_with("sve") ? 1 : 2;  // two: with complex instructions, without
}

// "_Z25direct_contig_neon_fwd_n05..." -> "direct_contig_neon_fwd_n05"; empty where it is no function's name.
std::string_view plain_name(std::string_view mangled) {
    if (!mangled.starts_with("_Z")) return {};
    mangled.remove_prefix(2);
    size_t length = 0;
    for (; !mangled.empty() && mangled[0] >= '0' && mangled[0] <= '9'; mangled.remove_prefix(1))
        length = 10 * length + size_t(mangled[0] - '0');
    return mangled.substr(0, length);
}

std::map<std::string, int, std::less<>> functions_of(const elf_file& file) {
    std::map<std::string, int, std::less<>> count;
    for (const auto& symbol : file.symbols(SHT_SYMTAB))
        if (symbol.defined() && symbol.type() == STT_FUNC) ++count[std::string(plain_name(symbol.name))];
    return count;
}

}  // namespace

TEST(TheSharedObject, HoldsKernelsOncePerLevelThatNeedsCodeOfItsOwn) {
    const auto functions = functions_of(elf_file(path_of_library()));
    int found = 0;
    for (const form& f : generator::forms())
        for (const int size : f.sizes)
            for (const int sign : {-1, +1}) {
                if (!generator::has_direction(f, sign)) continue;
                char name[64];
                snprintf(name, sizeof name, "%s_%s_n%02d", f.name, sign < 0 ? "fwd" : "bwd", size);
                const auto at = functions.find(name);
                const int held = at == functions.end() ? 0 : at->second;
                EXPECT_EQ(held, copies(f)) << name;
                found += held;
            }
    EXPECT_GT(found, 2000);  // else the library's names were taken away
}

// A bound stands a tenth above what was needed when it was set: whoever reaches it asks whether the bytes are worth it.
TEST(TheLibraryOfOneLevel, StaysBelowItsBound) {
    const struct {
        const char* path;
        uintmax_t by_clang, by_gcc;
    } levels[] = {{LIBRARY_OF_sve, 2'800'000, 3'050'000},
                  {LIBRARY_OF_fcma, 2'100'000, 2'550'000},
                  {LIBRARY_OF_neon, 2'250'000, 2'770'000}};
    for (const auto& [path, by_clang, by_gcc] : levels) {
#ifdef __clang__
        const uintmax_t bound = by_clang;
#else
        const uintmax_t bound = by_gcc;
#endif
        const uintmax_t bytes = std::filesystem::file_size(path);
        printf("%ju bytes: %s\n", bytes, path);
        EXPECT_LE(bytes, bound) << path;
    }
}

TEST(TheSharedObject, IsAtMostTwoAndAHalfTimesThatOfTheHighestLevel) {
    const uintmax_t whole = std::filesystem::file_size(path_of_library());
    const uintmax_t one_level = std::filesystem::file_size(LIBRARY_OF_sve);
    printf("%ju bytes, the level SVE alone %ju\n", whole, one_level);
    EXPECT_LE(2 * whole, 5 * one_level);
    EXPECT_LE(whole, 5'885'000u);
}
