// SPDX-License-Identifier: Apache-2.0
#include "bench/runner.h"

#include "bench/markers.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <fstream>
#include <new>
#include <random>

namespace bench {

template <typename Real>
auto arrays<Real>::allocate(size_t count) -> block {
    constexpr size_t page = 4096;
    const size_t bytes = (count * sizeof(Real) + page - 1) / page * page;
    void* memory = aligned_alloc(page, bytes);
    if (!memory) throw std::bad_alloc();
    memset(memory, 0, bytes);
    return block(static_cast<Real*>(memory));
}

template <typename Real>
arrays<Real>::arrays(const problem& p) : in_span_(span_floats(p, p.in)), out_span_(span_floats(p, p.out)) {
    in_ = allocate(p.in_place ? std::max(in_span_, out_span_) : in_span_);
    if (!p.in_place) out_ = allocate(out_span_);
}

template <typename Real>
void arrays<Real>::clear() {
    memset(in(), 0, in_span_ * sizeof(Real));
    memset(out(), 0, out_span_ * sizeof(Real));
}

template <typename Real>
void arrays<Real>::fill(const problem& p, library<Real>& maker, input_kind input) {
    clear();
    if (p.kind != family::c2r) {
        std::mt19937 random(1);
        const auto uniform = [&] { return static_cast<float>(random() >> 8) * 0x1p-24f - 0.5f; };
        const auto number = [&] {
            const float u = uniform();
            if (input != input_kind::range) return static_cast<Real>(u);
            return static_cast<Real>(static_cast<float>(std::copysign(std::exp2(80.0 * std::abs(u) - 20), u)));
        };
        const auto points = static_cast<size_t>(p.points() / p.batch);
        size_t index = 0;
        for_each_element(p, p.in, [&](size_t at) {
            if (input == input_kind::impulse) {
                in()[at] = index++ % points == points / 3 ? 1 : 0;
                return;
            }
            in()[at] = number();
            if (p.in.complex) in()[at + 1] = number();
        });
        return;
    }
    const problem forward = spectrum_problem(p);
    arrays signal(forward);
    signal.fill(forward, maker, input);
    void* plan = maker.plan(forward, signal.in(), signal.out());
    if (!plan) throw std::runtime_error(maker.name() + " makes no spectrum for " + p.text);
    maker.execute(plan);
    maker.destroy(plan);
    const Real* spectrum = signal.out();
    for_each_element(p, p.in, [&](size_t at) {
        for (size_t part : {0, 1}) in()[at + part] = static_cast<float>(*spectrum++);
    });
}

template class arrays<float>;
template class arrays<double>;

template <typename Left, typename Right>
distances relative_distances(const problem& p, const Left* left, const Right* reference) {
    double distance = 0, norm = 0, farthest = 0, largest = 0;
    for_each_element(p, p.out, [&](size_t at) {
        for (size_t part = 0; part < (p.out.complex ? 2 : 1); ++part) {
            const double wanted = reference[at + part], difference = left[at + part] - wanted;
            distance += difference * difference;
            norm += wanted * wanted;
            if (!(std::abs(difference) <= farthest || std::isnan(farthest))) farthest = std::abs(difference);
            largest = std::max(largest, std::abs(wanted));
        }
    });
    return {std::sqrt(distance / norm), farthest / largest};
}
template distances relative_distances(const problem&, const float*, const float*);
template distances relative_distances(const problem&, const float*, const double*);
template distances relative_distances(const problem&, const double*, const double*);

namespace {

double elapsed_ns(const std::function<void()>& execute, long count) {
    using clock = std::chrono::steady_clock;
    const auto begin = clock::now();
    for (long i = 0; i < count; ++i) execute();
    return std::chrono::duration<double, std::nano>(clock::now() - begin).count();
}

}  // namespace

std::vector<clock_figures> time_by_turns(const std::vector<std::function<void()>>& executions, int runs) {
    constexpr double wanted_ns = 1e7;
    std::vector<clock_figures> result;
    for (const auto& execute : executions) {
        long count = 1;
        while (elapsed_ns(execute, count) < wanted_ns / 2) count *= 2;
        result.push_back({count, 0, 0, 0});
    }
    std::vector<std::vector<double>> times(executions.size());
    for (int run = 0; run < runs; ++run)
        for (size_t i = 0; i < executions.size(); ++i)
            times[i].push_back(elapsed_ns(executions[i], result[i].executions) / result[i].executions);
    for (size_t i = 0; i < executions.size(); ++i) {
        std::sort(times[i].begin(), times[i].end());
        result[i].min_ns = times[i].front();
        result[i].median_ns = times[i][times[i].size() / 2];
        result[i].max_ns = times[i].back();
    }
    return result;
}

[[gnu::noinline]] void execute_between_markers(library<float>& lib, void* plan, long count) {
    lib.execute(plan);  // the first execution resolves symbols and touches memory
    begin_counting();
    for (long i = 0; i < count; ++i) lib.execute(plan);
    end_counting();
}

namespace {

void plan_and_destroy(const planning& act) { act.lib.destroy(act.lib.plan(act.p, act.in, act.out)); }

}  // namespace

void plan_between_markers(const planning& act) {
    plan_and_destroy(act);
    if (act.first) act.lib.forget();
    begin_counting();
    plan_and_destroy(act);
    end_counting();
}

clock_figures time_plans(const planning& act, int runs) {
    plan_and_destroy(act);
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        if (act.first) act.lib.forget();
        times.push_back(elapsed_ns([&] { plan_and_destroy(act); }, 1));
    }
    std::sort(times.begin(), times.end());
    return {1, times[times.size() / 2], times.front(), times.back()};
}

double core_ghz() {
    constexpr long turns = 1'000'000;
    constexpr int chain = 16, tries = 20;  // the fastest of some: a core that slept takes a while to speed up
    double best = 0;
    for (int i = 0; i < tries; ++i) {
        const double ns = elapsed_ns(
            [] {
                uint64_t sum = 0;
                for (long turn = 0; turn < turns; ++turn)
                    for (int link = 0; link < chain; ++link) {
                        sum += 1;
                        asm volatile("" : "+r"(sum));
                    }
            },
            1);
        best = std::max(best, turns * chain / ns);
    }
    return best;
}

bool emulated() {
#ifdef __aarch64__
    std::ifstream cpuinfo("/proc/cpuinfo");
    for (std::string line; std::getline(cpuinfo, line);)
        if (line.starts_with("CPU implementer")) return false;
    return true;
#else
    return false;
#endif
}

}  // namespace bench
