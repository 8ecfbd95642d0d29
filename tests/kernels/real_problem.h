// SPDX-License-Identifier: Apache-2.0
// One call of one kernel of real data on poisoned arrays, checked against sums in double precision.
#pragma once
#include <string>
#include <vector>

#include "kernels/generator/forms/forms.h"
#include "kernels/registry.h"
#include "placed_array.h"

enum class storage {
    complex_numbers,  // coefficients as pairs
    half_complex,     // real parts rising, imaginary parts falling from the end
    hartley,          // a number for each element
    plain,            // cosine transforms: as many numbers on either side
};

// Rows of input and what must come of them. Slots: element j of a sequence is slot j; of a spectrum, coefficient k has
// its real part in slot 2 k and its imaginary part in 2 k + 1, which coefficients 0 and n / 2 haven't.
class real_rows {
public:
    static constexpr int most = 9;

    real_rows(const generator::form& f, int n);

    std::vector<int> in_slots, out_slots;
    std::vector<double> in[most], out[most];  // by the order of the slots
};

struct real_problem {
    const generator::form* form;
    any_kernel kernel;
    int n;
    storage spectrum;
    int count;
    // Between elements and between rows, on the side of the sequence and on that of the spectrum; there they count
    // complex elements, or floats of half-complex and plain storage.
    int stride, distance, spectrum_stride, spectrum_distance;
    bool in_place = false;
    placement where = placement::between_guards;
};

bool is_forward(const generator::form& f);
int rows_done(const generator::form& f, int count);

std::string describe(const real_problem& p);
// Runs the kernel. Returns an empty text, or what went wrong.
std::string check(const real_problem& p, const real_rows& rows);
