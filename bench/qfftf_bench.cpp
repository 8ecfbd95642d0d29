// SPDX-License-Identifier: Apache-2.0
// Runs problems by this library and by a peer in one process, by the clock or between markers for the cycle model.
// Before it is measured, each problem runs on random data and the results of all libraries are compared.
#include "bench/runner.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

using namespace bench;

constexpr const char usage[] =
    "usage: qfftf_bench [OPTION ...] PROBLEM ...\n"
    "  PROBLEM         e.g. \"c2c 1024\", \"r2c 64x64 inplace\", \"redft10 256 batch=16 interleaved\"\n"
    "  --list FILE     problems from a file, one per line, # begins a comment\n"
    "  --library FILE  a library to run, once for each; by default this library and libfftw3f.so.3;\n"
    "                  the word memcpy stands for a plain copy beside transpose and copy problems\n"
    "  --mark N        execute N times between markers, for bench/model/model, and read no clock\n"
    "  --plans W       measure in place of executions a plan and its destruction: W is first, where the library "
    "remembers\n"
    "                  nothing of the problem, or again\n"
    "  --ghz           print the frequency of this core, and nothing else\n"
    "  --runs N        runs by the clock (default 11); the median counts\n"
    "  --tolerance X   largest relative distance between the libraries' results (default 1e-5)\n"
    "One CSV line per problem and library.\n";

struct options {
    std::vector<problem> problems;
    std::vector<std::string> libraries;
    long mark = 0;
    std::string plans;  // "first", "again", or empty where executions are measured
    int runs = 11;
    double tolerance = 1e-5;
};

options parse_options(int argc, char** argv) {
    options o;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const auto value = [&]() -> std::string {
            if (++i == argc) throw std::invalid_argument(word + " wants a value");
            return argv[i];
        };
        if (word == "--list")
            for (const std::string& line : read_list(value())) o.problems.push_back(parse_problem(line));
        else if (word == "--library")
            o.libraries.push_back(value());
        else if (word == "--mark")
            o.mark = std::stol(value());
        else if (word == "--plans")
            o.plans = value();
        else if (word == "--runs")
            o.runs = std::stoi(value());
        else if (word == "--tolerance")
            o.tolerance = std::stod(value());
        else if (word.starts_with("-"))
            throw std::invalid_argument(word + ": not an option");
        else
            o.problems.push_back(parse_problem(word));
    }
    if (o.problems.empty()) throw std::invalid_argument("no problem given");
    if (o.runs < 1 || o.mark < 0) throw std::invalid_argument("counts begin at 1");
    if (!o.plans.empty() && o.plans != "first" && o.plans != "again")
        throw std::invalid_argument("--plans wants first or again");
    if (o.libraries.empty()) o.libraries = {QFFTF_DEFAULT_LIBRARY, "libfftw3f.so.3"};
    return o;
}

struct contender {
    library<float>* lib;
    void* plan;
};

// Plans the problem by every library that takes it, and leaves out those that refuse.
std::vector<contender> plan_all(const problem& p, const std::vector<std::unique_ptr<library<float>>>& libraries,
                                arrays<float>& data) {
    std::vector<contender> result;
    for (const auto& lib : libraries)
        if (void* plan = lib->plan(p, data.in(), data.out()))
            result.push_back({lib.get(), plan});
        else
            fprintf(stderr, "qfftf_bench: %s refuses %s\n", lib->name().c_str(), p.text.c_str());
    return result;
}

// The largest distance of any result from the last library's; a plain copy has no result to compare.
double worst_distance(const problem& p, const std::vector<contender>& all, arrays<float>& data) {
    std::vector<float> reference;
    double worst = 0;
    for (size_t i = all.size(); i-- > 0;) {
        if (all[i].lib->name() == "memcpy") continue;
        data.fill(p, *all.back().lib);
        all[i].lib->execute(all[i].plan);
        const double distance = reference.empty() ? 0 : relative_distances(p, data.out(), reference.data()).l2;
        if (reference.empty()) reference.assign(data.out(), data.out() + span_floats(p, p.out));
        worst = std::isnan(distance) ? HUGE_VAL : std::max(worst, distance);
    }
    return worst;
}

void print_region(const problem& p, const library<float>& lib, long executions) {
    static int region = 0;
    printf("%d,%s,%s,%ld,%.0f,%.0f\n", region++, p.text.c_str(), lib.name().c_str(), executions, p.nominal_flops(),
           p.bytes());
}

void print_clock(const options& o, const problem& p, const std::vector<contender>& all,
                 const std::vector<clock_figures>& figures) {
    for (size_t i = 0; i < all.size(); ++i)
        printf("%s,%s,%s,%ld,%d,%.1f,%.1f,%.1f,%.0f,%.3f\n", p.text.c_str(), all[i].lib->name().c_str(),
               emulated() ? "emulated clock" : "clock", figures[i].executions, o.runs, figures[i].median_ns,
               figures[i].min_ns, figures[i].max_ns, 1e3 * p.nominal_flops() / figures[i].median_ns,
               figures[i].median_ns / figures.back().median_ns);
}

void measure(const options& o, const problem& p, const std::vector<contender>& all) {
    if (o.mark) {
        for (const contender& c : all) {
            execute_between_markers(*c.lib, c.plan, o.mark);
            print_region(p, *c.lib, o.mark);
        }
        return;
    }
    std::vector<std::function<void()>> executions;
    executions.reserve(all.size());
    for (const contender& c : all) executions.push_back([c] { c.lib->execute(c.plan); });
    print_clock(o, p, all, time_by_turns(executions, o.runs));
}

// No other plan lives meanwhile, whose tables a library could share.
void measure_plans(const options& o, const problem& p, const std::vector<contender>& all, arrays<float>& data) {
    std::vector<clock_figures> figures;
    for (const contender& c : all) {
        const planning act{*c.lib, p, data.in(), data.out(), o.plans == "first"};
        if (o.mark) {
            plan_between_markers(act);
            print_region(p, *c.lib, 1);
        } else {
            figures.push_back(time_plans(act, o.runs));
        }
    }
    if (!o.mark) print_clock(o, p, all, figures);
}

bool run(const options& o, const problem& p, const std::vector<std::unique_ptr<library<float>>>& libraries) {
    arrays<float> data(p);
    const auto all = plan_all(p, libraries, data);
    const double distance = worst_distance(p, all, data);
    const bool agree = distance <= o.tolerance;
    if (!agree)
        fprintf(stderr, "qfftf_bench: the results of %s differ by %.2g, so it isn't measured\n", p.text.c_str(),
                distance);
    // Repeated transforms of their own results would grow without end; zeros stay.
    if (!all.empty() && !p.keeps_input()) data.clear();
    if (agree && !all.empty() && o.plans.empty()) measure(o, p, all);
    for (const contender& c : all) c.lib->destroy(c.plan);
    if (agree && !o.plans.empty()) measure_plans(o, p, all, data);
    fflush(stdout);
    return agree && all.size() == libraries.size();
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc == 2 && std::string(argv[1]) == "--ghz") {
        printf("%.3f\n", core_ghz());
        return 0;
    }
    const options o = parse_options(argc, argv);
    std::vector<std::unique_ptr<library<float>>> libraries;
    libraries.reserve(o.libraries.size());
    for (const std::string& file : o.libraries) libraries.push_back(open_library<float>(file));
    puts(o.mark || !o.plans.empty()
             ? "region,problem,library,executions,nominal_flops,bytes"
             : "problem,library,source,executions,runs,median_ns,min_ns,max_ns,nominal_mflops,ratio_to_last");
    bool complete = true;
    for (const problem& p : o.problems) complete &= run(o, p, libraries);
    return complete ? 0 : 1;
} catch (const std::exception& error) {
    fprintf(stderr, "qfftf_bench: %s\n%s", error.what(), usage);
    return 2;
}
