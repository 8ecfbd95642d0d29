// SPDX-License-Identifier: Apache-2.0
// Any bytes as what the system says of its NUMA nodes: the tables that come of it keep their promises.
#include "tests/fuzz/fail.h"
#include "threads/numa_topology.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <unistd.h>
#include <filesystem>
#include <fstream>

namespace {

// A folder in memory, one for each process that fuzzes.
const std::filesystem::path& root() {
    static const std::filesystem::path folder = [] {
        const std::filesystem::path path = "/dev/shm/fuzz_nodes_" + std::to_string(getpid());
        atexit([] { std::filesystem::remove_all(root()); });
        return path;
    }();
    return folder;
}

// Any other character counts as a digit of more than four bits, so that CPUs may repeat.
bool is_hexadecimal(const std::string& map) {
    return map.find_first_not_of("0123456789abcdef,\n") == std::string::npos;
}

void check(const numa_tables& t, bool rising) {
    if (t.numa_node_count < -1 || t.numa_node_count > 64) fail("node count " + std::to_string(t.numa_node_count));
    for (int node = 0; node < numa_node_cap; ++node) {
        const int32_t* list = t.numa_cpu_list[node];
        for (int k = 1; k < numa_cpu_cap; ++k)
            if (rising && list[k] != -1 && list[k] <= list[k - 1])
                fail("the CPUs of node " + std::to_string(node) + " don't rise");
        for (int k = 0; k < numa_cpu_cap; ++k)
            if (list[k] < -1 || list[k] >= cpu_mask_bits) fail("CPU " + std::to_string(list[k]));
        uint64_t in_classes = 0;
        for (int c = 0; c < cpu_class_count; ++c) in_classes += t.numa_class_capacity[node][c];
        if (in_classes != t.numa_node_capacity[node])
            fail("the classes of node " + std::to_string(node) + " don't add up");
    }
    for (int32_t cpu = -2; cpu < cpu_mask_bits + 2; ++cpu)
        if (const int32_t node = numa_node_of(t, cpu); node < -1 || node >= numa_node_cap)
            fail("CPU " + std::to_string(cpu) + " on node " + std::to_string(node));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    FuzzedDataProvider data(bytes, size);
    std::filesystem::remove_all(root());
    std::filesystem::create_directories(root());
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    for (uint32_t bits = data.ConsumeIntegral<uint32_t>(), cpu = 0; cpu < 32; ++cpu)
        if (bits >> cpu & 1) CPU_SET(cpu * 7 % 160, &allowed);
    bool all_hexadecimal = true;
    while (data.remaining_bytes()) {
        const auto what = data.ConsumeIntegral<uint8_t>();
        const auto folder = root() / ("node" + std::to_string(what >> 2 & 15));
        std::filesystem::create_directories(folder);
        if (what & 1) {
            const std::string map = data.ConsumeRandomLengthString();
            all_hexadecimal = all_hexadecimal && is_hexadecimal(map);
            std::ofstream(folder / "cpumap") << map;
        } else if (what & 2)
            std::ofstream(folder / "distance") << data.ConsumeRandomLengthString();
    }
    static numa_tables tables;
    tables = {};
    numa_read_topology(tables, root().c_str());
    if (numa_count_nodes(tables, root().c_str()) != 0) {
        numa_build_masks(tables, allowed);
        check(tables, all_hexadecimal);
        for (int32_t cpu = -1; cpu < cpu_mask_bits; cpu += 3) numa_reserve_cpu(tables, cpu);
        numa_reset_free(tables);
    }
    return 0;
}
