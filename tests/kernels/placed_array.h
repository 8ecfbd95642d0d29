// SPDX-License-Identifier: Apache-2.0
// Arrays of floats or of complex numbers for one call of a kernel, filled with quiet NaNs: whoever reads one that was
// not set spoils the result, and whoever writes outside the layout is seen. Instead of one of its two guard zones an
// array may have a page that must not be touched at all.
#pragma once
#include <complex>
#include <functional>
#include <string>
#include <vector>

enum class placement { between_guards, ends_at_page, starts_at_page };
const char* name_of(placement where);

template <class T>
class placed {
public:
    using element = T;

    placed(size_t count, placement where);
    ~placed();
    placed(const placed&) = delete;
    placed& operator=(const placed&) = delete;

    element* data() { return data_; }  // element 0 of the layout
    element& operator[](size_t i) { return data_[i]; }

    // The layout and its guard zones; element 0 of the layout is number `front` there.
    std::vector<element> whole() const { return {begin_, begin_ + size_}; }
    size_t front() const { return data_ - begin_; }

    bool owns(const void* address) const;  // its pages, those included that must not be touched

private:
    static constexpr size_t guard = 64;  // elements; more than any vector

    void map_pages(size_t count, bool at_end);

    std::vector<element> floats_;
    char* pages_ = nullptr;
    size_t pages_size_ = 0;
    element *begin_ = nullptr, *data_ = nullptr;
    size_t size_ = 0;
};
extern template class placed<float>;
extern template class placed<std::complex<float>>;
using placed_floats = placed<float>;
using placed_array = placed<std::complex<float>>;

// Runs the call. False if it touched memory that it must not touch, at `address`.
bool survives(const std::function<void()>& call, const void*& address);

// Which of the arrays of a call an address is near to, for what a failing test prints.
template <class In, class Out, class Table>
std::string name_of_touched(const void* address, const In& in, const Out& out, const Table& twiddles) {
    return in.owns(address) ? "input" : out.owns(address) ? "output" : twiddles.owns(address) ? "twiddles" : "?";
}
