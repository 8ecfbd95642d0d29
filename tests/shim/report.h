/* SPDX-License-Identifier: Apache-2.0 */
/* A program that asks an implementation of the interface what it does in unusual cases, one line for each answer. It is
 * linked with the names that Debian's binaries ask for, so LD_LIBRARY_PATH decides who answers. */
#ifndef REPORT_H
#define REPORT_H
#include "shim/include/fftw3.h"

enum { points = 4096 };
extern fftwf_complex a[points], b[points];
extern float x[2 * points], y[2 * points];

void say(const char* topic, const char* question, double answer);
/* 1 for a plan, which is destroyed, 0 for null. */
void say_plan(const char* topic, const char* question, fftwf_plan plan);
/* Executes and destroys the plan and says all of what it wrote, weighted; -1 for null. The arrays are set before. */
void say_result(const char* topic, const char* question, fftwf_plan plan);
void set_arrays(void);

void report_fortran(void);
#endif
