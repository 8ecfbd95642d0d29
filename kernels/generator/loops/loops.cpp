// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/loops/loops.h"

namespace generator {

loop_printer loop_of(shape s) {
    switch (s) {
        case shape::direct:
        case shape::many:
        case shape::assemble:
            return print_single;
        case shape::rows:
            return print_rows;
        case shape::first:
            return print_first_stage;
        case shape::other:
            return print_other_stage;
        case shape::last:
            return print_last_stage;
        case shape::hermitian_first:
            return print_hermitian_first;
        case shape::hermitian_other:
            return print_hermitian_other;
        case shape::hermitian_last:
            return print_hermitian_last;
        default:
            return print_real;
    }
}

}  // namespace generator
