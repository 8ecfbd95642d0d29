// SPDX-License-Identifier: Apache-2.0
// Any text as wisdom: it is taken whole or not at all, and what is taken comes out again as the same text.
#include "shim/include/fftw3.h"
#include "tests/fuzz/fail.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

// What is known, in lines that are sorted: their order is no promise.
std::string known() {
    char* const text = fftwf_export_wisdom_to_string();
    std::istringstream stream(text ? text : "");
    free(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line + "\n");
    if (lines.size() > 2) std::sort(lines.begin() + 1, lines.end() - 1);
    std::string all;
    for (const std::string& line : lines) all += line;
    return all;
}

struct source {
    const uint8_t *at, *end;
    static int next(void* self) {
        auto& s = *static_cast<source*>(self);
        return s.at < s.end ? *s.at++ : EOF;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    static const std::string nothing = known();
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    source all{bytes, bytes + size};
    const bool taken = fftwf_import_wisdom(source::next, &all);
    const std::string first = known();
    if (!taken && first != nothing) fail("refused wisdom left something behind: " + text);
    fftwf_forget_wisdom();
    if (known() != nothing) fail("wisdom isn't forgotten");
    if (!fftwf_import_wisdom_from_string(first.c_str())) fail("our own text is refused: " + first);
    if (known() != first) fail("another text at the second reading: " + first + " and " + known());
    fftwf_forget_wisdom();
    return 0;
}
