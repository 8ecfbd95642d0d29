// SPDX-License-Identifier: Apache-2.0
#include "shim/measured_arrays.h"

#include "include/qfftf.h"
#include "shim/staged.h"

#include <algorithm>

namespace {

// Bytes from the first to the last element of a side, strides being positive; 0 when they can't be counted.
size_t span(const problem& p, bool in_side) {
    const bool is_complex = in_side ? p.complex_in() : p.complex_out();
    const int step = in_side ? p.in_step() : p.out_step();
    ptrdiff_t floats = step;
    for (int d = 0; d < p.rank; ++d) {
        const ptrdiff_t stride = in_side ? p.dims[d].is : p.dims[d].os;
        if (!add_product(floats, p.stored(d, is_complex) - 1, stride * step)) return 0;
    }
    for (int b = 0; b < p.batch_rank; ++b) {
        const ptrdiff_t stride = in_side ? p.batch[b].is : p.batch[b].os;
        if (!add_product(floats, p.batch[b].n - 1, stride * step)) return 0;
    }
    return static_cast<size_t>(floats) * sizeof(float);
}

float* new_array(size_t bytes) { return static_cast<float*>(bytes ? qsl_fftf_malloc(bytes) : nullptr); }

}  // namespace

measured_arrays::measured_arrays(const problem& p) : complete_(false) {
    const bool same_real = p.in == p.out;
    const bool exchanged = p.split && (p.in == p.out_imag || p.in_imag == p.out);
    if (exchanged || (p.split && p.kind == kind_c2c && same_real != (p.in_imag == p.out_imag))) return;
    const size_t in = span(p, true), out = span(p, false), both = std::max(in, out);
    if (in == 0 || out == 0) return;
    const bool imag_in = p.split && p.complex_in(), imag_out = p.split && p.complex_out();
    own_.in = new_array(same_real ? both : in);
    own_.out = same_real ? own_.in : new_array(out);
    if (imag_in) own_.in_imag = new_array(same_real ? both : in);
    if (imag_out) own_.out_imag = same_real && imag_in ? own_.in_imag : new_array(out);
    complete_ = own_.in && own_.out && (!imag_in || own_.in_imag) && (!imag_out || own_.out_imag);
}

measured_arrays::~measured_arrays() {
    if (own_.out != own_.in) qsl_fftf_free(own_.out);
    if (own_.out_imag != own_.in_imag) qsl_fftf_free(own_.out_imag);
    qsl_fftf_free(own_.in);
    qsl_fftf_free(own_.in_imag);
}
