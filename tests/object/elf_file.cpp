// SPDX-License-Identifier: Apache-2.0
#include "tests/object/elf_file.h"

#include "qfftf.h"

#include <dlfcn.h>

#include <cstring>
#include <fstream>
#include <iterator>

elf_file::elf_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    const auto header = at<Elf64_Ehdr>(0);
    readable_ = memcmp(header.e_ident, ELFMAG, SELFMAG) == 0;
    if (!readable_) return;
    for (unsigned i = 0; i < header.e_phnum; ++i)
        segments_.push_back(at<Elf64_Phdr>(header.e_phoff + i * sizeof(Elf64_Phdr)));
    // Of 65280 sections and more, their count and the number of the section of names stand in the first of them.
    const auto section_zero = at<Elf64_Shdr>(header.e_shoff);
    const uint64_t count = header.e_shnum ? header.e_shnum : section_zero.sh_size;
    const uint64_t names = header.e_shstrndx != SHN_XINDEX ? header.e_shstrndx : section_zero.sh_link;
    const auto strings = at<Elf64_Shdr>(header.e_shoff + names * sizeof(Elf64_Shdr));
    for (uint64_t i = 0; i < count; ++i) {
        const auto section = at<Elf64_Shdr>(header.e_shoff + i * sizeof(Elf64_Shdr));
        sections_.push_back({text(strings, section.sh_name), section});
    }
}

template <class T>
T elf_file::at(uint64_t offset) const {
    T value = {};
    if (offset + sizeof value <= bytes_.size()) memcpy(&value, bytes_.data() + offset, sizeof value);
    return value;
}

std::string elf_file::text(const Elf64_Shdr& strings, uint64_t offset) const {
    const uint64_t begin = strings.sh_offset + offset;
    return begin < bytes_.size() ? std::string(bytes_.data() + begin) : std::string();
}

const elf_file::section* elf_file::first(uint32_t type) const {
    for (const section& s : sections_)
        if (s.header.sh_type == type) return &s;
    return nullptr;
}

std::vector<elf_file::symbol> elf_file::symbols(uint32_t table) const {
    std::vector<symbol> found;
    const section* s = first(table);
    for (uint64_t k = 1; s && k < s->header.sh_size / sizeof(Elf64_Sym); ++k) {
        const auto entry = at<Elf64_Sym>(s->header.sh_offset + k * sizeof(Elf64_Sym));
        found.push_back({text(sections_[s->header.sh_link].header, entry.st_name), entry});
    }
    return found;
}

std::vector<uint64_t> elf_file::dynamic(int64_t tag) const {
    std::vector<uint64_t> values;
    const section* s = first(SHT_DYNAMIC);
    for (uint64_t k = 0; s && k < s->header.sh_size / sizeof(Elf64_Dyn); ++k) {
        const auto entry = at<Elf64_Dyn>(s->header.sh_offset + k * sizeof(Elf64_Dyn));
        if (entry.d_tag == tag) values.push_back(entry.d_un.d_val);
    }
    return values;
}

std::vector<std::string> elf_file::dynamic_texts(int64_t tag) const {
    std::vector<std::string> texts;
    const section* s = first(SHT_DYNAMIC);
    for (const uint64_t offset : dynamic(tag)) texts.push_back(text(sections_[s->header.sh_link].header, offset));
    return texts;
}

uint32_t elf_file::processor_features() const {
    constexpr uint32_t aarch64_features = 0xc0000000;  // GNU_PROPERTY_AARCH64_FEATURE_1_AND
    for (const section& s : sections_) {
        if (s.name != ".note.gnu.property") continue;
        // One note: its header, the owner "GNU", then properties of a type and a size each.
        uint64_t property = s.header.sh_offset + sizeof(Elf64_Nhdr) + 4;
        const uint64_t end = s.header.sh_offset + s.header.sh_size;
        while (property + 8 <= end) {
            if (at<uint32_t>(property) == aarch64_features) return at<uint32_t>(property + 8);
            property += 8 + (at<uint32_t>(property + 4) + 7) / 8 * 8;
        }
    }
    return 0;
}

std::string path_of_library() {
    Dl_info info;
    return dladdr(reinterpret_cast<const void*>(qsl_fftf_execute), &info) ? info.dli_fname : "";
}
