// SPDX-License-Identifier: Apache-2.0
// Is the winner of a measured planning the best of those that it raced? Plans each problem by rules, by measuring with
// a fine clock and by measuring with one that ticks once in a microsecond, and makes the candidates once more by
// themselves. Each of these plans is executed between the markers of the cycle model. Both clocks count instructions,
// so the program runs under the emulator with its plugin; bench/measured/measured reads what it prints.
#include "bench/markers.h"
#include "bench/measured/instruction_clock.h"
#include "bench/runner.h"
#include "planner/measured.h"
#include "planner/solver.h"
#include "planner/solver_table.h"
#include "problems/plan_tree.h"
#include "problems/planned_problem.h"

#include <sys/time.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

// Instructions that pass for a microsecond. A core of 2.5 GHz runs about 10,000 in one.
constexpr uint64_t fine_clock = 1, coarse_clock = 10'000;
uint64_t tick = fine_clock;

struct plan_deleter {
    void operator()(fft_plan* plan) const { fft_plan_free(plan); }
};
using owned_plan = std::unique_ptr<fft_plan, plan_deleter>;

// The solver, and the radices of a chain of stages.
std::string short_name(const fft_plan& plan) {
    std::string text = std::string(plan.solver_name).substr(sizeof "solve_problem_" - 1);
    const char* separator = " ";
    for (uint64_t radix : plan_radices(plan)) {
        text += separator + std::to_string(radix);
        separator = "x";
    }
    return text;
}

struct made_plan {
    owned_plan plan;
    uint64_t instructions;
};

made_plan make_plan(const problems::problem& p, bool measured, uint64_t clock, bench::arrays<float>& data) {
    problems::problem wanted = p;
    wanted.measured = measured;
    tick = clock;
    const uint64_t start = instructions_so_far();
    auto* plan = reinterpret_cast<fft_plan*>(plan_problem_text(wanted, data.in(), data.out()));
    const uint64_t end = instructions_so_far();
    if (!plan) throw std::runtime_error("refused: " + p.text);
    return {owned_plan(plan), end - start};
}

// What a measured planning races: the first rows that accept a copy of the problem.
std::vector<owned_plan> make_candidates(const fft_plan& planned) {
    std::vector<owned_plan> candidates;
    tick = fine_clock;
    for (const solver_entry& row : solver_table) {
        if (candidates.size() == max_candidates) break;
        owned_plan clone(fft_plan_clone(&planned));
        clone->flags = plan_flag_measured;
        if (row.solve(clone.get()) != accepted) continue;
        clone->solver_name = row.name;
        settle_storage(clone.get());
        candidates.push_back(std::move(clone));
    }
    return candidates;
}

void race(const problems::problem& p, const char* role, const fft_plan& plan, uint64_t instructions) {
    static int region = 0;
    constexpr long executions = 3;
    fft_plan* const executed = const_cast<fft_plan*>(&plan);
    executed->execute(executed, executed->in, executed->out);
    bench::begin_counting();
    for (long i = 0; i < executions; ++i) executed->execute(executed, executed->in, executed->out);
    bench::end_counting();
    printf("%d,%s,%s,%ld,%.0f,%.0f,%s,%llu\n", region++, p.text.c_str(), role, executions, p.nominal_flops(), p.bytes(),
           short_name(plan).c_str(), static_cast<unsigned long long>(instructions));
}

void run(const problems::problem& p) {
    bench::arrays<float> data(p);
    const made_plan rules = make_plan(p, false, fine_clock, data);
    const made_plan fine = make_plan(p, true, fine_clock, data), coarse = make_plan(p, true, coarse_clock, data);
    data.clear();  // measured planning leaves anything there
    race(p, "rules", *rules.plan, rules.instructions);
    race(p, "fine", *fine.plan, fine.instructions);
    race(p, "coarse", *coarse.plan, coarse.instructions);
    for (const owned_plan& candidate : make_candidates(*rules.plan)) {
        data.clear();
        race(p, "candidate", *candidate, 0);
    }
    fflush(stdout);
}

}  // namespace

extern "C" int __wrap_gettimeofday(timeval* now, void*) {
    const uint64_t usec = instructions_so_far() / tick;
    now->tv_sec = static_cast<time_t>(usec / 1'000'000);
    now->tv_usec = static_cast<suseconds_t>(usec % 1'000'000);
    return 0;
}

int main(int argc, char** argv) try {
    if (argc != 2) throw std::invalid_argument("usage: qfftf_race LIST");
    if (instructions_so_far() == 0)
        throw std::runtime_error("nobody counts instructions: run by bench/measured/measured");
    puts("region,problem,library,executions,nominal_flops,bytes,solver,planning");
    for (const std::string& line : problems::read_list(argv[1])) run(problems::parse_problem(line));
    return 0;
} catch (const std::exception& error) {
    fprintf(stderr, "qfftf_race: %s\n", error.what());
    return 2;
}
