// SPDX-License-Identifier: Apache-2.0
#include "threads/numa_topology.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>
#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr size_t path_size = 512;

bool node_exists(const numa_tables& tables, int node) { return tables.numa_node_bits >> node & 1; }

// The value of a digit of the kernel's CPU maps, which are lower-case hexadecimal.
uint32_t digit_value(char digit) { return static_cast<uint32_t>(digit <= '9' ? digit - 48 : digit - 87); }

// The first line of `text` without its commas, in place. Returns its length.
size_t drop_commas(char* text) {
    size_t length = 0;
    for (const char* p = text; *p && *p != '\n'; ++p)
        if (*p != ',') text[length++] = *p;
    return length;
}

// Reads at most `size` - 1 characters in one call and ends them with a zero. Returns their count, or -1.
ssize_t read_text(const char* path, char* text, size_t size) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return -1;
    const ssize_t count = read(file, text, size - 1);
    close(file);
    if (count >= 0) text[count] = 0;
    return count;
}

void parse_cpu_map(numa_tables& tables, int node, char* text) {
    int listed = 0;
    const size_t digits = drop_commas(text);
    for (size_t i = 0; i < digits; ++i) {  // from the last digit, which stands for CPUs 0 to 3
        const uint32_t value = digit_value(text[digits - 1 - i]);
        for (int bit = 0; bit < 32; ++bit) {
            const size_t cpu = 4 * i + bit;
            if ((value >> bit & 1) == 0 || cpu >= numa_cpu_cap || listed >= numa_cpu_cap) continue;
            tables.numa_cpu_list[node][listed++] = static_cast<int32_t>(cpu);
            tables.numa_node_of_cpu[cpu] = node;
        }
    }
}

// The numbers of one line into the row. False when the line doesn't start with a number or one is out of range.
bool parse_distances(const char* line, uint32_t* row, int count) {
    const char* p = line;
    for (int i = 0; i < count; ++i) {
        char* end;
        const unsigned long value = strtoul(p, &end, 0);
        if (end == line || value == ULONG_MAX) return false;
        row[i] = static_cast<uint32_t>(value);
        p = end;
    }
    return true;
}

bool read_distance_row(numa_tables& tables, const char* root, int node) {
    char path[path_size];
    snprintf(path, sizeof path, "%s/node%d/distance", root, node);
    FILE* file = fopen(path, "re");
    if (!file) return false;
    char* line = nullptr;
    size_t size = 0;
    const ssize_t length = getline(&line, &size, file);
    fclose(file);
    const bool parsed = length > 0 && parse_distances(line, tables.numa_distance[node], tables.numa_node_count);
    free(line);
    return parsed;
}

// By exchange, ascending; equal distances stay as the exchange leaves them.
void sort_row(int32_t* nodes, int32_t* distances, int count) {
    for (int p = 0; p < count; ++p)
        for (int q = p + 1; q < count; ++q)
            if (distances[p] > distances[q]) {
                std::swap(distances[p], distances[q]);
                std::swap(nodes[p], nodes[q]);
            }
}

// Every list starts empty, so that a node whose file can't be read has no CPUs.
void clear_lists(numa_tables& tables) {
    std::fill_n(tables.numa_node_of_cpu, numa_cpu_cap, -1);
    std::fill_n(&tables.numa_cpu_list[0][0], numa_node_cap * numa_cpu_cap, -1);
}

}  // namespace

int32_t numa_count_nodes(numa_tables& tables, const char* root) {
    if (tables.numa_node_count != -1) return tables.numa_node_count;
    DIR* folder = opendir(root);
    if (!folder) return 0;
    int32_t highest = -1;
    while (const dirent* entry = readdir(folder)) {
        if (strncmp(entry->d_name, "node", 4) != 0) continue;
        char* end;
        const int32_t node = static_cast<int32_t>(strtoul(entry->d_name + 4, &end, 0));
        if (end == entry->d_name + 4 || node < 0 || node >= numa_node_cap) continue;
        tables.numa_node_bits |= uint64_t{1} << node;
        highest = std::max(highest, node);
    }
    closedir(folder);
    if (highest >= 0) tables.numa_node_count = highest + 1;
    return tables.numa_node_count;
}

int numa_read_cpus(numa_tables& tables, const char* root, int node) {
    char path[path_size], text[600];
    std::fill_n(tables.numa_cpu_list[node], numa_cpu_cap, -1);
    snprintf(path, sizeof path, "%s/node%d/cpumap", root, node);
    const ssize_t count = read_text(path, text, sizeof text);
    if (count < 0) return -1;
    if (count > 0) parse_cpu_map(tables, node, text);
    return 0;
}

void numa_read_distances(numa_tables& tables, const char* root) {
    for (int node = 0; node < tables.numa_node_count; ++node)
        if (node_exists(tables, node) && !read_distance_row(tables, root, node)) return;
}

void numa_sort_nodes(numa_tables& tables) {
    std::fill_n(&tables.numa_sorted_nodes[0][0], numa_node_cap * numa_node_cap, -1);
    std::fill_n(&tables.numa_sorted_distance[0][0], numa_node_cap * numa_node_cap, -1);
    for (int i = 0; i < tables.numa_node_count; ++i) {
        if (!node_exists(tables, i)) continue;
        int count = 0;
        for (int j = 0; j < tables.numa_node_count; ++j) {
            if (!node_exists(tables, j)) continue;
            tables.numa_sorted_nodes[i][count] = j;
            tables.numa_sorted_distance[i][count++] = static_cast<int32_t>(tables.numa_distance[i][j]);
        }
        sort_row(tables.numa_sorted_nodes[i], tables.numa_sorted_distance[i], count);
    }
}

void numa_read_topology(numa_tables& tables, const char* root) {
    const int32_t count = numa_count_nodes(tables, root);
    if (count == 0) return;
    clear_lists(tables);
    if (count < 0) return;
    for (int node = 0; node < count; ++node)
        if (numa_read_cpus(tables, root, node) != 0) return;
    numa_read_distances(tables, root);
    numa_sort_nodes(tables);
    tables.numa_topology_read = 1;
}

// Node masks are only ever added to.
void numa_build_masks(numa_tables& tables, const cpu_set_t& allowed) {
    for (int node = 0; node < tables.numa_node_count; ++node) {
        uint32_t usable = 0;
        std::fill_n(tables.numa_class_capacity[node], cpu_class_count, 0);
        for (cpu_set_t& mask : tables.numa_class_mask[node]) CPU_ZERO(&mask);
        for (int32_t cpu : tables.numa_cpu_list[node]) {
            if (cpu == -1) break;
            if (!CPU_ISSET(cpu, &allowed)) continue;
            const int cpu_class = cpu % cpu_class_count;
            ++tables.numa_class_capacity[node][cpu_class];
            CPU_SET(cpu, &tables.numa_node_mask[node]);
            CPU_SET(cpu, &tables.numa_class_mask[node][cpu_class]);
            ++usable;
        }
        tables.numa_node_capacity[node] = usable;
        std::copy_n(tables.numa_class_capacity[node], cpu_class_count, tables.numa_class_free[node]);
        tables.numa_node_free[node] = usable;
    }
    tables.numa_masks_built = 1;
}

void numa_reset_free(numa_tables& tables) {
    memcpy(tables.numa_class_free, tables.numa_class_capacity, sizeof tables.numa_class_free);
    memcpy(tables.numa_node_free, tables.numa_node_capacity, sizeof tables.numa_node_free);
}

int32_t numa_node_of(const numa_tables& tables, int32_t cpu) {
    return cpu >= 0 && cpu < numa_cpu_cap ? tables.numa_node_of_cpu[cpu] : -1;
}

int32_t numa_cpu_limit(const numa_tables& tables) {
    if (tables.numa_node_count < 1 || tables.numa_node_count % 2 != 0) return -1;
    int32_t sum = 0;
    for (int node = 0; node < tables.numa_node_count / 2; ++node) {
        const int32_t* list = tables.numa_cpu_list[node];
        sum += static_cast<int32_t>(std::find(list, list + numa_cpu_cap, -1) - list);
    }
    return sum > 0 && sum % 2 == 0 ? sum : -1;
}

void numa_reserve_cpu(numa_tables& tables, int32_t cpu) {
    if (cpu < 0 || cpu >= cpu_mask_bits) return;
    for (int node = 0; node < tables.numa_node_count; ++node)
        for (int cpu_class = 0; cpu_class < cpu_class_count; ++cpu_class) {
            if (!CPU_ISSET(cpu, &tables.numa_class_mask[node][cpu_class])) continue;
            CPU_CLR(cpu, &tables.numa_class_mask[node][cpu_class]);
            --tables.numa_class_free[node][cpu_class];
        }
}
