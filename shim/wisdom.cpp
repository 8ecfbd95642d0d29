// SPDX-License-Identifier: Apache-2.0
#include "shim/wisdom.h"

#include <pthread.h>

#include <cstdlib>
#include <cstring>

namespace {

struct entry {
    entry* next;
    int level;  // care
    size_t size;
    char line[];  // not terminated
};

constexpr size_t bucket_count = 1024;
entry* buckets[bucket_count];
pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;

struct locked {
    locked() { pthread_mutex_lock(&mutex); }
    ~locked() { pthread_mutex_unlock(&mutex); }
};

entry** bucket_of(const char* line, size_t size) {
    uint64_t hash = 14695981039346656037u;  // FNV-1a
    for (size_t i = 0; i < size; ++i) hash = (hash ^ static_cast<unsigned char>(line[i])) * 1099511628211u;
    return &buckets[hash % bucket_count];
}

entry* find(const char* line, size_t size) {
    for (entry* e = *bucket_of(line, size); e; e = e->next)
        if (e->size == size && memcmp(e->line, line, size) == 0) return e;
    return nullptr;
}

// Without memory the line isn't learnt: wisdom may be forgotten at any time.
void learn(const char* line, size_t size, int level) {
    if (entry* known = find(line, size)) {
        if (known->level < level) known->level = level;
        return;
    }
    auto* e = static_cast<entry*>(malloc(sizeof(entry) + size));
    if (!e) return;
    entry** bucket = bucket_of(line, size);
    e->next = *bucket;
    e->level = level;
    e->size = size;
    memcpy(e->line, line, size);
    *bucket = e;
}

void describe_dims(text& t, const dimension* list, int count, bool kinds) {
    for (int i = 0; i < count; ++i) {
        t.print(" %td:%td:%td", list[i].n, list[i].is, list[i].os);
        if (kinds) t.print(":%u", list[i].r2r_kind);
    }
}

// Everything that makes two problems different, but not where their arrays are.
void describe(text& t, const problem& p) {
    static constexpr const char* kinds[] = {"c2c", "c2r", "r2c", "r2r"};
    t.print("%s%s%s%s %d threads,", kinds[p.kind], p.split ? " split" : "", p.backward ? " backward" : "",
            p.in_place() ? " in place" : "", fftwf_planner_nthreads());
    if (p.empty) return t.print(" empty");
    describe_dims(t, p.dims, p.rank, p.kind == kind_r2r);
    t.print(" *");
    describe_dims(t, p.batch, p.batch_rank, false);
}

constexpr const char* care_names[] = {"estimate", "measure", "patient", "exhaustive"};
constexpr const char header[] = "(qfftf-wisdom-1 fftwf\n";

int care_by_name(const char* name, size_t size) {
    for (int level = care_estimate; level <= care_exhaustive; ++level)
        if (strlen(care_names[level]) == size && memcmp(care_names[level], name, size) == 0) return level;
    return -1;
}

// Characters that describe() writes.
bool is_line(const char* line, size_t size) {
    for (size_t i = 0; i < size; ++i)
        if (!strchr("abcdefghijklmnopqrstuvwxyz0123456789 :,*-", line[i]) || line[i] == '\0') return false;
    return size > 0;
}

// One "  (care line)\n" at a time: false at the first that isn't. `use` gets the line and its level.
template <class Use>
bool for_each_line(const char* at, const char* end, const Use& use) {
    while (at < end && *at == ' ') {
        const auto* newline = static_cast<const char*>(memchr(at, '\n', end - at));
        if (!newline || newline - at < 5 || memcmp(at, "  (", 3) != 0 || newline[-1] != ')') return false;
        const char *name = at + 3, *last = newline - 1;
        const auto* space = static_cast<const char*>(memchr(name, ' ', last - name));
        const int level = space ? care_by_name(name, space - name) : -1;
        if (level < 0 || !is_line(space + 1, last - space - 1)) return false;
        use(space + 1, static_cast<size_t>(last - space - 1), level);
        at = newline + 1;
    }
    return at < end && *at == ')';
}

}  // namespace

bool wisdom_knows(const problem& p, care c) {
    text t;
    describe(t, p);
    if (!t.data()) return false;
    const locked lock;
    const entry* e = find(t.data(), t.size());
    return e && e->level >= c;
}

void wisdom_learns(const problem& p, care c) {
    text t;
    describe(t, p);
    if (!t.data()) return;
    const locked lock;
    learn(t.data(), t.size(), c);
}

void wisdom_export(text& t) {
    const locked lock;
    t.append(header, sizeof header - 1);
    for (const entry* bucket : buckets)
        for (const entry* e = bucket; e; e = e->next) {
            t.print("  (%s ", care_names[e->level]);
            t.append(e->line, e->size);
            t.append(")\n", 2);
        }
    t.append(")\n", 2);
}

bool wisdom_import(const char* data, size_t size) {
    while (size > 0 && strchr(" \t\r\n", *data) && *data) ++data, --size;
    const size_t header_size = sizeof header - 1;
    if (size < header_size || memcmp(data, header, header_size) != 0) return false;
    const char *begin = data + header_size, *end = data + size;
    if (!for_each_line(begin, end, [](const char*, size_t, int) {})) return false;
    const locked lock;
    return for_each_line(begin, end, learn);
}

void fftwf_forget_wisdom(void) {
    const locked lock;
    for (entry*& bucket : buckets)
        while (bucket) {
            entry* e = bucket;
            bucket = e->next;
            free(e);
        }
}
