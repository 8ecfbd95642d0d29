// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>

// Text that grows as it is appended to. Null data when memory ran out on the way.
class text {
public:
    text() = default;
    ~text();
    text(const text&) = delete;
    text& operator=(const text&) = delete;

    void append(const char* characters, size_t count);
    [[gnu::format(printf, 2, 3)]] void print(const char* format, ...);

    size_t size() const { return size_; }
    const char* data() const { return failed_ ? nullptr : data_; }
    // The text for the caller to free(); null when memory ran out.
    char* release();

private:
    bool reserve(size_t more);
    char* data_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
    bool failed_ = false;
};
