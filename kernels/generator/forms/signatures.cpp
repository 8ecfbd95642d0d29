// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/forms/signatures.h"

namespace generator {

namespace {

constexpr signature one = {"direct_contig_kernel", "float* out, const float* in", ", const void*, const void*",
                           "out, in"};
constexpr signature one_strided = {"direct_strided_kernel", "float* out, const float* in, int64_t is, int64_t os",
                                   ", const void*", "out, in, is, os"};
constexpr signature lanes = {"many_kernel", "float* out, const float* in, int64_t is, int64_t os", "",
                             "out, in, is, os"};
constexpr signature lanes_apart = {"many_assemble_kernel",
                                   "float* out, const float* in, int64_t is, int64_t os, int64_t idist, int64_t odist",
                                   "", "out, in, is, os, idist, odist"};
constexpr signature groups = {"many_rows_kernel",
                              "float* out, const float* in, int64_t idist, int64_t odist, int64_t count", "",
                              "out, in, idist, odist, count"};
constexpr signature stage = {"stage_kernel", "const stage_record* stage, const float* in, float* out", "",
                             "stage, in, out"};
constexpr signature real_data = {
    "real_kernel",
    "[[maybe_unused]] float* a0, [[maybe_unused]] float* a1, [[maybe_unused]] float* b0, "
    "[[maybe_unused]] float* b1, [[maybe_unused]] const int64_t* s0, [[maybe_unused]] const int64_t* s1, "
    "[[maybe_unused]] const int64_t* s2, [[maybe_unused]] int64_t count, [[maybe_unused]] int64_t d0, "
    "[[maybe_unused]] int64_t d1",
    "", nullptr};
constexpr signature row_alone = {"direct_contig_kernel", "float* out, const float* in", ", const void*, const void*",
                                 nullptr};
constexpr signature cosines = {"redft00_kernel",
                               "const float* in, float* out, const int64_t* in_offsets, const int64_t* out_offsets, "
                               "int64_t count, int64_t d0, int64_t d1",
                               "", nullptr};
constexpr signature hermitian_stage = {"sorensen_kernel",
                                       "const sorensen_stage_record* stage, const float* in, float* out", "", nullptr};

}  // namespace

const signature& signature_of(const form& f) {
    switch (f.loop) {
        case shape::direct:
            return f.data == layout::contig ? one : one_strided;
        case shape::many:
            return lanes;
        case shape::assemble:
            return lanes_apart;
        case shape::rows:
            return groups;
        case shape::first:
        case shape::other:
        case shape::last:
            return stage;
        case shape::cosine_rows:
            return cosines;
        case shape::alone:
            return row_alone;
        default:
            return is_hermitian(f) ? hermitian_stage : real_data;
    }
}

}  // namespace generator
