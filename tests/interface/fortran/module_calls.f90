! SPDX-License-Identifier: Apache-2.0
! A Fortran program on the module qfftf: transforms of every kind through it, each against a sum or its inverse.
! Ends with an error code when one is wrong.
program module_calls
    use qfftf
    implicit none
    integer, parameter :: dp = kind(1.0d0)
    real(dp), parameter :: pi = 3.14159265358979324_dp
    integer :: failures = 0

    call complex_transforms()
    call batches()
    call real_transforms()
    call cosine_transforms()
    call guru_and_split()
    call upsampling()
    call refusals_and_constants()
    call memory_and_threads()
    call real_in_place()
    call strided_section()
    if (failures > 0) error stop 1
    print '(a)', 'all calls of the module are right'

contains

    subroutine expect(holds, what)
        logical, intent(in) :: holds
        character(*), intent(in) :: what
        if (holds) return
        failures = failures + 1
        print '(2a)', 'wrong: ', what
    end subroutine

    function noise(count) result(x)
        integer, intent(in) :: count
        real(c_float) :: x(count)
        call random_number(x)
        x = x - 0.5
    end function

    function complex_noise(count) result(x)
        integer, intent(in) :: count
        complex(c_float_complex) :: x(count)
        x = cmplx(noise(count), noise(count), c_float_complex)
    end function

    ! The transform by its definition.
    function dft(x, sign) result(y)
        complex(c_float_complex), intent(in) :: x(:)
        integer, intent(in) :: sign
        complex(dp) :: y(size(x))
        integer :: j, k, n
        n = size(x)
        do k = 0, n - 1
            y(k + 1) = sum([(x(j + 1) * exp(cmplx(0, sign * 2 * pi * mod(j * k, n) / n, dp)), j = 0, n - 1)])
        end do
    end function

    subroutine complex_transforms()
        complex(c_float_complex) :: x(24), y(24), z(24), rows(6, 4), out(6, 4), cube(2, 3, 4)
        type(c_ptr) :: plan
        integer :: i

        x = complex_noise(24)
        plan = qsl_fftf_plan_dft_1d(24, x, y, QSL_FFTF_FORWARD, QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, x, y)
        call expect(maxval(abs(y - dft(x, -1))) < 1e-5, 'qsl_fftf_plan_dft_1d forward')
        z = y
        call qsl_fftf_destroy_plan(plan)
        plan = qsl_fftf_plan_dft(1, [24], z, z, QSL_FFTF_BACKWARD, QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, z, z)
        call expect(maxval(abs(z / 24 - x)) < 1e-6, 'qsl_fftf_plan_dft backward in place')
        call qsl_fftf_destroy_plan(plan)

        ! x(6, 4): the first index is the fast one, so the sizes are 4 and 6.
        rows = reshape(x, [6, 4])
        plan = qsl_fftf_plan_dft_2d(4, 6, rows, out, QSL_FFTF_FORWARD, QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, rows, out)
        call qsl_fftf_destroy_plan(plan)
        do i = 1, 4
            rows(:, i) = cmplx(dft(rows(:, i), -1), kind=c_float_complex)
        end do
        do i = 1, 6
            rows(i, :) = cmplx(dft(rows(i, :), -1), kind=c_float_complex)
        end do
        call expect(maxval(abs(out - rows)) < 1e-4, 'qsl_fftf_plan_dft_2d')

        cube = reshape(x, [2, 3, 4])
        plan = qsl_fftf_plan_dft_3d(4, 3, 2, cube, cube, QSL_FFTF_FORWARD, QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, cube, cube)
        call qsl_fftf_destroy_plan(plan)
        call expect(abs(cube(1, 1, 1) - sum(x)) < 1e-5, 'qsl_fftf_plan_dft_3d')
    end subroutine

    subroutine batches()
        complex(c_float_complex) :: x(40), y(40)
        type(c_ptr) :: plan
        integer :: t
        x = complex_noise(40)
        plan = qsl_fftf_plan_many_dft(1, [8], 5, x, istride=5, idist=1, out=y, ostride=1, odist=8, &
            sign=QSL_FFTF_FORWARD, flags=QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, x, y)
        do t = 0, 4
            call expect(maxval(abs(y(8 * t + 1:8 * t + 8) - dft(x(t + 1::5), -1))) < 1e-5, 'qsl_fftf_plan_many_dft')
        end do
        call qsl_fftf_destroy_plan(plan)
    end subroutine

    subroutine real_transforms()
        real(c_float) :: x(30), back(30)
        complex(c_float_complex) :: y(16)
        complex(dp) :: whole(30)
        type(c_ptr) :: forth, there
        x = noise(30)
        forth = qsl_fftf_plan_dft_r2c_1d(30, x, y, QSL_FFTF_RULES)
        there = qsl_fftf_plan_dft_c2r_1d(30, y, back, QSL_FFTF_RULES)
        call qsl_fftf_execute_dft_r2c(forth, x, y)
        whole = dft(cmplx(x, 0, c_float_complex), -1)
        call expect(maxval(abs(y - whole(1:16))) < 1e-5, 'qsl_fftf_plan_dft_r2c_1d')
        call qsl_fftf_execute_dft_c2r(there, y, back)
        call expect(maxval(abs(back / 30 - x)) < 1e-6, 'qsl_fftf_plan_dft_c2r_1d')
        call qsl_fftf_destroy_plan(forth)
        call qsl_fftf_destroy_plan(there)
    end subroutine

    subroutine cosine_transforms()
        real(c_float) :: x(12), y(12)
        type(c_ptr) :: plan
        integer :: j, k
        x = noise(12)
        plan = qsl_fftf_plan_r2r_1d(12, x, y, QSL_FFTF_REDFT10, QSL_FFTF_RULES)
        call qsl_fftf_execute_r2r(plan, x, y)
        call qsl_fftf_destroy_plan(plan)
        do k = 0, 11
            call expect(abs(y(k + 1) - 2 * sum([(x(j + 1) * cos(pi * (j + 0.5_dp) * k / 12), j = 0, 11)])) < 1e-5, &
                'qsl_fftf_plan_r2r_1d')
        end do
        plan = qsl_fftf_plan_r2r_2d(3, 4, x, y, QSL_FFTF_RODFT00, QSL_FFTF_DHT, QSL_FFTF_RULES)
        call expect(c_associated(plan), 'qsl_fftf_plan_r2r_2d')
        call qsl_fftf_destroy_plan(plan)
        plan = qsl_fftf_plan_r2r(2, [3, 4], x, y, [QSL_FFTF_RODFT00, QSL_FFTF_DHT], QSL_FFTF_RULES)
        call expect(c_associated(plan), 'qsl_fftf_plan_r2r')
        call qsl_fftf_destroy_plan(plan)
    end subroutine

    subroutine guru_and_split()
        complex(c_float_complex) :: x(24), y(24), z(24)
        real(c_float) :: in_re(8), in_im(8), out_re(8), out_im(8)
        type(c_ptr) :: plan
        x = complex_noise(24)
        plan = qsl_fftf_plan_guru64_dft(1, [fft_iodim64(8_c_int64_t, 3_c_int64_t, 1_c_int64_t)], 1, &
            [fft_iodim64(3_c_int64_t, 1_c_int64_t, 8_c_int64_t)], x, y, QSL_FFTF_FORWARD, QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, x, y)
        call qsl_fftf_destroy_plan(plan)
        call expect(maxval(abs(y(9:16) - dft(x(2::3), -1))) < 1e-5, 'qsl_fftf_plan_guru64_dft')

        ! rank 0 copies: no transform dimensions at all
        plan = qsl_fftf_plan_guru_dft(0, howmany_rank=2, howmany_dims=[fft_iodim(4, 6, 1), fft_iodim(6, 1, 4)], &
            in=x, out=z, sign=QSL_FFTF_FORWARD, flags=QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, x, z)
        call qsl_fftf_destroy_plan(plan)
        call expect(all(reshape(z, [4, 6]) == transpose(reshape(x, [6, 4]))), 'qsl_fftf_plan_guru_dft of rank 0')

        in_re = real(x(1:8))
        in_im = aimag(x(1:8))
        plan = qsl_fftf_plan_guru_split_dft(1, [fft_iodim(8, 1, 1)], 0, in_re=in_re, in_im=in_im, out_re=out_re, &
            out_im=out_im, flags=QSL_FFTF_RULES)
        call qsl_fftf_execute_split_dft(plan, in_re, in_im, out_re, out_im)
        call qsl_fftf_destroy_plan(plan)
        call expect(maxval(abs(cmplx(out_re, out_im) - dft(x(1:8), -1))) < 1e-5, 'qsl_fftf_plan_guru_split_dft')
    end subroutine

    subroutine upsampling()
        real(c_float) :: small(4, 6), large(8, 12)
        type(c_ptr) :: plan
        small = 2
        plan = qsl_fftf_plan_upsampling_2d(6, 4, 12, 8, small, large, QSL_FFTF_RULES, 0.0_c_float, 0.0_c_float)
        call qsl_fftf_execute_r2r(plan, small, large)
        call qsl_fftf_destroy_plan(plan)
        call expect(maxval(abs(large - 0.5)) < 1e-5, 'qsl_fftf_plan_upsampling_2d')
    end subroutine

    subroutine refusals_and_constants()
        complex(c_float_complex) :: x(4)
        type(qfft_version) :: version
        call expect(.not. c_associated(qsl_fftf_plan_dft_1d(4, x, x, 0, QSL_FFTF_RULES)), 'a sign of 0 gives null')
        call expect(.not. c_associated(qsl_fftf_plan_dft_1d(0, x, x, QSL_FFTF_FORWARD, QSL_FFTF_RULES)), 'a size of 0')
        call expect(QFFTGetVersion(version) == 1, 'QFFTGetVersion')
        call expect(all(version%product_name(1:13) == &
            ['M', 'o', 'r', 'w', 'e', 'n', ' ', 'L', 'a', 't', 'h', 'e', c_null_char]), 'product_name')
        call expect(QSL_FFTF_RODFT11 == 10 .and. QSL_FFTF_MEASURED == 32, 'constants')
    end subroutine

    ! One array under two types, as the head of the module tells.
    subroutine real_in_place()
        use, intrinsic :: iso_c_binding, only: c_loc
        integer, parameter :: n = 20
        complex(c_float_complex), target :: y(n / 2 + 1)
        real(c_float), pointer, contiguous :: x(:)
        real(c_float) :: input(n)
        type(c_ptr) :: forth, back
        call c_f_pointer(c_loc(y), x, [2 * size(y)])
        forth = qsl_fftf_plan_dft_r2c_1d(n, x, y, QSL_FFTF_RULES)
        back = qsl_fftf_plan_dft_c2r_1d(n, y, x, QSL_FFTF_RULES)
        input = noise(n)
        x(1:n) = input
        call qsl_fftf_execute_dft_r2c(forth, x, y)
        call expect(abs(y(1) - sum(input)) < 1e-5, 'real to complex in place')
        call qsl_fftf_execute_dft_c2r(back, y, x)
        call expect(maxval(abs(x(1:n) / n - input)) < 1e-6, 'there and back in place')
        call qsl_fftf_destroy_plan(forth)
        call qsl_fftf_destroy_plan(back)
    end subroutine

    ! Every second element, by a stride where a section would be copied.
    subroutine strided_section()
        complex(c_float_complex) :: x(32), y(16)
        type(c_ptr) :: plan
        x = complex_noise(32)
        plan = qsl_fftf_plan_many_dft(1, [16], 1, x, istride=2, idist=1, out=y, ostride=1, odist=1, &
            sign=QSL_FFTF_FORWARD, flags=QSL_FFTF_RULES)
        call qsl_fftf_execute_dft(plan, x, y)
        call expect(maxval(abs(y - dft(x(1:31:2), -1))) < 1e-5, 'a strided section')
        call qsl_fftf_destroy_plan(plan)
    end subroutine

    subroutine memory_and_threads()
        complex(c_float_complex), pointer :: x(:)
        type(c_ptr) :: memory, plan
        call expect(qsl_fftf_init_threads() == 1, 'qsl_fftf_init_threads')
        call qsl_fftf_plan_with_nthreads(2)
        call qsl_fftf_set_timelimit(0.5_c_double)
        memory = qsl_fftf_malloc(8 * 64_c_int64_t)
        call c_f_pointer(memory, x, [64])
        call expect(all(x == 0), 'qsl_fftf_malloc gives zeros')
        plan = qsl_fftf_plan_dft_1d(64, x, x, QSL_FFTF_FORWARD, QSL_FFTF_MEASURED)
        x = 0
        x(1) = 1
        call qsl_fftf_execute(plan)
        call expect(all(x == 1), 'the transform of an impulse, measured')
        call qsl_fftf_destroy_plan(plan)
        call qsl_fftf_free(memory)
        call qsl_fftf_plan_with_nthreads(1)
        call qsl_fftf_cleanup_threads()
        call qsl_fftf_cleanup()
    end subroutine
end program
