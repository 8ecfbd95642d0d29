! SPDX-License-Identifier: Apache-2.0
! qfftf for Fortran: interfaces of every call and the constants, for "use qfftf". Compile this file with your program;
! module files differ between compilers, so none is installed.
!
! The calls are those of qfftf.h, which documents them. Sizes stand in C's order, slowest first: an array that is
! declared x(n1, n2) in Fortran has its first index fastest and is planned with n0 = n2 and n1 = n1, or n = [n2, n1].
! An optional array that is absent is a null pointer. A plan is a type(c_ptr); c_associated tells whether there is one.
!
!     use qfftf
!     type(c_ptr) :: plan
!     complex(c_float_complex) :: x(1024), y(1024)
!     plan = qsl_fftf_plan_dft_1d(1024, x, y, QSL_FFTF_FORWARD, QSL_FFTF_RULES)
!     call qsl_fftf_execute_dft(plan, x, y)
!     call qsl_fftf_destroy_plan(plan)
!
! Prefer the execute calls that take arrays: a compiler can't know that qsl_fftf_execute changes them.
!
! Pass whole arrays, or sections that are contiguous. Of any other section, x(1:n:2) or x(2, :), the compiler makes a
! temporary copy for the duration of a call: a plan would keep the address of an array that is gone, and an execute call
! would transform the copy. Plan with strides instead, by the many or guru calls, on the section's first element:
! qsl_fftf_plan_many_dft(1, [n], 1, x, istride=2, ...).
!
! Real transforms in place have one array under two types, of n / 2 + 1 complex numbers (for the sizes of the other
! dimensions see qfftf.h). Declare the complex one as a target, and the real one as a pointer to it that is contiguous,
! else it is copied too:
!
!     use, intrinsic :: iso_c_binding
!     complex(c_float_complex), target :: y(n / 2 + 1)
!     real(c_float), pointer, contiguous :: x(:)
!     call c_f_pointer(c_loc(y), x, [2 * size(y)])
!     plan = qsl_fftf_plan_dft_r2c_1d(n, x, y, QSL_FFTF_RULES)
!
! The version of the transforms is told by QFFTGetVersion; the text qsl_fftf_version of the C header isn't here, since
! not every linker lets a Fortran program see a variable of a shared library.
module qfftf
    use, intrinsic :: iso_c_binding
    implicit none
    public

    integer(c_int), parameter :: QSL_FFTF_FORWARD = -1
    integer(c_int), parameter :: QSL_FFTF_BACKWARD = 1

    integer(c_int), parameter :: QSL_FFTF_RULES = 0
    integer(c_int), parameter :: QSL_FFTF_MEASURED = 32

    integer(c_int), parameter :: QSL_FFTF_R2HC = 0
    integer(c_int), parameter :: QSL_FFTF_HC2R = 1
    integer(c_int), parameter :: QSL_FFTF_DHT = 2
    integer(c_int), parameter :: QSL_FFTF_REDFT00 = 3
    integer(c_int), parameter :: QSL_FFTF_REDFT01 = 4
    integer(c_int), parameter :: QSL_FFTF_REDFT10 = 5
    integer(c_int), parameter :: QSL_FFTF_REDFT11 = 6
    integer(c_int), parameter :: QSL_FFTF_RODFT00 = 7
    integer(c_int), parameter :: QSL_FFTF_RODFT01 = 8
    integer(c_int), parameter :: QSL_FFTF_RODFT10 = 9
    integer(c_int), parameter :: QSL_FFTF_RODFT11 = 10

    type, bind(c) :: fft_iodim
        integer(c_int) :: n, is, os
    end type

    type, bind(c) :: fft_iodim64
        integer(c_int64_t) :: n, is, os
    end type

    type, bind(c) :: qfft_version
        character(kind=c_char), dimension(100) :: product_name, product_version, component_name, component_version, &
            component_revision, compiler, module_name, module_version
    end type

    interface
        ! Complex transforms.
        function qsl_fftf_plan_dft_1d(n, in, out, sign, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n, sign, flags
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_2d(n0, n1, in, out, sign, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, sign, flags
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_3d(n0, n1, n2, in, out, sign, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, n2, sign, flags
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft(rank, n, in, out, sign, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, sign, flags
            integer(c_int), intent(in) :: n(*)
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_many_dft(rank, n, howmany, in, inembed, istride, idist, out, onembed, ostride, &
            odist, sign, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany, istride, idist, ostride, odist, sign, flags
            integer(c_int), intent(in) :: n(*)
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            integer(c_int), intent(in), optional :: inembed(*), onembed(*)
            type(c_ptr) :: answer
        end function

        ! Real to complex.
        function qsl_fftf_plan_dft_r2c_1d(n, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n, flags
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_r2c_2d(n0, n1, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, flags
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_r2c_3d(n0, n1, n2, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, n2, flags
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_r2c(rank, n, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, flags
            integer(c_int), intent(in) :: n(*)
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_many_dft_r2c(rank, n, howmany, in, inembed, istride, idist, out, onembed, &
            ostride, odist, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany, istride, idist, ostride, odist, flags
            integer(c_int), intent(in) :: n(*)
            real(c_float), intent(inout) :: in(*)
            integer(c_int), intent(in), optional :: inembed(*), onembed(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function

        ! Complex to real.
        function qsl_fftf_plan_dft_c2r_1d(n, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n, flags
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_c2r_2d(n0, n1, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, flags
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_c2r_3d(n0, n1, n2, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, n2, flags
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_dft_c2r(rank, n, in, out, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, flags
            integer(c_int), intent(in) :: n(*)
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_many_dft_c2r(rank, n, howmany, in, inembed, istride, idist, out, onembed, &
            ostride, odist, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany, istride, idist, ostride, odist, flags
            integer(c_int), intent(in) :: n(*)
            complex(c_float_complex), intent(inout) :: in(*)
            integer(c_int), intent(in), optional :: inembed(*), onembed(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function

        ! Real to real.
        function qsl_fftf_plan_r2r_1d(n, in, out, kind, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n, kind, flags
            real(c_float), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_r2r_2d(n0, n1, in, out, kind0, kind1, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, kind0, kind1, flags
            real(c_float), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_r2r_3d(n0, n1, n2, in, out, kind0, kind1, kind2, flags) bind(c) result(answer)
            import
            integer(c_int), value :: n0, n1, n2, kind0, kind1, kind2, flags
            real(c_float), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_r2r(rank, n, in, out, kinds, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, flags
            integer(c_int), intent(in) :: n(*), kinds(*)
            real(c_float), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_many_r2r(rank, n, howmany, in, inembed, istride, idist, out, onembed, ostride, &
            odist, kinds, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany, istride, idist, ostride, odist, flags
            integer(c_int), intent(in) :: n(*), kinds(*)
            real(c_float), intent(inout) :: in(*), out(*)
            integer(c_int), intent(in), optional :: inembed(*), onembed(*)
            type(c_ptr) :: answer
        end function

        ! Upsampling.
        function qsl_fftf_plan_upsampling_2d(n0, n1, m0, m1, in, out, flags, shift_x, shift_y) bind(c) &
            result(answer)
            import
            integer(c_int), value :: n0, n1, m0, m1, flags
            real(c_float), intent(inout) :: in(*), out(*)
            real(c_float), value :: shift_x, shift_y
            type(c_ptr) :: answer
        end function

        ! Guru planning: dims and howmany_dims reach the library as they stand.
        function qsl_fftf_plan_guru_dft(rank, dims, howmany_rank, howmany_dims, in, out, sign, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, sign, flags
            type(fft_iodim), intent(in), optional :: dims(*), howmany_dims(*)
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_dft(rank, dims, howmany_rank, howmany_dims, in, out, sign, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, sign, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            complex(c_float_complex), intent(inout) :: in(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru_dft_r2c(rank, dims, howmany_rank, howmany_dims, in, out, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim), intent(in) :: dims(*)
            type(fft_iodim), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_dft_r2c(rank, dims, howmany_rank, howmany_dims, in, out, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru_dft_c2r(rank, dims, howmany_rank, howmany_dims, in, out, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim), intent(in) :: dims(*)
            type(fft_iodim), intent(in), optional :: howmany_dims(*)
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_dft_c2r(rank, dims, howmany_rank, howmany_dims, in, out, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru_r2r(rank, dims, howmany_rank, howmany_dims, in, out, kinds, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim), intent(in), optional :: dims(*), howmany_dims(*)
            real(c_float), intent(inout) :: in(*), out(*)
            integer(c_int), intent(in), optional :: kinds(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_r2r(rank, dims, howmany_rank, howmany_dims, in, out, kinds, flags) bind(c) &
            result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in(*), out(*)
            integer(c_int), intent(in) :: kinds(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru_split_dft(rank, dims, howmany_rank, howmany_dims, in_re, in_im, out_re, &
            out_im, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim), intent(in) :: dims(*)
            type(fft_iodim), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in_re(*), in_im(*), out_re(*), out_im(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_split_dft(rank, dims, howmany_rank, howmany_dims, in_re, in_im, out_re, &
            out_im, flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in_re(*), in_im(*), out_re(*), out_im(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru_split_dft_r2c(rank, dims, howmany_rank, howmany_dims, in, out_re, out_im, &
            flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim), intent(in) :: dims(*)
            type(fft_iodim), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in(*), out_re(*), out_im(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_split_dft_r2c(rank, dims, howmany_rank, howmany_dims, in, out_re, out_im, &
            flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in(*), out_re(*), out_im(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru_split_dft_c2r(rank, dims, howmany_rank, howmany_dims, in_re, in_im, out, &
            flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim), intent(in) :: dims(*)
            type(fft_iodim), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in_re(*), in_im(*), out(*)
            type(c_ptr) :: answer
        end function
        function qsl_fftf_plan_guru64_split_dft_c2r(rank, dims, howmany_rank, howmany_dims, in_re, in_im, out, &
            flags) bind(c) result(answer)
            import
            integer(c_int), value :: rank, howmany_rank, flags
            type(fft_iodim64), intent(in) :: dims(*)
            type(fft_iodim64), intent(in), optional :: howmany_dims(*)
            real(c_float), intent(inout) :: in_re(*), in_im(*), out(*)
            type(c_ptr) :: answer
        end function

        ! Execution.
        subroutine qsl_fftf_execute(plan) bind(c)
            import
            type(c_ptr), value :: plan
        end subroutine
        subroutine qsl_fftf_execute_dft(plan, in, out) bind(c)
            import
            type(c_ptr), value :: plan
            complex(c_float_complex), intent(inout) :: in(*), out(*)
        end subroutine
        subroutine qsl_fftf_execute_dft_r2c(plan, in, out) bind(c)
            import
            type(c_ptr), value :: plan
            real(c_float), intent(inout) :: in(*)
            complex(c_float_complex), intent(inout) :: out(*)
        end subroutine
        subroutine qsl_fftf_execute_dft_c2r(plan, in, out) bind(c)
            import
            type(c_ptr), value :: plan
            complex(c_float_complex), intent(inout) :: in(*)
            real(c_float), intent(inout) :: out(*)
        end subroutine
        subroutine qsl_fftf_execute_r2r(plan, in, out) bind(c)
            import
            type(c_ptr), value :: plan
            real(c_float), intent(inout) :: in(*), out(*)
        end subroutine
        subroutine qsl_fftf_execute_split_dft(plan, in_re, in_im, out_re, out_im) bind(c)
            import
            type(c_ptr), value :: plan
            real(c_float), intent(inout) :: in_re(*), in_im(*), out_re(*), out_im(*)
        end subroutine
        subroutine qsl_fftf_execute_split_dft_r2c(plan, in, out_re, out_im) bind(c)
            import
            type(c_ptr), value :: plan
            real(c_float), intent(inout) :: in(*), out_re(*), out_im(*)
        end subroutine
        subroutine qsl_fftf_execute_split_dft_c2r(plan, in_re, in_im, out) bind(c)
            import
            type(c_ptr), value :: plan
            real(c_float), intent(inout) :: in_re(*), in_im(*), out(*)
        end subroutine

        ! Housekeeping, memory and threads.
        subroutine qsl_fftf_destroy_plan(plan) bind(c)
            import
            type(c_ptr), value :: plan
        end subroutine
        subroutine qsl_fftf_cleanup() bind(c)
            import
        end subroutine
        subroutine qsl_fftf_set_timelimit(seconds) bind(c)
            import
            real(c_double), value :: seconds
        end subroutine
        function qsl_fftf_malloc(size) bind(c) result(answer)
            import
            integer(c_int64_t), value :: size
            type(c_ptr) :: answer
        end function
        subroutine qsl_fftf_free(pointer) bind(c)
            import
            type(c_ptr), value :: pointer
        end subroutine
        function qsl_fftf_init_threads() bind(c) result(answer)
            import
            integer(c_int) :: answer
        end function
        subroutine qsl_fftf_cleanup_threads() bind(c)
            import
        end subroutine
        subroutine qsl_fftf_plan_with_nthreads(n) bind(c)
            import
            integer(c_int), value :: n
        end subroutine
        subroutine qsl_fftf_plan_with_nthreads_local(n) bind(c)
            import
            integer(c_int), value :: n
        end subroutine

        function QFFTGetVersion(record) bind(c, name='QFFTGetVersion') result(answer)
            import
            type(qfft_version), intent(inout) :: record
            integer(c_int) :: answer
        end function
    end interface
end module
