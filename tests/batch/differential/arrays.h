// SPDX-License-Identifier: Apache-2.0
// The arrays of a problem: where each element stands, what stood there before, and which floats belong to no element.
#pragma once
#include <complex>
#include <memory>
#include <string>
#include <vector>

#include "tests/batch/differential/calls.h"
#include "tests/batch/differential/problem.h"

// One array of a problem, with or without guard zones around what the layout spans. All of it starts as one number that
// would swamp every result that reads it.
class test_array {
public:
    test_array(int64_t count, bool guarded, uint64_t seed);
    float* at() { return floats_.get() + front_; }
    float& operator[](int64_t i) { return at()[i]; }
    void poison();
    void take_picture() { picture_.assign(floats_.get(), floats_.get() + count_); }
    // What stood there when the picture was taken.
    float before(int64_t i) const { return picture_[front_ + i]; }
    bool is_as_before() const;
    // An element of the side that is written stands there.
    void address(int64_t i) { addressed_[front_ + i] = true; }
    // The first float that no output addresses and that changed; -1 if none, else its place in the array.
    bool has_stray_write(int64_t* place) const;

private:
    bool changed(int64_t i) const;

    int64_t front_, count_;
    std::unique_ptr<float[]> floats_;
    std::vector<float> picture_;
    std::vector<bool> addressed_;
};

// One side of a problem, in one array of pairs or floats, or in two of floats.
struct side {
    const transform_problem& p;
    bool input;
    test_array* re = nullptr;
    test_array* im = nullptr;
    std::vector<int64_t> element_places = {};
    std::vector<int64_t> transform_places = {};

    bool is_complex() const { return input ? p.complex_in() : p.complex_out(); }
    int64_t floats_per_element() const { return is_complex() && !p.split ? 2 : 1; }
    int64_t stride(const fft_dim& d) const { return (input ? d.is : d.os) * floats_per_element(); }
    int64_t span() const;

    // Places of the real parts: of each element of one transform, in row-major order, and of each transform.
    void lay_out();
    // Calls visit(index of the element, its place) for one transform of the batch.
    template <class Visit>
    void for_each(int64_t transform, Visit visit) const {
        const int64_t base = transform_places[transform];
        for (size_t e = 0; e < element_places.size(); ++e) visit(e, base + element_places[e]);
    }
    // Whether two elements share a float: results are then whatever was written last.
    bool overlaps() const;

    void set(int64_t at, std::complex<double> z) const;
    std::complex<double> get(int64_t at) const { return {(*re)[at], is_complex() ? imaginary(at) : 0.0f}; }
    std::complex<double> before(int64_t at) const;
    void address_all() const;

private:
    float& imaginary(int64_t at) const { return im ? (*im)[at] : (*re)[at + 1]; }
};

// Both sides. What the plan may write is the output, and in place the input too.
struct arrays {
    std::vector<std::unique_ptr<test_array>> owned;
    side in, out;

    explicit arrays(const transform_problem& p);
    problem_arrays pointers() const;
    void take_pictures();
    // Poison everywhere, noise as input (Hermitian halves for c2r), and a picture of it all.
    void fill();
    bool are_as_before() const;
    // Empty, or which float was written and belongs to no element.
    std::string stray_write() const;

private:
    test_array* add(const transform_problem& p, int64_t count);
};
