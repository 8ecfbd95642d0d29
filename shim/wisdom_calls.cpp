// SPDX-License-Identifier: Apache-2.0
// Wisdom to and from files, strings and the caller's functions.
#include "shim/wisdom.h"

#include <cstdio>
#include <cstring>

namespace {

// What `read` gives up to the parenthesis that closes the first one: further wisdom may follow in the same stream.
template <class Read>
int import_from(const Read& read) {
    text t;
    int depth = 0;
    for (;;) {
        const int c = read();
        if (c == EOF) break;
        const char character = static_cast<char>(c);
        t.append(&character, 1);
        if (c == '(') ++depth;
        if (c == ')' && --depth <= 0) break;
    }
    return t.data() && wisdom_import(t.data(), t.size());
}

}  // namespace

char* fftwf_export_wisdom_to_string(void) {
    text t;
    wisdom_export(t);
    return t.release();
}

void fftwf_export_wisdom_to_file(FILE* file) {
    text t;
    wisdom_export(t);
    if (t.data()) fwrite(t.data(), 1, t.size(), file);
}

int fftwf_export_wisdom_to_filename(const char* filename) {
    FILE* file = fopen(filename, "w");
    if (!file) return 0;
    fftwf_export_wisdom_to_file(file);
    const bool written = !ferror(file);
    return (fclose(file) == 0) & written;
}

void fftwf_export_wisdom(fftwf_write_char_func write_char, void* data) {
    text t;
    wisdom_export(t);
    for (size_t i = 0; t.data() && i < t.size(); ++i) write_char(t.data()[i], data);
}

int fftwf_import_wisdom(fftwf_read_char_func read_char, void* data) {
    return import_from([=] { return read_char(data); });
}

int fftwf_import_wisdom_from_file(FILE* file) {
    return import_from([=] { return getc(file); });
}

int fftwf_import_wisdom_from_string(const char* string) {
    return import_from([&] { return *string ? static_cast<unsigned char>(*string++) : EOF; });
}

int fftwf_import_wisdom_from_filename(const char* filename) {
    FILE* file = fopen(filename, "r");
    if (!file) return 0;
    const int result = fftwf_import_wisdom_from_file(file);
    fclose(file);
    return result;
}

int fftwf_import_system_wisdom(void) { return fftwf_import_wisdom_from_filename("/etc/fftw/wisdomf"); }
