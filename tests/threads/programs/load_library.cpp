// SPDX-License-Identifier: Apache-2.0
// "load_library PATH [BATCH [WORD]]": loads the library from the path as a program of a user does that links nothing.
// With a batch it executes plans of many lengths on 4 threads and on one, and says whether the results are equal bit by
// bit. With a word it leaves the library's threads idle and
//   close  unloads the library, waits, loads it again and repeats,
//   fork   repeats in a child, with a plan made before the fork and with new ones, while another thread executes,
//   exit   executes from a destructor that runs at exit, and cleans up twice.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <atomic>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "qfftf.h"

namespace {

using complex_array = std::vector<std::complex<float>>;

void* address(void* library, const char* name) {
    void* found = dlsym(library, name);
    if (!found) fprintf(stderr, "%s is missing\n", name), exit(3);
    return found;
}

// A function of the public header, found in the library by its name.
#define FUNCTION(library, name) reinterpret_cast<decltype(&name)>(address(library, #name))

struct fft_library {
    void* handle;
    void transform(int nthreads, int n, int batch, complex_array& in, complex_array& out) const {
        FUNCTION(handle, qsl_fftf_plan_with_nthreads)(nthreads);
        const qsl_fftf_plan plan = FUNCTION(handle, qsl_fftf_plan_many_dft)(
            1, &n, batch, reinterpret_cast<qsl_fftf_complex*>(in.data()), nullptr, 1, n,
            reinterpret_cast<qsl_fftf_complex*>(out.data()), nullptr, 1, n, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
        if (!plan) fprintf(stderr, "no plan for length %d, batch %d\n", n, batch), exit(4);
        FUNCTION(handle, qsl_fftf_execute)(plan);
        FUNCTION(handle, qsl_fftf_destroy_plan)(plan);
    }
};

fft_library load(const char* path) {
    const fft_library library = {dlopen(path, RTLD_NOW)};
    if (!library.handle) fprintf(stderr, "%s\n", dlerror()), exit(2);
    return library;
}

complex_array signal(int size) {
    complex_array in(size);
    for (size_t i = 0; i < in.size(); ++i) in[i] = {i % 17 - 8.0f, i % 11 - 5.0f};
    return in;
}

int differing_lengths(const fft_library& library, int batch) {
    int differing = 0;
    for (int n : {5, 16, 60, 64, 128, 1000}) {
        complex_array in = signal(n * batch), one(n * batch), four(n * batch);
        library.transform(1, n, batch, in, one);
        library.transform(4, n, batch, in, four);
        differing += memcmp(one.data(), four.data(), one.size() * sizeof one[0]) != 0;
    }
    return differing;
}

// A plan of four threads that has been executed once.
struct kept_plan {
    kept_plan(const fft_library& library, int batch)
        : library(library), in(signal(1000 * batch)), out(in.size()), expected(in.size()) {
        const int n = 1000;
        FUNCTION(library.handle, qsl_fftf_plan_with_nthreads)(4);
        plan = FUNCTION(library.handle, qsl_fftf_plan_many_dft)(
            1, &n, batch, reinterpret_cast<qsl_fftf_complex*>(in.data()), nullptr, 1, n,
            reinterpret_cast<qsl_fftf_complex*>(out.data()), nullptr, 1, n, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
        expected = result();
    }
    complex_array result() {
        complex_array got(in.size());
        FUNCTION(library.handle, qsl_fftf_execute_dft)
        (plan, reinterpret_cast<qsl_fftf_complex*>(in.data()), reinterpret_cast<qsl_fftf_complex*>(got.data()));
        return got;
    }
    fft_library library;
    complex_array in, out, expected;
    qsl_fftf_plan plan;
};

int failed_children(const fft_library& library, int batch, bool others_execute) {
    kept_plan kept(library, batch);
    std::atomic<bool> done{false};
    std::thread other([&] {
        while (others_execute && !done) kept.result();
    });
    int failed = 0;
    for (int i = 0; i < 5; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(60);
            const bool old_plan_works = kept.result() == kept.expected && kept.result() == kept.expected;
            const int differing = differing_lengths(library, batch);
            FUNCTION(library.handle, qsl_fftf_cleanup_threads)();
            const bool works_on = kept.result() == kept.expected;
            _exit(differing == 0 && old_plan_works && works_on ? 0 : 1);
        }
        int status = 1;
        waitpid(child, &status, 0);
        failed += status != 0;
        failed += kept.result() != kept.expected;
    }
    done = true;
    other.join();
    FUNCTION(library.handle, qsl_fftf_destroy_plan)(kept.plan);
    return failed;
}

struct executes_at_exit {
    ~executes_at_exit() {
        if (!kept) return;
        const bool same = kept->result() == kept->expected;
        for (int i = 0; i < 2; ++i) {
            FUNCTION(kept->library.handle, qsl_fftf_cleanup_threads)();
            FUNCTION(kept->library.handle, qsl_fftf_cleanup)();
        }
        const bool same_again = kept->result() == kept->expected;
        FUNCTION(kept->library.handle, qsl_fftf_destroy_plan)(kept->plan);
        printf("at exit %s\n", same && same_again ? "the same" : "something else");
        delete kept;
    }
    kept_plan* kept = nullptr;
} at_exit;

}  // namespace

int main(int argc, char** argv) {
    fft_library library = load(argv[1]);
    const int batch = argc > 2 ? atoi(argv[2]) : 0;
    const std::string word = argc > 3 ? argv[3] : "";
    if (batch == 0) return 0;
    printf("%d lengths differ\n", differing_lengths(library, batch));
    if (word == "close") {
        dlclose(library.handle);
        usleep(100000);  // the idle threads go on
        library = load(argv[1]);
        printf("%d lengths differ\n", differing_lengths(library, batch));
        dlclose(library.handle);
        usleep(100000);
        return 0;
    }
    if (word == "fork") {
        fflush(stdout);
        printf("%d children failed\n", failed_children(library, batch, false));
        fflush(stdout);
        printf("%d children failed\n", failed_children(library, batch, true));
    }
    if (word == "exit") {
        at_exit.kept = new kept_plan(library, batch);
        return 0;
    }
    FUNCTION(library.handle, qsl_fftf_cleanup_threads)();
}
