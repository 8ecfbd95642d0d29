// SPDX-License-Identifier: Apache-2.0
// Emulator plugin: between the instructions `hint #42` and `hint #43` it counts how often each straight piece of code
// runs. A program may have any number of such regions; each is counted by itself. Only the thread that passed the first
// marker of a region is counted.
//
// The instruction `hint #44` is a clock: the number of instructions that all threads ran so far is written one page of
// 4096 bytes behind it, where the program keeps room for a 64-bit number.
//
// qemu-aarch64 -plugin block_counter.so,out=FILE[,trace=N] PROGRAM ...
//
// The file, one record per line, addresses in hexadecimal as the program sees them:
//   block NUMBER ADDRESS WORD ...   a straight piece of code and its instruction words
//   file START END OFFSET PATH      what is mapped where, for symbols
//   region                          followed by what ran in it:
//   count NUMBER TIMES
//   trace NUMBER ...                with trace=N: the pieces in the order in which they ran, if there are at most N
#include <inttypes.h>
#include <pthread.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// The part of the emulator's plugin interface that is used here; distributions ship no header for it before
// Debian 13. COUNTER_API is the version that the emulator expects (model.py finds out).
typedef uint64_t qemu_plugin_id_t;
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
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb*);
struct qemu_plugin_insn* qemu_plugin_tb_get_insn(const struct qemu_plugin_tb*, size_t index);
uint64_t qemu_plugin_insn_vaddr(const struct qemu_plugin_insn*);
void* qemu_plugin_insn_haddr(const struct qemu_plugin_insn*);
// Up to version 2 it returns the address of the bytes and knows only its first argument; from version 3 on it copies.
const void* qemu_plugin_insn_data(const struct qemu_plugin_insn*, void* destination, size_t size);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t, void (*)(qemu_plugin_id_t, struct qemu_plugin_tb*));
void qemu_plugin_register_vcpu_insn_exec_cb(struct qemu_plugin_insn*, exec_callback, int registers, void* data);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t, void (*)(qemu_plugin_id_t, void*), void* data);

#define EXPORTED __attribute__((visibility("default")))
EXPORTED int qemu_plugin_version = COUNTER_API;

enum {
    begin_marker = 0xd503255f,
    end_marker = 0xd503257f,
    clock_marker = 0xd503259f,
    page = 4096,
    buckets = 1 << 16,
    longest_piece = 4096
};

struct piece {
    uint64_t address, count;
    uint32_t number, length, *words;
    struct piece* next;
};

static struct piece* table[buckets];
static uint32_t pieces;
static uint64_t executed;
static bool inside, copies_data;
static unsigned counted_cpu;                                 // the emulator's number of the thread
static FILE* out;                                            // null when all is written: other threads may still run
static pthread_mutex_t records = PTHREAD_MUTEX_INITIALIZER;  // the table and the file, between threads
static uint32_t* trace;
static uint64_t trace_length, trace_limit;
static uint64_t guest_base;

static void on_begin(unsigned cpu, void* data) {
    (void)data;
    pthread_mutex_lock(&records);
    counted_cpu = cpu;
    for (size_t i = 0; i < buckets; ++i)
        for (struct piece* p = table[i]; p; p = p->next) p->count = 0;
    trace_length = 0;
    inside = true;
    pthread_mutex_unlock(&records);
}

static void write_region(void) {
    if (!inside || !out) return;
    inside = false;
    fprintf(out, "region\n");
    for (size_t i = 0; i < buckets; ++i)
        for (struct piece* p = table[i]; p; p = p->next)
            if (p->count) fprintf(out, "count %" PRIu32 " %" PRIu64 "\n", p->number, p->count);
    if (!trace_length || trace_length > trace_limit) return;
    fprintf(out, "trace");
    for (uint64_t i = 0; i < trace_length; ++i) fprintf(out, " %" PRIu32, trace[i]);
    fprintf(out, "\n");
}

static void on_end(unsigned cpu, void* data) {
    (void)cpu, (void)data;
    pthread_mutex_lock(&records);
    write_region();
    pthread_mutex_unlock(&records);
}

static void on_clock(unsigned cpu, void* data) {
    (void)cpu;
    *(uint64_t*)data = executed;
}

static void on_piece(unsigned cpu, void* data) {
    struct piece* p = data;
    executed += p->length;
    if (!inside || cpu != counted_cpu) return;
    ++p->count;
    if (trace_length < trace_limit) trace[trace_length] = p->number;
    ++trace_length;
}

// Code may be translated anew at any time; the same piece keeps its number.
static struct piece* find_piece(uint64_t address, const uint32_t* words, uint32_t length) {
    struct piece** bucket = &table[(address >> 2) % buckets];
    for (struct piece* p = *bucket; p; p = p->next)
        if (p->address == address && p->length == length && !memcmp(p->words, words, length * 4)) return p;
    struct piece* p = calloc(1, sizeof *p);
    *p = (struct piece){address, 0, pieces++, length, malloc(length * 4), *bucket};
    memcpy(p->words, words, length * 4);
    *bucket = p;
    if (!out) return p;
    fprintf(out, "block %" PRIu32 " %" PRIx64, p->number, address);
    for (uint32_t i = 0; i < length; ++i) fprintf(out, " %08" PRIx32, words[i]);
    fprintf(out, "\n");
    return p;
}

static void count_piece(struct qemu_plugin_insn* first, const uint32_t* words, uint32_t length) {
    if (!length) return;
    pthread_mutex_lock(&records);
    struct piece* const p = find_piece(qemu_plugin_insn_vaddr(first), words, length);
    pthread_mutex_unlock(&records);
    qemu_plugin_register_vcpu_insn_exec_cb(first, on_piece, 0, p);
}

// Cuts a translated block at the markers, which belong to no piece.
static void on_translation(qemu_plugin_id_t id, struct qemu_plugin_tb* tb) {
    (void)id;
    uint32_t words[longest_piece], length = 0;
    struct qemu_plugin_insn* first = NULL;
    const size_t n = qemu_plugin_tb_n_insns(tb);
    for (size_t i = 0; i < n; ++i) {
        struct qemu_plugin_insn* insn = qemu_plugin_tb_get_insn(tb, i);
        guest_base = (uint64_t)(uintptr_t)qemu_plugin_insn_haddr(insn) - qemu_plugin_insn_vaddr(insn);
        uint32_t word;
        const void* bytes = qemu_plugin_insn_data(insn, &word, sizeof word);
        if (!copies_data) memcpy(&word, bytes, sizeof word);
        if (word == begin_marker || word == end_marker) {
            qemu_plugin_register_vcpu_insn_exec_cb(insn, word == begin_marker ? on_begin : on_end, 0, NULL);
            count_piece(first, words, length);
            length = 0;
            continue;
        }
        if (word == clock_marker)
            qemu_plugin_register_vcpu_insn_exec_cb(insn, on_clock, 0, (char*)qemu_plugin_insn_haddr(insn) + page);
        if (length == 0) first = insn;
        if (length < longest_piece) words[length++] = word;
    }
    count_piece(first, words, length);
}

// The emulator maps the program's files into its own address space, shifted by a constant.
static void write_maps(void) {
    FILE* maps = fopen("/proc/self/maps", "r");
    char line[4600], path[4096];
    uint64_t start, end, offset;
    while (maps && fgets(line, sizeof line, maps))
        if (sscanf(line, "%" SCNx64 "-%" SCNx64 " %*s %" SCNx64 " %*s %*s %4095[^\n]", &start, &end, &offset, path) ==
                4 &&
            path[0] == '/')
            fprintf(out, "file %" PRIx64 " %" PRIx64 " %" PRIx64 " %s\n", start - guest_base, end - guest_base, offset,
                    path);
    if (maps) fclose(maps);
}

static void at_exit(qemu_plugin_id_t id, void* data) {
    (void)id, (void)data;
    pthread_mutex_lock(&records);
    write_region();
    write_maps();
    fclose(out);
    out = NULL;
    pthread_mutex_unlock(&records);
}

EXPORTED int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t* info, int argc, char** argv) {
    const char* path = NULL;
    for (int i = 0; i < argc; ++i) {
        if (!strncmp(argv[i], "out=", 4)) path = argv[i] + 4;
        if (!strncmp(argv[i], "trace=", 6)) trace_limit = strtoull(argv[i] + 6, NULL, 10);
    }
    out = path ? fopen(path, "w") : NULL;
    if (!out) {
        fprintf(stderr, "block_counter: out=FILE is missing or can't be written\n");
        return -1;
    }
    trace = calloc(trace_limit + 1, sizeof *trace);
    copies_data = info->version.current >= 3;
    qemu_plugin_register_vcpu_tb_trans_cb(id, on_translation);
    qemu_plugin_register_atexit_cb(id, at_exit, NULL);
    return 0;
}
