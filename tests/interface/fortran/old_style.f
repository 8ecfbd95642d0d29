C     SPDX-License-Identifier: Apache-2.0
C     The Fortran names from a program without interfaces: everything by
C     address, plans as eight-byte integers.
      PROGRAM OLDSTL
      INTEGER*8 PLAN
      INTEGER*8 QSL_FFTF_PLAN_DFT_1D, QSL_FFTF_PLAN_DFT_2D
      INTEGER*8 QSL_FFTF_PLAN_DFT_R2C_1D, QSL_FFTF_PLAN_MANY_R2R
      INTEGER*8 QSL_FFTF_PLAN_GURU_DFT
      INTEGER QSL_FFTF_INIT_THREADS
      EXTERNAL QSL_FFTF_PLAN_DFT_1D, QSL_FFTF_PLAN_DFT_2D
      EXTERNAL QSL_FFTF_PLAN_DFT_R2C_1D, QSL_FFTF_PLAN_MANY_R2R
      EXTERNAL QSL_FFTF_PLAN_GURU_DFT, QSL_FFTF_INIT_THREADS
      COMPLEX X(16), Y(16), HALF(5)
      REAL A(8), B(8)
      INTEGER N(1), KINDS(1), DIMS(3,1), BATCH(3,1), I, K, FAILED
      COMPLEX*16 S
      DOUBLE PRECISION PI
      PARAMETER (PI = 3.14159265358979324D0)
      FAILED = 0
      IF (QSL_FFTF_INIT_THREADS() .NE. 1) FAILED = 1
      CALL QSL_FFTF_PLAN_WITH_NTHREADS(1)

      DO 10 I = 1, 16
        X(I) = CMPLX(REAL(I) / 16, 1 - REAL(I * I) / 256)
   10 CONTINUE
      PLAN = QSL_FFTF_PLAN_DFT_1D(16, X, Y, -1, 0)
      IF (PLAN .EQ. 0) FAILED = 2
      CALL QSL_FFTF_EXECUTE_DFT(PLAN, X, Y)
      CALL QSL_FFTF_DESTROY_PLAN(PLAN)
      DO 30 K = 0, 15
        S = 0
        DO 20 I = 0, 15
          S = S + X(I+1) * EXP(DCMPLX(0D0, -2 * PI * I * K / 16))
   20   CONTINUE
        IF (ABS(S - Y(K+1)) .GT. 1D-5) FAILED = 3
   30 CONTINUE

C     Both arrays have the size of the plan: 2 rows of 8.
      PLAN = QSL_FFTF_PLAN_DFT_2D(2, 8, X, Y, 1, 0)
      CALL QSL_FFTF_EXECUTE(PLAN)
      CALL QSL_FFTF_DESTROY_PLAN(PLAN)
      S = SUM(X)
      IF (ABS(S - Y(1)) .GT. 1D-5) FAILED = 4

      DO 40 I = 1, 8
        A(I) = REAL(I)
   40 CONTINUE
      PLAN = QSL_FFTF_PLAN_DFT_R2C_1D(8, A, HALF, 0)
      CALL QSL_FFTF_EXECUTE_DFT_R2C(PLAN, A, HALF)
      CALL QSL_FFTF_DESTROY_PLAN(PLAN)
      IF (ABS(HALF(1) - 36) .GT. 1E-5) FAILED = 5
      IF (ABS(HALF(5) + 4) .GT. 1E-5) FAILED = 6

C     Two Hartley transforms of 4 points; the embeddings are the sizes.
      N(1) = 4
      KINDS(1) = 2
      PLAN = QSL_FFTF_PLAN_MANY_R2R(1, N, 2, A, N, 1, 4, B, N, 1, 4,
     &                              KINDS, 0)
      CALL QSL_FFTF_EXECUTE_R2R(PLAN, A, B)
      CALL QSL_FFTF_DESTROY_PLAN(PLAN)
      IF (ABS(B(1) - 10) .GT. 1E-5) FAILED = 7
      IF (ABS(B(5) - 26) .GT. 1E-5) FAILED = 8

C     A copy of every second element: size, input and output stride.
      BATCH(1,1) = 8
      BATCH(2,1) = 2
      BATCH(3,1) = 1
      PLAN = QSL_FFTF_PLAN_GURU_DFT(0, DIMS, 1, BATCH, X, Y, -1, 0)
      CALL QSL_FFTF_EXECUTE_DFT(PLAN, X, Y)
      CALL QSL_FFTF_DESTROY_PLAN(PLAN)
      DO 50 I = 1, 8
        IF (Y(I) .NE. X(2 * I - 1)) FAILED = 9
   50 CONTINUE

      CALL QSL_FFTF_CLEANUP_THREADS
      IF (FAILED .NE. 0) THEN
        PRINT *, 'wrong, last at step', FAILED
        STOP 1
      END IF
      PRINT *, 'all names are right'
      END
