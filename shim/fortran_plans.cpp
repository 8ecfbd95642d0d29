// SPDX-License-Identifier: Apache-2.0
// The plan calls of old Fortran: the plan comes first, everything by address, sizes in Fortran's order. The guru calls
// take sizes and strides as separate arrays, and their dimensions aren't reversed, but their kinds are.
#include "shim/fortran.h"
#include "shim/include/fftw3.h"

using plan_t = fftwf_plan*;
using kind_t = fftwf_r2r_kind;
using complex_array = fftwf_complex*;

namespace {

kind_t kind_of(const int* kind) { return static_cast<kind_t>(*kind); }

// Triples from three arrays.
struct triples {
    fftwf_iodim64 list[most_dims];
    bool fits;
    triples(const int* count, const int* n, const int* is, const int* os) : fits(*count <= most_dims) {
        for (int i = 0; fits && i < *count; ++i) list[i] = {n[i], is[i], os[i]};
    }
};

struct guru_dims {
    int rank;
    int howmany_rank;
    triples dims;
    triples howmany;
    bool fit() const { return dims.fits && howmany.fits; }
};

}  // namespace

// Complex.

FORTRAN(plan_dft, (plan_t p, const int* rank, const int* n, complex_array in, complex_array out, const int* sign,
                   const int* flags)) {
    *p = fftwf_plan_dft(*rank, reversed<int>(*rank, n).get(), in, out, *sign, *flags);
}
FORTRAN(plan_dft_1d, (plan_t p, const int* n, complex_array in, complex_array out, const int* sign, const int* flags)) {
    *p = fftwf_plan_dft_1d(*n, in, out, *sign, *flags);
}
FORTRAN(plan_dft_2d, (plan_t p, const int* nx, const int* ny, complex_array in, complex_array out, const int* sign,
                      const int* flags)) {
    *p = fftwf_plan_dft_2d(*ny, *nx, in, out, *sign, *flags);
}
FORTRAN(plan_dft_3d, (plan_t p, const int* nx, const int* ny, const int* nz, complex_array in, complex_array out,
                      const int* sign, const int* flags)) {
    *p = fftwf_plan_dft_3d(*nz, *ny, *nx, in, out, *sign, *flags);
}
FORTRAN(plan_many_dft, (plan_t p, const int* rank, const int* n, const int* howmany, complex_array in,
                        const int* inembed, const int* istride, const int* idist, complex_array out, const int* onembed,
                        const int* ostride, const int* odist, const int* sign, const int* flags)) {
    const reversed<int> sizes(*rank, n), i(*rank, inembed), o(*rank, onembed);
    *p = fftwf_plan_many_dft(*rank, sizes.get(), *howmany, in, i.get(), *istride, *idist, out, o.get(), *ostride,
                             *odist, *sign, *flags);
}
FORTRAN(plan_guru_dft,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, complex_array in, complex_array out, const int* sign, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    *p = g.fit() ? fftwf_plan_guru64_dft(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, in, out, *sign, *flags)
                 : nullptr;
}
FORTRAN(plan_guru_split_dft,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, float* ri, float* ii, float* ro, float* io, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    *p = g.fit()
             ? fftwf_plan_guru64_split_dft(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, ri, ii, ro, io, *flags)
             : nullptr;
}

// Real to complex.

FORTRAN(plan_dft_r2c, (plan_t p, const int* rank, const int* n, float* in, complex_array out, const int* flags)) {
    *p = fftwf_plan_dft_r2c(*rank, reversed<int>(*rank, n).get(), in, out, *flags);
}
FORTRAN(plan_dft_r2c_1d, (plan_t p, const int* n, float* in, complex_array out, const int* flags)) {
    *p = fftwf_plan_dft_r2c_1d(*n, in, out, *flags);
}
FORTRAN(plan_dft_r2c_2d, (plan_t p, const int* nx, const int* ny, float* in, complex_array out, const int* flags)) {
    *p = fftwf_plan_dft_r2c_2d(*ny, *nx, in, out, *flags);
}
FORTRAN(plan_dft_r2c_3d,
        (plan_t p, const int* nx, const int* ny, const int* nz, float* in, complex_array out, const int* flags)) {
    *p = fftwf_plan_dft_r2c_3d(*nz, *ny, *nx, in, out, *flags);
}
FORTRAN(plan_many_dft_r2c, (plan_t p, const int* rank, const int* n, const int* howmany, float* in, const int* inembed,
                            const int* istride, const int* idist, complex_array out, const int* onembed,
                            const int* ostride, const int* odist, const int* flags)) {
    const reversed<int> sizes(*rank, n), i(*rank, inembed), o(*rank, onembed);
    *p = fftwf_plan_many_dft_r2c(*rank, sizes.get(), *howmany, in, i.get(), *istride, *idist, out, o.get(), *ostride,
                                 *odist, *flags);
}
FORTRAN(plan_guru_dft_r2c,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, float* in, complex_array out, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    *p = g.fit() ? fftwf_plan_guru64_dft_r2c(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, in, out, *flags)
                 : nullptr;
}
FORTRAN(plan_guru_split_dft_r2c,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, float* in, float* ro, float* io, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    *p = g.fit()
             ? fftwf_plan_guru64_split_dft_r2c(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, in, ro, io, *flags)
             : nullptr;
}

// Complex to real.

FORTRAN(plan_dft_c2r, (plan_t p, const int* rank, const int* n, complex_array in, float* out, const int* flags)) {
    *p = fftwf_plan_dft_c2r(*rank, reversed<int>(*rank, n).get(), in, out, *flags);
}
FORTRAN(plan_dft_c2r_1d, (plan_t p, const int* n, complex_array in, float* out, const int* flags)) {
    *p = fftwf_plan_dft_c2r_1d(*n, in, out, *flags);
}
FORTRAN(plan_dft_c2r_2d, (plan_t p, const int* nx, const int* ny, complex_array in, float* out, const int* flags)) {
    *p = fftwf_plan_dft_c2r_2d(*ny, *nx, in, out, *flags);
}
FORTRAN(plan_dft_c2r_3d,
        (plan_t p, const int* nx, const int* ny, const int* nz, complex_array in, float* out, const int* flags)) {
    *p = fftwf_plan_dft_c2r_3d(*nz, *ny, *nx, in, out, *flags);
}
FORTRAN(plan_many_dft_c2r, (plan_t p, const int* rank, const int* n, const int* howmany, complex_array in,
                            const int* inembed, const int* istride, const int* idist, float* out, const int* onembed,
                            const int* ostride, const int* odist, const int* flags)) {
    const reversed<int> sizes(*rank, n), i(*rank, inembed), o(*rank, onembed);
    *p = fftwf_plan_many_dft_c2r(*rank, sizes.get(), *howmany, in, i.get(), *istride, *idist, out, o.get(), *ostride,
                                 *odist, *flags);
}
FORTRAN(plan_guru_dft_c2r,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, complex_array in, float* out, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    *p = g.fit() ? fftwf_plan_guru64_dft_c2r(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, in, out, *flags)
                 : nullptr;
}
FORTRAN(plan_guru_split_dft_c2r,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, float* ri, float* ii, float* out, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    *p = g.fit()
             ? fftwf_plan_guru64_split_dft_c2r(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, ri, ii, out, *flags)
             : nullptr;
}

// Real to real.

FORTRAN(plan_r2r, (plan_t p, const int* rank, const int* n, float* in, float* out, const int* kind, const int* flags)) {
    const reversed<int> sizes(*rank, n);
    const reversed<kind_t> kinds(*rank, kind);
    *p = fftwf_plan_r2r(*rank, sizes.get(), in, out, kinds.get(), *flags);
}
FORTRAN(plan_r2r_1d, (plan_t p, const int* n, float* in, float* out, const int* kind, const int* flags)) {
    *p = fftwf_plan_r2r_1d(*n, in, out, kind_of(kind), *flags);
}
FORTRAN(plan_r2r_2d, (plan_t p, const int* nx, const int* ny, float* in, float* out, const int* kindx, const int* kindy,
                      const int* flags)) {
    *p = fftwf_plan_r2r_2d(*ny, *nx, in, out, kind_of(kindy), kind_of(kindx), *flags);
}
FORTRAN(plan_r2r_3d, (plan_t p, const int* nx, const int* ny, const int* nz, float* in, float* out, const int* kindx,
                      const int* kindy, const int* kindz, const int* flags)) {
    *p = fftwf_plan_r2r_3d(*nz, *ny, *nx, in, out, kind_of(kindz), kind_of(kindy), kind_of(kindx), *flags);
}
FORTRAN(plan_many_r2r, (plan_t p, const int* rank, const int* n, const int* howmany, float* in, const int* inembed,
                        const int* istride, const int* idist, float* out, const int* onembed, const int* ostride,
                        const int* odist, const int* kind, const int* flags)) {
    const reversed<int> sizes(*rank, n), i(*rank, inembed), o(*rank, onembed);
    const reversed<kind_t> kinds(*rank, kind);
    *p = fftwf_plan_many_r2r(*rank, sizes.get(), *howmany, in, i.get(), *istride, *idist, out, o.get(), *ostride,
                             *odist, kinds.get(), *flags);
}
FORTRAN(plan_guru_r2r,
        (plan_t p, const int* rank, const int* n, const int* is, const int* os, const int* howmany_rank, const int* h_n,
         const int* h_is, const int* h_os, float* in, float* out, const int* kind, const int* flags)) {
    const guru_dims g = {*rank, *howmany_rank, {rank, n, is, os}, {howmany_rank, h_n, h_is, h_os}};
    const reversed<kind_t> kinds(*rank, kind);
    *p = g.fit()
             ? fftwf_plan_guru64_r2r(g.rank, g.dims.list, g.howmany_rank, g.howmany.list, in, out, kinds.get(), *flags)
             : nullptr;
}
