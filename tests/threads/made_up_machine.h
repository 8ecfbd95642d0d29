// SPDX-License-Identifier: Apache-2.0
// A folder that looks like the kernel's node folder of a machine that we don't have.
#pragma once
#include "threads/numa_topology.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

class made_up_machine {
public:
    made_up_machine() : root_(testing::TempDir() + "machine_" + std::to_string(getpid())) {
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_);
    }
    ~made_up_machine() { std::filesystem::remove_all(root_); }

    std::string root() const { return root_.string(); }

    void write(const std::string& file, const std::string& text) const {
        std::filesystem::create_directories((root_ / file).parent_path());
        std::ofstream(root_ / file) << text;
    }

    // A file that opens and can't be read: a folder of its name.
    void unreadable(const std::string& file) const { std::filesystem::create_directories(root_ / file); }

    void remove(const std::string& file) const { std::filesystem::remove_all(root_ / file); }

    void node(int number, const std::string& cpumap, const std::string& distance) const {
        const std::string folder = "node" + std::to_string(number);
        write(folder + "/cpumap", cpumap);
        write(folder + "/distance", distance);
    }

    // `count` nodes of `cpus` CPUs each, numbered node by node, with one distance between neighbours.
    void regular(int count, int cpus, int neighbour_distance) const {
        for (int i = 0; i < count; ++i) {
            std::string distance;
            for (int j = 0; j < count; ++j)
                distance += std::to_string(i == j ? 10 : neighbour_distance + (j > i ? j - i : i - j) - 1) + " ";
            node(i, cpu_map(i * cpus, cpus), distance + "\n");
        }
    }

    // As the kernel prints it: groups of 8 digits, the highest first.
    static std::string cpu_map(int first, int count) {
        const int groups = (first + count + 31) / 32;
        std::string text;
        for (int g = groups - 1; g >= 0; --g) {
            uint32_t word = 0;
            for (int bit = 0; bit < 32; ++bit)
                if (32 * g + bit >= first && 32 * g + bit < first + count) word |= 1u << bit;
            char digits[16];
            snprintf(digits, sizeof digits, "%08x%s", word, g ? "," : "\n");
            text += digits;
        }
        return text;
    }

    std::unique_ptr<numa_tables> read() const {
        auto tables = std::make_unique<numa_tables>();
        numa_read_topology(*tables, root().c_str());
        return tables;
    }

    std::unique_ptr<numa_tables> read_with_all_cpus_allowed() const {
        auto tables = read();
        cpu_set_t all;
        CPU_ZERO(&all);
        for (int cpu = 0; cpu < cpu_mask_bits; ++cpu) CPU_SET(cpu, &all);
        numa_build_masks(*tables, all);
        return tables;
    }

private:
    std::filesystem::path root_;
};
