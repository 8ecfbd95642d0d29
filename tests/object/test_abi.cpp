// SPDX-License-Identifier: Apache-2.0
// Programs that were linked with any release of libqfftf.so.1 run with this one: the names of the shared object, their
// types, the sizes and offsets of the records and the constants are those of abi.txt. A line that goes or changes needs
// a new soname; a new line is an addition.
//     tests/object/test_abi --update      writes abi.txt anew
#include "qfftf.h"
#include "tests/object/elf_file.h"

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <typeinfo>

namespace {

template <class T>
std::string type_text() {
    char* readable = abi::__cxa_demangle(typeid(T).name(), nullptr, nullptr, nullptr);
    std::string text = readable ? readable : typeid(T).name();
    free(readable);
    return text;
}

// The names of the header, with their types.
std::map<std::string, std::string> declared() {
    std::map<std::string, std::string> types;
#define NAME(name) types[#name] = type_text<decltype(name)>();
#include "declared_names.h"  // NAME(qsl_fftf_execute) ..., from the list of exported names
#undef NAME
    return types;
}

void describe_names(std::ostream& text) {
    const elf_file library(path_of_library());
    for (const std::string& soname : library.dynamic_texts(DT_SONAME)) text << "soname " << soname << '\n';
    const auto types = declared();
    std::set<std::string> lines;
    for (const auto& symbol : library.symbols(SHT_DYNSYM)) {
        if (!symbol.defined() || symbol.name.empty()) continue;
        std::string line = symbol.name + (symbol.type() == STT_FUNC     ? ": function"
                                          : symbol.type() == STT_OBJECT ? ": object"
                                                                        : ": neither function nor object");
        if (symbol.type() == STT_OBJECT) line += " of " + std::to_string(symbol.entry.st_size) + " bytes";
        if (const auto type = types.find(symbol.name); type != types.end()) line += ", " + type->second;
        lines.insert(line);
    }
    for (const std::string& line : lines) text << line << '\n';
}

#define RECORD(type) text << "record " #type " of " << sizeof(type) << " bytes\n"
#define FIELD(type, field) \
    text << "    " #field " at " << offsetof(type, field) << ", " << type_text<decltype(type::field)>() << '\n'
#define CONSTANT(name) text << "constant " #name " = " << (name) << ", " << type_text<decltype(name)>() << '\n'

void describe_records_and_constants(std::ostream& text) {
    RECORD(fft_iodim);
    FIELD(fft_iodim, n);
    FIELD(fft_iodim, is);
    FIELD(fft_iodim, os);
    RECORD(fft_iodim64);
    FIELD(fft_iodim64, n);
    FIELD(fft_iodim64, is);
    FIELD(fft_iodim64, os);
    RECORD(qfft_version);
    FIELD(qfft_version, product_name);
    FIELD(qfft_version, product_version);
    FIELD(qfft_version, component_name);
    FIELD(qfft_version, component_version);
    FIELD(qfft_version, component_revision);
    FIELD(qfft_version, compiler);
    FIELD(qfft_version, module_name);
    FIELD(qfft_version, module_version);
    RECORD(qsl_fftf_complex);
    RECORD(qsl_fftf_plan);
    RECORD(qsl_fftf_r2r_kind);
    CONSTANT(QSL_FFTF_FORWARD);
    CONSTANT(QSL_FFTF_BACKWARD);
    CONSTANT(QSL_FFTF_RULES);
    CONSTANT(QSL_FFTF_MEASURED);
    CONSTANT(QSL_FFTF_R2HC);
    CONSTANT(QSL_FFTF_HC2R);
    CONSTANT(QSL_FFTF_DHT);
    CONSTANT(QSL_FFTF_REDFT00);
    CONSTANT(QSL_FFTF_REDFT01);
    CONSTANT(QSL_FFTF_REDFT10);
    CONSTANT(QSL_FFTF_REDFT11);
    CONSTANT(QSL_FFTF_RODFT00);
    CONSTANT(QSL_FFTF_RODFT01);
    CONSTANT(QSL_FFTF_RODFT10);
    CONSTANT(QSL_FFTF_RODFT11);
}

std::string present_abi() {
    std::ostringstream text;
    describe_names(text);
    describe_records_and_constants(text);
    return text.str();
}

// The address sanitizer counts the red zone behind an object as part of it.
std::string without_red_zones(const std::string& text) {
#if defined(QFFTF_SANITIZE)
    return std::regex_replace(text, std::regex("object of [0-9]+ bytes"), "object");
#else
    return text;
#endif
}

}  // namespace

TEST(Abi, IsTheCommittedOne) {
    std::ifstream file(ABI_FILE);
    const std::string committed{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_EQ(without_red_zones(present_abi()), without_red_zones(committed));
}

TEST(Abi, CoversEveryNameOfTheHeader) {
    const std::string text = present_abi();
    for (const auto& [name, type] : declared()) EXPECT_NE(text.find('\n' + name + ": "), std::string::npos) << name;
    std::ifstream file(HEADER);
    const std::string header{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    size_t declarations = 0;
    for (size_t at = 0; (at = header.find("\nQFFTF_API ", at)) != std::string::npos; ++at) ++declarations;
    EXPECT_EQ(declared().size(), declarations);
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc == 2 && !strcmp(argv[1], "--update")) {
        std::ofstream(ABI_FILE) << present_abi();
        return 0;
    }
    return RUN_ALL_TESTS();
}
