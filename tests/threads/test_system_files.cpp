// SPDX-License-Identifier: Apache-2.0
// The files of the system by which workers are placed, damaged one by one, where the pool itself reads them: whatever
// they say, every loop is complete.
#include "include/qfftf.h"
#include "loop_record.h"
#include "made_up_machine.h"

#include <dirent.h>
#include <sys/wait.h>
#include <cstdarg>
#include <functional>
#include <vector>

// The program is linked with --wrap for these calls: what is below the system's folder of nodes is the made-up
// machine's.
namespace {

std::string root;
int redirected = 0;

std::string placed(const char* path) {
    const std::string text = path, system = numa_system_root;
    if (!text.starts_with(system)) return text;
    ++redirected;
    return root + text.substr(system.size());
}

}  // namespace

extern "C" {
int __real_open(const char* path, int flags, mode_t mode);
FILE* __real_fopen(const char* path, const char* mode);
DIR* __real_opendir(const char* path);
int __wrap_open(const char* path, int flags, mode_t mode) { return __real_open(placed(path).c_str(), flags, mode); }
FILE* __wrap_fopen(const char* path, const char* mode) { return __real_fopen(placed(path).c_str(), mode); }
DIR* __wrap_opendir(const char* path) { return __real_opendir(placed(path).c_str()); }
}

namespace {

int findings() { return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count(); }

// In a process of its own, as the pool reads the system once.
void expect_complete_loops(const made_up_machine& machine, const char* affinity) {
    root = machine.root();
    fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int findings_of_parent = findings();
        alarm(60);
        setenv("QSL_FFT_AFFINITY", affinity, 1);
        setenv("QSL_FFT_IDLE", "SLEEP", 1);
        qsl_fftf_plan_with_nthreads(4);
        if (redirected == 0) _exit(2);
        loop_record loop;
        for (int i = 0; i < 3; ++i) loop.run_and_check(100, 4, 1);
        qsl_fftf_plan_with_nthreads_local(3);  // reserves the CPU of this thread
        loop.run_and_check(100, 3, 1);
        qsl_fftf_cleanup_threads();
        loop.run_and_check(100, 4, 1);
        qsl_fftf_cleanup_threads();
        _exit(findings() != findings_of_parent);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "2 << 8: the files weren't read";
}

void expect_complete_loops(const std::function<void(const made_up_machine&)>& damage) {
    for (const char* affinity : {"SPREAD", "CLOSE"}) {
        SCOPED_TRACE(affinity);
        made_up_machine machine;
        machine.regular(2, 4, 20);
        damage(machine);
        expect_complete_loops(machine, affinity);
    }
}

const char* const files[] = {"node0/cpumap", "node1/cpumap", "node0/distance", "node1/distance"};

}  // namespace

TEST(SystemFiles, ThatAreMissingCostNoPartOfALoop) {
    expect_complete_loops([](const made_up_machine&) {});
    for (const char* file : {"", "node0", "node1", files[0], files[1], files[2], files[3]}) {
        SCOPED_TRACE(std::string("without ") + file);
        expect_complete_loops([&](const made_up_machine& m) { m.remove(file); });
    }
    for (const char* file : files) {
        SCOPED_TRACE(std::string("unreadable: ") + file);
        expect_complete_loops([&](const made_up_machine& m) {
            m.remove(file);
            m.unreadable(file);
        });
    }
}

TEST(SystemFiles, ThatAreCutCostNoPartOfALoop) {
    for (const auto& [file, text] :
         {std::pair<std::string, std::string>{"node1/cpumap", "00000000,000000f0\n"}, {"node1/distance", "20 10 \n"}})
        for (size_t length = 0; length < text.size(); ++length) {
            SCOPED_TRACE(file + " of " + std::to_string(length) + " bytes");
            expect_complete_loops([&](const made_up_machine& m) { m.write(file, text.substr(0, length)); });
        }
}

TEST(SystemFiles, ThatAreAbsurdCostNoPartOfALoop) {
    const std::string absurd[] = {"\n",
                                  "0\n",
                                  "-1 -1\n",
                                  "18446744073709551615 0\n",
                                  "99999999999999999999999\n",
                                  "zz zz\n",
                                  "nan 1e9\n",
                                  std::string("\0\0\0\0", 4),
                                  std::string(100000, 'f'),
                                  std::string(5000, ' ') + "1\n",
                                  "4294967295 4294967295\n",
                                  "ffffffff,00000000,00000000\n"};
    for (const std::string& text : absurd)
        for (const char* file : {files[0], files[3]}) {
            SCOPED_TRACE(std::string(file) + ": " + text.substr(0, 40));
            expect_complete_loops([&](const made_up_machine& m) { m.write(file, text); });
        }
    for (const char* nodes : {"node3", "node2", "node63", "node4294967295", "node-1", "nodenode", "node1x"}) {
        SCOPED_TRACE(nodes);
        expect_complete_loops([&](const made_up_machine& m) { m.write(std::string(nodes) + "/cpumap", "f\n"); });
    }
}
