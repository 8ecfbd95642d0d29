// SPDX-License-Identifier: Apache-2.0
#include "shim/text.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

text::~text() { free(data_); }

bool text::reserve(size_t more) {
    if (failed_) return false;
    if (size_ + more + 1 <= capacity_) return true;
    const size_t wanted = 2 * (size_ + more + 1);
    auto* grown = static_cast<char*>(realloc(data_, wanted));
    if (!grown) {
        failed_ = true;
        return false;
    }
    data_ = grown;
    capacity_ = wanted;
    return true;
}

void text::append(const char* characters, size_t count) {
    if (!reserve(count)) return;
    if (count) memcpy(data_ + size_, characters, count);
    size_ += count;
    data_[size_] = '\0';
}

void text::print(const char* format, ...) {
    char line[256];  // no single piece is longer
    va_list values;
    va_start(values, format);
    const int length = vsnprintf(line, sizeof line, format, values);
    va_end(values);
    if (length > 0) append(line, static_cast<size_t>(length) < sizeof line ? length : sizeof line - 1);
}

char* text::release() {
    append("", 0);
    char* result = failed_ ? nullptr : data_;
    if (failed_) free(data_);
    data_ = nullptr;
    return result;
}
