// SPDX-License-Identifier: Apache-2.0
// What all plan calls share: named argument checks, the blank problem, and the way from a filled record to a plan.
#pragma once
#include "include/qfftf.h"
#include "record/fft_plan.h"

#include <span>

// One documented demand on the arguments of a plan call.
template <class Arguments>
struct argument_check {
    const char* demand;
    bool (*holds)(const Arguments& arguments);
};

// The first demand that the arguments fail, in the order of the list, or null. Later checks may rely on earlier ones.
template <class Arguments>
const char* first_failed(std::span<const argument_check<Arguments>> checks, const Arguments& arguments) {
    for (const auto& check : checks)
        if (!check.holds(arguments)) return check.demand;
    return nullptr;
}

// A zeroed record with its kind, direction, form, flags (measured only for exactly that value) and thread count, or
// null.
fft_plan* new_problem(uint32_t kind, int64_t sign, int64_t split, unsigned flags);

// Plans the record and returns the plan, which may be another record. On failure releases it and returns null, as it
// does for a null record.
fft_plan* finish_plan_call(fft_plan* record);

// In elements. Far above any address space (2^52 bytes), far below where a product with a radix or 8 bytes would wrap.
constexpr int64_t largest_extent = int64_t{1} << 48;

// False for a layout that no address space holds: more elements than `largest_extent`, or a dimension of two or more
// elements that is longer. It keeps the solvers' products of sizes and strides within 64 bits.
bool layout_is_addressable(const fft_plan& plan);

// a * b for positive numbers, or the largest number where the product exceeds it.
inline int64_t saturating_multiply(int64_t a, int64_t b) {
    int64_t product;
    return __builtin_mul_overflow(a, b, &product) ? INT64_MAX : product;
}

// The low 32 bits of a product as a signed number: how the documented layout tests count.
inline int32_t multiply_32(int64_t a, int64_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// The two forms of the caller's arrays, seen as the library sees them.
inline float* as_floats(qsl_fftf_complex* array) { return reinterpret_cast<float*>(array); }
