/* SPDX-License-Identifier: Apache-2.0 */
#include "tests/shim/report.h"

#include <math.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

fftwf_complex a[points], b[points];
float x[2 * points], y[2 * points];

static const unsigned E = FFTW_ESTIMATE;

void say(const char* topic, const char* question, double answer) {
    printf("%s: %s = %.4g\n", topic, question, fabs(answer) < 1e-5 ? 0.0 : answer);
}

void say_plan(const char* topic, const char* question, fftwf_plan plan) {
    say(topic, question, plan != NULL);
    if (plan) fftwf_destroy_plan(plan);
}

void set_arrays(void) {
    for (int i = 0; i < 2 * points; ++i) {
        ((float*)a)[i] = x[i] = (float)(i * 37 % 101) - 50;
        ((float*)b)[i] = y[i] = 0.25f;
    }
}

static double sum_of(const float* f) {
    double sum = 0;
    for (int i = 0; i < 2 * points; ++i) sum += (i % 13 + 1) * (double)f[i];
    return sum;
}

void say_result(const char* topic, const char* question, fftwf_plan plan) {
    if (!plan) {
        say(topic, question, -1);
        return;
    }
    set_arrays();
    fftwf_execute(plan);
    fftwf_destroy_plan(plan);
    printf("%s: %s = %.3f %.3f %.3f %.3f\n", topic, question, sum_of((float*)a), sum_of((float*)b), sum_of(x),
           sum_of(y));
}

static void report_sizes(void) {
    const char* t = "sizes";
    const int n[] = {8, 8, 8}, zero[] = {0}, one[] = {1, 8}, small[] = {1, 8}, wide[] = {9, 10};
    say_plan(t, "length 0", fftwf_plan_dft_1d(0, a, b, -1, E));
    say_plan(t, "length -1", fftwf_plan_dft_1d(-1, a, b, -1, E));
    say_result(t, "length 1", fftwf_plan_dft_1d(1, a, b, -1, E));
    for (int sign = -2; sign <= 2; ++sign) {
        char question[20];
        snprintf(question, sizeof question, "sign %d", sign);
        say_result(t, question, fftwf_plan_dft_1d(8, a, b, sign, E));
    }
    say_plan(t, "null arrays", fftwf_plan_dft_1d(8, NULL, NULL, -1, E));
    say_plan(t, "no address space", fftwf_plan_dft_3d(1 << 20, 1 << 20, 1 << 20, NULL, NULL, -1, E));
    say_plan(t, "rank -1", fftwf_plan_dft(-1, n, a, b, -1, E));
    say_result(t, "rank 0", fftwf_plan_dft(0, NULL, a, b, -1, E));
    say_result(t, "rank 0 r2c", fftwf_plan_dft_r2c(0, NULL, x, b, E));
    say_result(t, "rank 0 c2r", fftwf_plan_dft_c2r(0, NULL, a, y, E));
    say_result(t, "rank 0 r2r", fftwf_plan_r2r(0, NULL, x, y, NULL, E));
    say_result(t, "howmany 0", fftwf_plan_many_dft(1, n, 0, a, NULL, 1, 8, b, NULL, 1, 8, -1, E));
    say_plan(t, "howmany -1", fftwf_plan_many_dft(1, n, -1, a, NULL, 1, 8, b, NULL, 1, 8, -1, E));
    say_plan(t, "length 0 of many", fftwf_plan_many_dft(1, zero, 2, a, NULL, 1, 8, b, NULL, 1, 8, -1, E));
    say_result(t, "rank 0 of many", fftwf_plan_many_dft(0, n, 5, a, NULL, 1, 2, b, NULL, 1, 3, -1, E));
    say_result(t, "rank 0 of many r2c", fftwf_plan_many_dft_r2c(0, n, 5, x, NULL, 1, 2, b, NULL, 1, 3, E));
    say_result(t, "onembed below n in the slowest dimension",
               fftwf_plan_many_dft(2, n, 2, a, wide, 1, 90, b, small, 1, 64, -1, E));
    say_result(t, "idist 0 with one transform", fftwf_plan_many_dft(1, n, 1, a, NULL, 1, 0, b, NULL, 1, 0, -1, E));
    say_result(t, "idist 0 with three", fftwf_plan_many_dft(1, n, 3, a, NULL, 1, 0, b, NULL, 1, 8, -1, E));
    say_result(t, "stride 0 at length 1", fftwf_plan_many_dft(2, one, 2, a, NULL, 1, 8, b, NULL, 1, 8, -1, E));
    say_result(t, "negative distance", fftwf_plan_many_dft(1, n, 3, a + 100, NULL, 1, -8, b + 100, NULL, 1, -8, -1, E));
    say_result(t, "negative distance on one side",
               fftwf_plan_many_dft(1, n, 3, a + 100, NULL, 1, -8, b + 100, NULL, 1, 8, -1, E));
    say_result(t, "negative stride", fftwf_plan_many_dft(1, n, 3, a + 100, NULL, -1, 8, b + 100, NULL, -1, 8, -1, E));
    say_result(t, "transposed in place", fftwf_plan_many_dft(1, n, 3, a, NULL, 1, 8, a, NULL, 3, 1, -1, E));
    say_result(t, "two layouts in place", fftwf_plan_many_dft(1, n, 3, a, NULL, 2, 1, a, NULL, 1, 8, -1, E));
}

static void report_guru(void) {
    const char* t = "guru";
    fftwf_iodim d[16], zero = {0, 1, 1}, minus = {-2, 1, 1}, even = {8, 2, 2}, line = {8, 1, 1};
    for (int i = 0; i < 16; ++i) d[i].n = 1, d[i].is = d[i].os = i % 3;
    say_result(t, "14 batch dimensions of one element", fftwf_plan_guru_dft(1, &line, 14, d, a, b, -1, E));
    d[3].n = 4, d[3].is = 8, d[3].os = 8, d[9].n = 3, d[9].is = 32, d[9].os = 32;
    say_result(t, "12 of one and 2 of more", fftwf_plan_guru_dft(1, &line, 14, d, a, b, -1, E));
    for (int i = 0; i < 8; ++i) d[i].n = 2, d[i].is = d[i].os = 1 << (7 - i);
    say_result(t, "rank 7", fftwf_plan_guru_dft(7, d, 0, NULL, a, b, -1, E));
    say_result(t, "rank 8 r2c", fftwf_plan_guru_dft_r2c(8, d, 0, NULL, x, b, E));
    say_result(t, "rank 0", fftwf_plan_guru_dft(0, NULL, 0, NULL, a, b, -1, E));
    say_result(t, "rank 0, 7 batch dimensions", fftwf_plan_guru_dft(0, NULL, 7, d, a, b, -1, E));
    say_plan(t, "rank -1", fftwf_plan_guru_dft(-1, d, 0, d, a, b, -1, E));
    say_plan(t, "batch rank -1", fftwf_plan_guru_dft(1, d, -1, d, a, b, -1, E));
    say_plan(t, "length 0", fftwf_plan_guru_dft(1, &zero, 1, d, a, b, -1, E));
    say_plan(t, "length -2", fftwf_plan_guru_dft(1, &minus, 1, d, a, b, -1, E));
    say_result(t, "count 0", fftwf_plan_guru_dft(1, d, 1, &zero, a, b, -1, E));
    say_plan(t, "count -2", fftwf_plan_guru_dft(1, d, 1, &minus, a, b, -1, E));
    say_result(t, "rank 0 r2c", fftwf_plan_guru_dft_r2c(0, NULL, 1, d, x, b, E));
    say_result(t, "rank 0 c2r", fftwf_plan_guru_dft_c2r(0, NULL, 1, d, a, y, E));
    say_result(t, "rank 0 r2r", fftwf_plan_guru_r2r(0, NULL, 1, d, x, y, NULL, E));
    say_result(t, "split rank 0", fftwf_plan_guru_split_dft(0, NULL, 1, d, x, x + 1000, y, y + 1000, E));
    say_result(t, "split", fftwf_plan_guru_split_dft(1, &line, 0, NULL, x, x + 1000, y, y + 1000, E));
    say_result(t, "split, exchanged", fftwf_plan_guru_split_dft(1, &line, 0, NULL, x + 1000, x, y + 1000, y, E));
    say_result(t, "split, interleaved", fftwf_plan_guru_split_dft(1, &even, 0, NULL, x, x + 1, y, y + 1, E));
    say_result(t, "split, interleaved backward", fftwf_plan_guru_split_dft(1, &even, 0, NULL, x + 1, x, y + 1, y, E));
    say_result(t, "interleaved to split", fftwf_plan_guru_split_dft(1, &even, 0, NULL, x, x + 1, y, y + 1000, E));
    say_result(t, "split in place", fftwf_plan_guru_split_dft(1, &line, 0, NULL, x, x + 1000, x, x + 1000, E));
    say_plan(t, "split, half in place", fftwf_plan_guru_split_dft(1, &line, 0, NULL, x, x + 1000, x, y, E));
}

static void report_r2r(void) {
    char question[40];
    for (int kind = 0; kind < 11; ++kind) {
        for (int n = 1; n <= 9; n += 4) {
            snprintf(question, sizeof question, "kind %d of %d", kind, n);
            say_result("r2r", question, fftwf_plan_r2r_1d(n, x, y, (fftwf_r2r_kind)kind, E));
        }
        snprintf(question, sizeof question, "kind %d of 1 x 8", kind);
        say_result("r2r", question, fftwf_plan_r2r_2d(1, 8, x, y, (fftwf_r2r_kind)kind, FFTW_DHT, E));
    }
}

/* Whether the input is still what it was. */
static void say_input(const char* question, fftwf_plan plan) {
    set_arrays();
    const double before = sum_of((float*)a);
    if (plan) fftwf_execute(plan);
    say("input", question, plan ? sum_of((float*)a) == before : -1);
    if (plan) fftwf_destroy_plan(plan);
}

static void report_input(void) {
    const unsigned keep = E | FFTW_PRESERVE_INPUT;
    say_input("c2r of 1 dimension kept", fftwf_plan_dft_c2r_1d(64, a, y, keep));
    say_input("c2r of 8 x 8 kept", fftwf_plan_dft_c2r_2d(8, 8, a, y, keep));
    say_input("c2r of 1 x 8 kept", fftwf_plan_dft_c2r_2d(1, 8, a, y, keep));
    say_input("c2r of 8 x 1 kept", fftwf_plan_dft_c2r_2d(8, 1, a, y, keep));
    say_input("c2r of 1 x 8 x 1 kept", fftwf_plan_dft_c2r_3d(1, 8, 1, a, y, keep));
    say_plan("input", "c2r of 8 x 8 in place", fftwf_plan_dft_c2r_2d(8, 8, a, (float*)a, keep));
    say_plan("input", "c2r of 8 x 8 kept and destroyed", fftwf_plan_dft_c2r_2d(8, 8, a, y, keep | FFTW_DESTROY_INPUT));
    say_input("c2c kept", fftwf_plan_dft_2d(8, 8, a, b, -1, E));
}

static void say_touched(const char* question, unsigned flags) {
    set_arrays();
    const double before_a = sum_of((float*)a), before_b = sum_of((float*)b);
    fftwf_plan plan = fftwf_plan_dft_1d(20, a, b, -1, flags);
    say("flags", question, sum_of((float*)a) != before_a || sum_of((float*)b) != before_b);
    fftwf_destroy_plan(plan);
    fftwf_forget_wisdom();
}

static void report_flags(void) {
    say_touched("ESTIMATE overwrites the arrays", FFTW_ESTIMATE);
    say_touched("ESTIMATE | PATIENT overwrites the arrays", FFTW_ESTIMATE | FFTW_PATIENT);
    say_touched("ESTIMATE | EXHAUSTIVE overwrites the arrays", FFTW_ESTIMATE | FFTW_EXHAUSTIVE);
    say_touched("PATIENT overwrites the arrays", FFTW_PATIENT);
    say_touched("PATIENT | DESTROY_INPUT | UNALIGNED overwrites the arrays",
                FFTW_PATIENT | FFTW_DESTROY_INPUT | FFTW_UNALIGNED);
    fftwf_set_timelimit(0);
    say_touched("PATIENT without time overwrites the arrays", FFTW_PATIENT);
    fftwf_set_timelimit(FFTW_NO_TIMELIMIT);
}

static void say_wise(const char* question, unsigned flags) {
    say_plan("wisdom", question, fftwf_plan_dft_1d(12, a, b, -1, flags | FFTW_WISDOM_ONLY));
}
static void learn(int n, unsigned flags) { fftwf_destroy_plan(fftwf_plan_dft_1d(n, a, b, -1, flags)); }

static int read_text(void* data) {
    const char** text = data;
    return **text ? *(*text)++ : EOF;
}
static void count_text(char c, void* data) {
    (void)c;
    ++*(size_t*)data;
}

static void report_wisdom_care(void) {
    fftwf_forget_wisdom();
    say_wise("nothing planned", E);
    learn(12, E);
    say_wise("ESTIMATE after ESTIMATE", E);
    say_wise("MEASURE after ESTIMATE", FFTW_MEASURE);
    learn(12, FFTW_MEASURE);
    say_wise("MEASURE after MEASURE", FFTW_MEASURE);
    say_wise("ESTIMATE after MEASURE", E);
    say_wise("PATIENT after MEASURE", FFTW_PATIENT);
    say_wise("EXHAUSTIVE after MEASURE", FFTW_EXHAUSTIVE);
    learn(12, FFTW_PATIENT);
    say_wise("PATIENT after PATIENT", FFTW_PATIENT);
    say_wise("EXHAUSTIVE after PATIENT", FFTW_EXHAUSTIVE);
    say_wise("MEASURE after PATIENT", FFTW_MEASURE);
    say_plan("wisdom", "other sign", fftwf_plan_dft_1d(12, a, b, 1, FFTW_WISDOM_ONLY));
    say_plan("wisdom", "in place", fftwf_plan_dft_1d(12, a, a, -1, FFTW_WISDOM_ONLY));
    say_plan("wisdom", "other length", fftwf_plan_dft_1d(13, a, b, -1, FFTW_WISDOM_ONLY));
    say_plan("wisdom", "other arrays", fftwf_plan_dft_1d(12, a + 128, b + 128, -1, FFTW_WISDOM_ONLY));
    say_plan("wisdom", "arrays of other alignment",
             fftwf_plan_dft_1d(12, (fftwf_complex*)(x + 1), (fftwf_complex*)(y + 1), -1, FFTW_WISDOM_ONLY));
    say_wise("UNALIGNED after aligned", FFTW_UNALIGNED);
    say_wise("PRESERVE_INPUT after default", FFTW_PRESERVE_INPUT);
    say_wise("DESTROY_INPUT after default", FFTW_DESTROY_INPUT);
    fftwf_plan_with_nthreads(2);
    say_wise("2 threads after 1", FFTW_MEASURE);
    fftwf_plan_with_nthreads(1);
    learn(15, E | FFTW_PATIENT | FFTW_EXHAUSTIVE);
    say_plan("wisdom", "MEASURE after ESTIMATE with other bits", fftwf_plan_dft_1d(15, a, b, -1, FFTW_WISDOM_ONLY));
    fftwf_set_timelimit(0);
    learn(14, FFTW_MEASURE);
    say_plan("wisdom", "MEASURE after no time", fftwf_plan_dft_1d(14, a, b, -1, FFTW_WISDOM_ONLY));
    fftwf_set_timelimit(FFTW_NO_TIMELIMIT);
}

static void report_wisdom_round_trips(void) {
    const char *t = "wisdom", *file_name = "report.wisdom";
    learn(12, FFTW_MEASURE);
    char* text = fftwf_export_wisdom_to_string();
    size_t written = 0;
    fftwf_export_wisdom(count_text, &written);
    say(t, "as long by function as by string", written == strlen(text));
    fftwf_forget_wisdom();
    say_wise("forgotten", FFTW_MEASURE);
    say(t, "import of rubbish", fftwf_import_wisdom_from_string("(hello)"));
    say(t, "import of nothing", fftwf_import_wisdom_from_string(""));
    say(t, "import", fftwf_import_wisdom_from_string(text));
    say_wise("imported", FFTW_MEASURE);
    say(t, "export to a file", fftwf_export_wisdom_to_filename(file_name));
    fftwf_forget_wisdom();
    say(t, "import from a file", fftwf_import_wisdom_from_filename(file_name));
    say_wise("imported from a file", FFTW_MEASURE);
    fftwf_forget_wisdom();
    const char* rest = text;
    say(t, "import by function", fftwf_import_wisdom(read_text, &rest));
    say_wise("imported by function", FFTW_MEASURE);
    FILE* file = fopen(file_name, "w+");
    fputs(text, file);
    fputs(text, file);
    rewind(file);
    say(t, "first of two in one file", fftwf_import_wisdom_from_file(file));
    say(t, "second of two in one file", fftwf_import_wisdom_from_file(file));
    fclose(file);
    remove(file_name);
    fftwf_forget_wisdom();
    text[strlen(text) - 3] = '\0';
    say(t, "import of a part", fftwf_import_wisdom_from_string(text));
    say_wise("part imported", FFTW_MEASURE);
    free(text);
    learn(12, FFTW_MEASURE);
    fftwf_cleanup();
    say_wise("after cleanup", FFTW_MEASURE);
    say(t, "import from no file", fftwf_import_wisdom_from_filename("/nonexistent"));
    say(t, "export to no file", fftwf_export_wisdom_to_filename("/nonexistent/wisdom"));
    say(t, "import of the system's", fftwf_import_system_wisdom());
}

static void report_memory(void) {
    void* p = fftwf_malloc(1000);
    say("memory", "alignment to 16", (double)((uintptr_t)p % 16));
    free(p); /* not fftwf_free: programs do so */
    p = fftwf_malloc(0);
    say("memory", "of 0 bytes", p != NULL);
    fftwf_free(p);
    fftwf_free(NULL);
    say("memory", "too much", fftwf_malloc((size_t)1 << 62) != NULL);
    float* real = fftwf_alloc_real(100);
    fftwf_complex* complex_numbers = fftwf_alloc_complex(100);
    memset(real, 0, 100 * sizeof *real);
    memset(complex_numbers, 0, 100 * sizeof *complex_numbers);
    fftwf_free(real);
    fftwf_free(complex_numbers);
    char* aligned = aligned_alloc(64, 128);
    for (int offset = 0; offset < 20; offset += 4) {
        char question[30];
        snprintf(question, sizeof question, "alignment_of at %d", offset);
        say("memory", question, fftwf_alignment_of((float*)(aligned + offset)));
    }
    free(aligned);
}

static void report_threads(void) {
    const char* t = "threads";
    say(t, "init_threads", fftwf_init_threads());
    say(t, "first count", fftwf_planner_nthreads());
    const int counts[] = {4, 1, 0, -3, 600, 2};
    for (int i = 0; i < 6; ++i) {
        char question[30];
        snprintf(question, sizeof question, "count after %d", counts[i]);
        fftwf_plan_with_nthreads(counts[i]);
        say(t, question, fftwf_planner_nthreads());
    }
    say_result(t, "many by 2 threads", fftwf_plan_many_dft(1, (int[]){64}, 40, a, NULL, 1, 64, b, NULL, 1, 64, -1, E));
    fftwf_make_planner_thread_safe();
    fftwf_cleanup();
    say(t, "count after cleanup", fftwf_planner_nthreads());
    fftwf_plan_with_nthreads(3);
    fftwf_cleanup_threads();
    say(t, "count after cleanup_threads", fftwf_planner_nthreads());
}

static void report_plan(void) {
    fftwf_plan plan = fftwf_plan_dft_1d(1024, a, b, -1, E);
    char* text = fftwf_sprint_plan(plan);
    const size_t length = strlen(text);
    say("plan", "text in parentheses", length > 2 && text[0] == '(' && text[length - 1] == ')');
    free(text);
    double add, mul, fma;
    fftwf_flops(plan, &add, &mul, &fma);
    say("plan", "flops are positive", add > 0 && mul > 0 && fma >= 0);
    say("plan", "estimate of cost is positive", fftwf_estimate_cost(plan) > 0);
    say("plan", "cost isn't negative", fftwf_cost(plan) >= 0);
    fftwf_destroy_plan(plan);
    fftwf_destroy_plan(NULL);
    say("plan", "version has text", strlen(fftwf_version) > 4 && strlen(fftwf_cc) > 2);
}

int main(void) {
    setvbuf(stdout, NULL, _IOLBF, 0);
    report_sizes();
    report_guru();
    report_r2r();
    report_input();
    report_flags();
    report_wisdom_care();
    report_wisdom_round_trips();
    report_memory();
    report_threads();
    report_plan();
    report_fortran();
    return 0;
}
