// SPDX-License-Identifier: Apache-2.0
// Emulator plugin: the lines that two levels of data caches fetch between two no-operations, which qfftf_bench puts
// around the executions of a problem. A program may have any number of such regions. Caches stay as they are from one
// region to the next, and see what runs between them.
//
// qemu-x86_64 -plugin line_counter.so,out=FILE PROGRAM ...
//
// The file has one line for each region: fills of the first level, those of them whose line in front was there, fills
// of the second level, likewise. A line whose predecessor is there would have come early by the plainest of
// prefetchers, which fetches the next line with every line.
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// The part of the emulator's plugin interface that is used here; see bench/model/block_counter.c.
typedef uint64_t qemu_plugin_id_t;
typedef uint32_t qemu_plugin_meminfo_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
typedef struct {
    const char* target_name;
    struct {
        int min, current;
    } version;
    bool system_emulation;
} qemu_info_t;
typedef void (*exec_callback)(unsigned cpu, void* data);
typedef void (*access_callback)(unsigned cpu, qemu_plugin_meminfo_t, uint64_t address, void* data);
enum { no_registers = 0, loads_and_stores = 3 };
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb*);
struct qemu_plugin_insn* qemu_plugin_tb_get_insn(const struct qemu_plugin_tb*, size_t index);
size_t qemu_plugin_insn_size(const struct qemu_plugin_insn*);
// Up to version 2 it returns the address of the bytes and knows only its first argument; from version 3 on it copies.
const void* qemu_plugin_insn_data(const struct qemu_plugin_insn*, void* destination, size_t size);
unsigned qemu_plugin_mem_size_shift(qemu_plugin_meminfo_t);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t, void (*)(qemu_plugin_id_t, struct qemu_plugin_tb*));
void qemu_plugin_register_vcpu_insn_exec_cb(struct qemu_plugin_insn*, exec_callback, int registers, void* data);
void qemu_plugin_register_vcpu_mem_cb(struct qemu_plugin_insn*, access_callback, int registers, int which, void* data);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t, void (*)(qemu_plugin_id_t, void*), void* data);

#define EXPORTED __attribute__((visibility("default")))
EXPORTED int qemu_plugin_version = COUNTER_API;

// nopl 0x71666642(%rax) and nopl 0x71666643(%rax)
static const uint8_t markers[2][7] = {{0x0f, 0x1f, 0x80, 0x42, 0x66, 0x66, 0x71},
                                      {0x0f, 0x1f, 0x80, 0x43, 0x66, 0x66, 0x71}};

enum { line_shift = 6, most_ways = 8 };

// Of each set the lines, the most recently used first. A line is kept as its number plus 1; 0 is an empty way.
struct cache {
    uint64_t sets, ways;
    uint64_t (*lines)[most_ways];
    uint64_t fills, seen;
};

// A core with 64 KiB, 4 ways, and 1 MiB, 8 ways; both allocate for stores.
static struct cache first = {.sets = 256, .ways = 4}, second = {.sets = 2048, .ways = 8};
static bool inside, copies_data;
static unsigned counted_cpu;
static FILE* out;

static bool holds(const struct cache* c, uint64_t line) {
    const uint64_t* set = c->lines[line % c->sets];
    for (uint64_t way = 0; way < c->ways; ++way)
        if (set[way] == line + 1) return true;
    return false;
}

// Whether the line was there; it is now.
static bool touch(struct cache* c, uint64_t line) {
    uint64_t* set = c->lines[line % c->sets];
    if (set[0] == line + 1) return true;
    uint64_t way = 1;
    while (way < c->ways && set[way] != line + 1) ++way;
    const bool hit = way < c->ways;
    if (!hit) {
        --way;
        ++c->fills;
        c->seen += holds(c, line - 1);
    }
    memmove(set + 1, set, way * sizeof *set);
    set[0] = line + 1;
    return hit;
}

static void on_access(unsigned cpu, qemu_plugin_meminfo_t info, uint64_t address, void* data) {
    (void)data, (void)cpu;
    const uint64_t end = address + (1u << qemu_plugin_mem_size_shift(info)) - 1;
    for (uint64_t line = address >> line_shift; line <= end >> line_shift; ++line)
        if (!touch(&first, line)) touch(&second, line);
}

static void on_begin(unsigned cpu, void* data) {
    (void)data;
    counted_cpu = cpu;
    first.fills = first.seen = second.fills = second.seen = 0;
    inside = true;
}

static void on_end(unsigned cpu, void* data) {
    (void)data;
    if (!inside || cpu != counted_cpu) return;
    inside = false;
    fprintf(out, "%" PRIu64 " %" PRIu64 " %" PRIu64 " %" PRIu64 "\n", first.fills, first.seen, second.fills,
            second.seen);
}

static const exec_callback at_marker[2] = {on_begin, on_end};

static void on_translation(qemu_plugin_id_t id, struct qemu_plugin_tb* tb) {
    (void)id;
    const size_t n = qemu_plugin_tb_n_insns(tb);
    for (size_t i = 0; i < n; ++i) {
        struct qemu_plugin_insn* insn = qemu_plugin_tb_get_insn(tb, i);
        qemu_plugin_register_vcpu_mem_cb(insn, on_access, no_registers, loads_and_stores, NULL);
        if (qemu_plugin_insn_size(insn) != sizeof markers[0]) continue;
        uint8_t bytes[sizeof markers[0]];
        const void* found = qemu_plugin_insn_data(insn, bytes, sizeof bytes);
        for (int m = 0; m < 2; ++m)
            if (!memcmp(copies_data ? bytes : found, markers[m], sizeof markers[m]))
                qemu_plugin_register_vcpu_insn_exec_cb(insn, at_marker[m], no_registers, NULL);
    }
}

static void at_exit(qemu_plugin_id_t id, void* data) {
    (void)id, (void)data;
    fclose(out);
}

EXPORTED int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t* info, int argc, char** argv) {
    for (int i = 0; i < argc; ++i)
        if (!strncmp(argv[i], "out=", 4)) out = fopen(argv[i] + 4, "w");
    if (!out) {
        fprintf(stderr, "line_counter: out=FILE is missing or can't be written\n");
        return -1;
    }
    first.lines = calloc(first.sets, sizeof *first.lines);
    second.lines = calloc(second.sets, sizeof *second.lines);
    copies_data = info->version.current >= 3;
    qemu_plugin_register_vcpu_tb_trans_cb(id, on_translation);
    qemu_plugin_register_atexit_cb(id, at_exit, NULL);
    return 0;
}
