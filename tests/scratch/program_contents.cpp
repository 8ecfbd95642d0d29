// SPDX-License-Identifier: Apache-2.0
#include "tests/scratch/program_contents.h"

#include <cxxabi.h>
#include <elf.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <vector>

namespace {

class own_file {
public:
    own_file() {
        std::ifstream file("/proc/self/exe", std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(file), {});
        if (bytes_.size() < sizeof(Elf64_Ehdr)) throw std::runtime_error("this program's file can't be read");
    }

    std::vector<Elf64_Shdr> sections() const {
        Elf64_Ehdr header;
        memcpy(&header, bytes_.data(), sizeof header);
        std::vector<Elf64_Shdr> all(header.e_shnum);
        memcpy(all.data(), at(header.e_shoff), all.size() * sizeof all[0]);
        return all;
    }

    const char* at(uint64_t offset) const { return bytes_.data() + offset; }

private:
    std::vector<char> bytes_;
};

bool is_execute_name(const std::string& text) {
    if (text == "r2r_plan_solver_func[k]") return true;
    return text.size() > 8 && text.starts_with("execute_") &&
           text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string::npos;
}

std::set<std::string> names_in(const own_file& file) {
    std::set<std::string> names;
    for (const Elf64_Shdr& section : file.sections()) {
        if (section.sh_type != SHT_PROGBITS || !(section.sh_flags & SHF_ALLOC) || (section.sh_flags & SHF_EXECINSTR))
            continue;
        const char *p = file.at(section.sh_offset), *const end = p + section.sh_size;
        while (p < end) {
            const std::string text(p, strnlen(p, end - p));
            if (is_execute_name(text)) names.insert(text);
            p += text.size() + 1;
        }
    }
    return names;
}

std::string demangled(const char* symbol) {
    int status;
    char* const text = abi::__cxa_demangle(symbol, nullptr, nullptr, &status);
    const std::string result = text ? text : "";
    free(text);
    return result;
}

bool is_execute_function(const std::string& function) {
    return function.find("execute_") != std::string::npos &&
           (function.ends_with("(fft_plan*, float*, float*)") ||
            function.ends_with("(fft_plan*, float*, float*, float*, float*)"));
}

// The symbol that tells where the program was loaded.
constexpr const char* anchor = "_Z14fft_plan_clonePK8fft_plan";

std::map<const void*, std::string> functions_in(const own_file& file) {
    std::map<uint64_t, std::string> found;
    uint64_t anchor_value = 0;
    const std::vector<Elf64_Shdr> sections = file.sections();
    for (const Elf64_Shdr& section : sections) {
        if (section.sh_type != SHT_SYMTAB) continue;
        const char* const strings = file.at(sections[section.sh_link].sh_offset);
        for (uint64_t i = 0; i < section.sh_size / sizeof(Elf64_Sym); ++i) {
            Elf64_Sym symbol;
            memcpy(&symbol, file.at(section.sh_offset + i * sizeof symbol), sizeof symbol);
            const char* const name = strings + symbol.st_name;
            if (strcmp(name, anchor) == 0) anchor_value = symbol.st_value;
            if (ELF64_ST_TYPE(symbol.st_info) != STT_FUNC || !symbol.st_value || !strstr(name, "execute")) continue;
            const std::string function = demangled(name);
            if (is_execute_function(function)) found[symbol.st_value] = function;
        }
    }
    if (!anchor_value) throw std::runtime_error("this program has no symbols");
    const char* const base = reinterpret_cast<const char*>(fft_plan_clone) - anchor_value;
    std::map<const void*, std::string> functions;
    for (const auto& [value, function] : found) functions[base + value] = function;
    return functions;
}

}  // namespace

execute_parts execute_parts_of_this_program() {
    const own_file file;
    return {names_in(file), functions_in(file)};
}

void collect_execute_parts(const fft_plan& plan, execute_parts& found) {
    found.names.insert(plan.execute_name);
    found.functions[reinterpret_cast<const void*>(plan.execute)];
    if (plan.execute_split) found.functions[reinterpret_cast<const void*>(plan.execute_split)];
    for (int i = 0; i < plan.subplan_count; ++i) collect_execute_parts(*plan.subplans[i], found);
}

std::string list_of_missing_functions(const execute_parts& all, const execute_parts& found) {
    static const std::regex length(", [0-9]+ul?>");
    const auto of_any_length = [](const std::string& symbol) { return std::regex_replace(symbol, length, ", n>"); };
    std::set<std::string> reached, missing;
    for (const auto& [function, symbol] : all.functions)
        if (found.functions.contains(function)) reached.insert(of_any_length(symbol));
    for (const auto& [function, symbol] : all.functions)
        if (!reached.contains(of_any_length(symbol))) missing.insert(of_any_length(symbol));
    std::string text;
    for (const std::string& symbol : missing) text += "  function " + symbol + "\n";
    return text;
}
