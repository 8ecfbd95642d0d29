// SPDX-License-Identifier: Apache-2.0
// What an object file or a shared object says of itself, read from its bytes: the loader shows only what one asks for.
#pragma once
#include <elf.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class elf_file {
public:
    explicit elf_file(const std::string& path);
    bool readable() const { return readable_; }

    struct section {
        std::string name;
        Elf64_Shdr header;
    };
    struct symbol {
        std::string name;
        Elf64_Sym entry;
        bool defined() const { return entry.st_shndx != SHN_UNDEF; }
        unsigned type() const { return ELF64_ST_TYPE(entry.st_info); }
    };
    const std::vector<Elf64_Phdr>& segments() const { return segments_; }
    const std::vector<section>& sections() const { return sections_; }
    std::vector<symbol> symbols(uint32_t table) const;  // of the tables SHT_DYNSYM or SHT_SYMTAB

    std::vector<uint64_t> dynamic(int64_t tag) const;           // values of all entries with this tag
    std::vector<std::string> dynamic_texts(int64_t tag) const;  // where the values are names

    // The features of NT_GNU_PROPERTY_TYPE_0 that the code promises to the processor (BTI 1, PAC 2 on Arm).
    uint32_t processor_features() const;

private:
    template <class T>
    T at(uint64_t offset) const;
    std::string text(const Elf64_Shdr& strings, uint64_t offset) const;
    const section* first(uint32_t type) const;

    std::vector<char> bytes_;
    bool readable_ = false;
    std::vector<Elf64_Phdr> segments_;
    std::vector<section> sections_;
};

std::string path_of_library();  // the shared object that this program has loaded
