! SPDX-License-Identifier: Apache-2.0
! A Fortran program on the module qfftf; compile qfftf.f90 of the installation with it. The first index of a Fortran array
! runs fastest, so its sizes are named in reverse.
program waves
    use qfftf
    implicit none
    integer, parameter :: columns = 12, rows = 10
    complex(c_float_complex) :: field(columns, rows), spectrum(columns, rows)
    real :: turn
    integer :: i, j
    type(c_ptr) :: plan

    plan = qsl_fftf_plan_dft_2d(rows, columns, field, spectrum, QSL_FFTF_FORWARD, QSL_FFTF_RULES)
    if (.not. c_associated(plan)) error stop 'no plan'
    turn = 2 * acos(-1.0)
    do j = 1, rows
        do i = 1, columns
            field(i, j) = exp(cmplx(0.0, turn * (3 * (i - 1) / real(columns) + 2 * (j - 1) / real(rows))))
        end do
    end do
    call qsl_fftf_execute_dft(plan, field, spectrum)
    do j = 1, rows
        do i = 1, columns
            if (abs(spectrum(i, j)) > 1.0) print '(a,i0,a,i0,a,f5.1)', 'waves: ', i - 1, ' and ', j - 1, ', sum ', &
                abs(spectrum(i, j))
        end do
    end do
    call qsl_fftf_destroy_plan(plan)
end program
! Prints:
! waves: 3 and 2, sum 120.0
