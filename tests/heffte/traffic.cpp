// SPDX-License-Identifier: Apache-2.0
// traffic N PROCESSES PER_NODE: what one complex transform of N x N x N points sends, from the plans that heFFTe makes,
// for bricks, pencils and slabs as input. Needs one process only: a plan is arithmetic.
#include <heffte_backend_qfftf.h>

#include <cstdio>
#include <cstdlib>

using box = heffte::box3d<long long>;

// The most that any process sends in a transform.
struct traffic {
    int exchanges = 0;
    double bytes = 0, bytes_off_node = 0;
    int messages = 0, messages_off_node = 0;
};

static long long shared(box const& a, box const& b) {
    const box both = a.collide(b);
    return both.empty() ? 0 : both.count();
}

static traffic of(heffte::logic_plan3d<long long> const& plan, int processes, int per_node) {
    traffic result;
    for (int i = 0; i < 4; ++i) {
        auto const &from = plan.in_shape[i], &to = plan.out_shape[i];
        traffic worst;
        for (int p = 0; p < processes; p += processes > 64 ? processes / 64 + 1 : 1) {  // a sample where they are many
            traffic mine;
            for (int q = 0; q < processes; ++q) {
                const double bytes = p == q ? 0 : 8.0 * shared(from[p], to[q]);
                const bool off_node = p / per_node != q / per_node;
                mine.bytes += bytes;
                mine.messages += bytes > 0;
                mine.bytes_off_node += off_node ? bytes : 0;
                mine.messages_off_node += off_node and bytes > 0;
            }
            if (mine.bytes > worst.bytes) worst = mine;
        }
        result.exchanges += worst.bytes > 0;
        result.bytes += worst.bytes;
        result.messages += worst.messages;
        result.bytes_off_node += worst.bytes_off_node;
        result.messages_off_node += worst.messages_off_node;
    }
    return result;
}

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: traffic N PROCESSES PER_NODE\n");
        return 2;
    }
    const long long n = std::atoll(argv[1]);
    const int processes = std::atoi(argv[2]), per_node = std::atoi(argv[3]);
    const box world({0, 0, 0}, {n - 1, n - 1, n - 1});
    auto const grid = heffte::make_procgrid(processes);
    auto const bricks = heffte::split_world(world, heffte::proc_setup_min_surface(world, processes));
    auto const pencils_in = heffte::split_world(world, {1, grid[0], grid[1]});
    auto const pencils_out = heffte::split_world(world, {grid[0], grid[1], 1});
    auto const slabs_in = heffte::split_world(world, {1, 1, processes}),
               slabs_out = heffte::split_world(world, {processes, 1, 1});
    const struct {
        const char* name;
        std::vector<box> const &in, &out;
        bool use_pencils;
    } ways[] = {{"bricks to bricks", bricks, bricks, true},
                {"pencils to pencils", pencils_in, pencils_out, true},
                {"slabs to slabs", slabs_in, slabs_out, false}};
    for (auto const& way : ways) {
        if (not way.use_pencils and processes > n) continue;
        heffte::plan_options options = heffte::default_options<heffte::backend::qfftf>();
        options.use_pencils = way.use_pencils;
        auto const plan = heffte::plan_operations(heffte::ioboxes<long long>{way.in, way.out}, -1, options, 0);
        const traffic t = of(plan, processes, per_node);
        std::printf(
            "%5lld %5d %-19s %d exchanges, a process sends %9.3f MB (%9.3f off its node) in %4d messages (%4d)\n", n,
            processes, way.name, t.exchanges, t.bytes / 1e6, t.bytes_off_node / 1e6, t.messages, t.messages_off_node);
    }
    return 0;
}
