// SPDX-License-Identifier: Apache-2.0
// The choice of the back-end, its messages, thread counts and loops, seen in programs that are started with the
// environment in question.
#include "installed_tree.h"
#include "support/start_program.h"
#include "threads/numa_topology.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

namespace {

const std::string cannot_find_tarn =
    "QSL_FFT THREAD TYPE ERROR: Cannot find tarn_so. Use pthread in later calculation.\n";

void expect_output(const std::string& environment, const std::string& command, const std::string& out,
                   const std::string& err = "") {
    const program_result got = start_program(environment, command);
    SCOPED_TRACE(environment + " " + command);
    EXPECT_EQ(got.exit_code, 0);
    EXPECT_EQ(got.out, out);
    EXPECT_EQ(got.err, err);
}

void probe(const std::string& environment, const std::string& actions, const std::string& out,
           const std::string& err = "") {
    expect_output(environment, std::string(PROBE " ") + actions, out, err);
}

std::vector<std::string> standins() {
    std::vector<std::string> all;
    std::istringstream list(STANDINS);
    for (std::string path; std::getline(list, path, ':');) all.push_back(path);
    return all;
}

// Runs the probe beside the whole stand-in.
void probe_on_tarn(const std::string& actions, const std::string& out) {
    const installed_tree tree(PROBE, standins().front());
    expect_output("QSL_FFT_THREAD_TYPE=TARN", tree.ours() + " " + actions, out);
}

TEST(Choice, IsThatOfTheEnvironment) {
    probe("-u QSL_FFT_THREAD_TYPE", "backend", "backend 0\n");
    for (const char* text : {"", "omp", "OMP ", "OpenMP", "tarn", "Tarn", "TARNX", "1"})
        probe(std::string("'QSL_FFT_THREAD_TYPE=") + text + "'", "backend", "backend 0\n");
    probe("QSL_FFT_THREAD_TYPE=OMP", "backend", "backend 1\n");
    probe("QSL_FFT_THREAD_TYPE=TARN", "backend", "backend 0\n", cannot_find_tarn);
}

TEST(Choice, TarnNeedsAllItsFunctions) {
    probe_on_tarn("backend", "backend 2\n");
    ASSERT_EQ(standins().size(), 11u);
    for (size_t i = 1; i < standins().size(); ++i) {
        const installed_tree tree(PROBE, standins()[i]);
        SCOPED_TRACE(standins()[i]);
        expect_output("QSL_FFT_THREAD_TYPE=TARN", tree.ours() + " backend", "backend 0\n", cannot_find_tarn);
        expect_output("QSL_FFT_THREAD_TYPE=OMP", tree.ours() + " backend", "backend 1\n");  // isn't looked for
    }
}

TEST(Choice, PassesOverATarnOfAnotherFormat) {
    const std::string text = testing::TempDir() + "not_a_library";
    std::ofstream(text) << "text";
    const installed_tree tree(PROBE, text);
    expect_output("QSL_FFT_THREAD_TYPE=TARN", tree.ours() + " backend", "backend 0\n", cannot_find_tarn);
}

TEST(Choice, NeedsALibraryPathBelow2048Characters) {
    const installed_tree tree(PROBE, standins().front());
    expect_output("QSL_FFT_THREAD_TYPE=TARN", tree.ours_by_a_name_of(2003) + " backend", "backend 2\n");
    expect_output("QSL_FFT_THREAD_TYPE=TARN", tree.ours_by_a_name_of(2004) + " backend",
                  "FFT Lib path is too long, must less than 2048 characters\nbackend 0\n", cannot_find_tarn);
    expect_output("QSL_FFT_THREAD_TYPE=OMP", tree.ours_by_a_name_of(2004) + " backend", "backend 1\n");
}

// Each back-end's counts, with the environment that selects it.
class Counts : public testing::TestWithParam<const char*> {
protected:
    void check(const std::string& actions, const std::string& out) {
        const installed_tree tree(PROBE, standins().front());
        expect_output(GetParam(), tree.ours() + " " + actions, out);
    }
};

TEST_P(Counts, AreClampedTo512) {
    check("count", "nthreads 1\n");
    check("global 0 count global -5 count global 3 count global 512 count global 513 count global 2147483647 count",
          "nthreads 1\nnthreads 1\nnthreads 3\nnthreads 512\nnthreads 512\nnthreads 512\n");
    check("local 0 count local -5 count local 3 count local 512 count local 513 count",
          "nthreads 1\nnthreads 1\nnthreads 3\nnthreads 512\nnthreads 512\n");
}

TEST_P(Counts, OfAThreadWinOverTheCountForAll) {
    check("local 4 global 8 count count_elsewhere global 2 count count_elsewhere",
          "nthreads 4\nnthreads 8\nnthreads 4\nnthreads 2\n");
}

TEST_P(Counts, InitAnswersOne) {
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // tarn forgets its first table
    check("init init", "init 1\ninit 1\n");
    unsetenv("ASAN_OPTIONS");
}

TEST_P(Counts, CleanupWithoutInitDoesNothing) { check("cleanup cleanup", ""); }

INSTANTIATE_TEST_SUITE_P(All, Counts,
                         testing::Values("QSL_FFT_AFFINITY=NO", "QSL_FFT_THREAD_TYPE=OMP", "QSL_FFT_THREAD_TYPE=TARN"),
                         [](const auto& p) { return p.index == 0   ? "Pool"
                                                    : p.index == 1 ? "OpenMP"
                                                                   : "Tarn"; });

TEST(Affinity, IsThatOfTheEnvironment) {
    struct {
        const char* environment;
        const char* modes;  // after the count is set, after a plan asks for 1, after another asks for 2
    } const cases[] = {
        {"-u QSL_FFT_AFFINITY", "mode 0\nmode 1\nmode 1\n"},  // the first plan that asks decides
        {"QSL_FFT_AFFINITY=SPREAD", "mode 0\nmode 0\nmode 0\n"},
        {"QSL_FFT_AFFINITY=spread", "mode 0\nmode 0\nmode 0\n"},
        {"QSL_FFT_AFFINITY=CLOSE", "mode 1\nmode 1\nmode 1\n"},
        {"QSL_FFT_AFFINITY=close", "mode 1\nmode 1\nmode 1\n"},
        {"QSL_FFT_AFFINITY=NO", "mode 2\nmode 2\nmode 2\n"},
        {"QSL_FFT_AFFINITY=No", "mode 2\nmode 2\nmode 2\n"},
        {"QSL_FFT_AFFINITY=NONE", "mode 0\nmode 0\nmode 0\n"},
        {"QSL_FFT_AFFINITY=", "mode 0\nmode 0\nmode 0\n"},
    };
    for (const auto& c : cases) {
        probe(c.environment, "global 4 mode set_mode 1 mode set_mode 2 mode", c.modes);
        probe(c.environment, "local 4 mode set_mode 1 mode set_mode 2 mode", c.modes);
    }
}

TEST(Affinity, IsReadWhenACountIsSet) {
    probe("QSL_FFT_AFFINITY=NO", "mode global 2 mode", "mode 0\nmode 2\n");
    probe("QSL_FFT_AFFINITY=NO", "set_mode 1 mode global 2 mode", "mode 1\nmode 2\n");
    // Each setting of the count for all goes back to spreading where the variable is absent, but no plan may ask again.
    probe("-u QSL_FFT_AFFINITY", "set_mode 1 mode global 2 mode set_mode 1 mode", "mode 1\nmode 0\nmode 0\n");
    // Of the counts of single threads only the first reads it.
    probe("-u QSL_FFT_AFFINITY", "local 2 set_mode 1 mode local 2 mode", "mode 1\nmode 1\n");
}

TEST(Affinity, BelongsToThePool) {
    probe("QSL_FFT_THREAD_TYPE=OMP QSL_FFT_AFFINITY=CLOSE", "mode global 4 mode set_mode 0 mode refresh limit 700",
          "mode 2\nmode 2\nmode 2\nlimit 700\n");
    probe_on_tarn("mode set_mode 0 mode refresh limit 700", "mode 2\nmode 2\nlimit 700\n");
}

TEST(Affinity, LimitIsTheFirstHalfOfTheNodes) {
    auto tables = std::make_unique<numa_tables>();
    numa_read_topology(*tables, numa_system_root);
    const int cpus = numa_cpu_limit(*tables);
    probe("", "limit 64", "limit 64\n");  // not known before a count is set
    probe("", "global 2 limit 64", "limit " + std::to_string(cpus > 0 ? std::min(cpus, 64) : 64) + "\n");
}

// With counts of single threads the pool's own count is the sum of all teams.
TEST(Affinity, LocalCountsAddUp) {
    probe("", "local 3 local 4 count count_elsewhere", "nthreads 4\nnthreads 7\n");
    probe("", "local 512 local 512 count count_elsewhere", "nthreads 512\nnthreads 1024\n");
}

const std::string omp = "QSL_FFT_THREAD_TYPE=OMP ";

TEST(OpenMP, HasOneThreadPerPartition) {
    probe(omp, "loop 3 8 1",
          "partition 0 chunk 1 thread 0 (caller)\npartition 1 chunk 1 thread 1\npartition 2 chunk 1 thread 2\n");
    probe(omp, "loop 100 2 16", "partition 0 chunk 64 thread 0 (caller)\npartition 1 chunk 64 thread 1\n");
    probe(omp, "loop 3 8 4", "partition 0 chunk 4 thread 0 (caller)\n");
    probe(omp, "loop 0 8 4", "");
}

TEST(OpenMP, SmallerTeamsTakeNeighbours) {
    probe(omp + "OMP_THREAD_LIMIT=2", "loop 3 3 1",
          "partition 0 chunk 1 thread 0 (caller)\npartition 1 chunk 1 thread 0 (caller)\npartition 2 chunk 1 thread "
          "2\n");
    probe(omp + "OMP_THREAD_LIMIT=3", "loop 7 7 1",
          "partition 0 chunk 1 thread 0 (caller)\npartition 1 chunk 1 thread 0 (caller)\n"
          "partition 2 chunk 1 thread 0 (caller)\npartition 3 chunk 1 thread 3\npartition 4 chunk 1 thread 3\n"
          "partition 5 chunk 1 thread 5\npartition 6 chunk 1 thread 5\n");
}

TEST(OpenMP, TeamInheritsTheUseOfPlanBuffers) {
    probe(omp, "planned loop 2 2 1",
          "partition 0 chunk 1 thread 0 (caller) plan buffer\npartition 1 chunk 1 thread 1 plan buffer\n");
}

// The team's threads are the program's own: what they take over for a loop ends with it.
TEST(OpenMP, TeamKeepsItsOwnWords) {
    probe(omp, "planned team 3 loop 6 3 1 team 3",
          "word of 0: 1\nword of 1: 0\nword of 2: 0\n"
          "partition 0 chunk 2 thread 0 (caller) plan buffer\npartition 1 chunk 2 thread 1 plan buffer\n"
          "partition 2 chunk 2 thread 2 plan buffer\n"
          "word of 0: 1\nword of 1: 0\nword of 2: 0\n");
}

TEST(OpenMP, CleanupLeavesTheTeam) {
    probe(omp, "global 3 cleanup count loop 2 3 1",
          "nthreads 3\npartition 0 chunk 1 thread 0 (caller)\npartition 1 chunk 1 thread 1\n");
}

const std::string two_parts = "partition 0 chunk 1 thread 0 (caller)\npartition 1 chunk 1 thread 1\n";

TEST(Tarn, WithoutInitThereIsNoGroup) {
    probe_on_tarn("loop 2 2 1 loop 2 2 1",
                  "loop flags 15 group 0 concurrency 2 reserved 0 range 1 0 2 1 0\n" + two_parts +
                      "loop flags 15 group 0 concurrency 2 reserved 0 range 1 0 2 1 0\n" + two_parts);
}

TEST(Tarn, DoesNothingForNoItems) { probe_on_tarn("init loop 0 8 4", "init 1\n"); }

// The stand-in takes every third partition on one thread; only the caller, who has planned, uses plan buffers.
TEST(Tarn, UseOfPlanBuffersStaysWithTheCaller) {
    probe_on_tarn("planned loop 40 5 4",
                  "loop flags 15 group 0 concurrency 5 reserved 0 range 1 0 5 1 0\n"
                  "partition 0 chunk 8 thread 0 (caller) plan buffer\npartition 1 chunk 8 thread 1\n"
                  "partition 2 chunk 8 thread 2\npartition 3 chunk 8 thread 0 (caller) plan buffer\n"
                  "partition 4 chunk 8 thread 1\n");
}

TEST(Tarn, GroupsGrowAndLastUntilCleanup) {
    const std::string three_parts = two_parts + "partition 2 chunk 1 thread 2\n";
    probe_on_tarn("init loop 2 2 1 loop 3 3 1 loop 2 2 1 cleanup loop 2 2 1 init loop 2 2 1",
                  "init 1\n"
                  "destroy 0\ncreate 1: 1 2\nloop flags 15 group 1 concurrency 2 reserved 0 range 1 0 2 1 0\n" +
                      two_parts +
                      "destroy 1\ncreate 2: 1 2 3\nloop flags 15 group 2 concurrency 3 reserved 0 range 1 0 3 1 0\n" +
                      three_parts + "loop flags 15 group 2 concurrency 2 reserved 0 range 1 0 2 1 0\n" + two_parts +
                      "destroy 0\ndestroy 2\ndestroy 0\ndestroy 0\n"
                      "loop flags 15 group 0 concurrency 2 reserved 0 range 1 0 2 1 0\n" +
                      two_parts +
                      "init 1\ndestroy 0\ncreate 3: 1 2\n"
                      "loop flags 15 group 3 concurrency 2 reserved 0 range 1 0 2 1 0\n" +
                      two_parts);
}

}  // namespace
