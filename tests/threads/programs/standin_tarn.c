/* SPDX-License-Identifier: Apache-2.0 */
/* A stand-in for libtarn.so: says on the standard output what it is asked for and runs a loop on up to three threads,
 * each with the indices of one residue. Tests also build it with one function renamed, so that it lacks that one. */
#include <pthread.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>

struct range {
    uint32_t dimensions;
    uint64_t start, end, step, reserved;
};

struct loop {
    uint64_t flags;
    const struct range* range;
    void* group;
    uint32_t concurrency, reserved;
};

typedef void (*range_function)(const struct range* range, void* closure);

struct share {
    struct range range;
    range_function function;
    void* closure;
};

enum { executors = 4 };
static int groups;            /* made so far; a group is a number */
static __thread int self = 1; /* the executor of a thread that tarn didn't make */

int tarn_get_executor_num(void) { return self; }
int tarn_get_num_executors(void) { return executors; }

void* tarn_egroup_create(const int32_t* members, int count) {
    printf("create %d:", groups + 1);
    for (int i = 0; i < count; ++i) printf(" %d", members[i]);
    printf("\n");
    return (void*)(intptr_t)++groups;
}

void tarn_egroup_destroy(void* group) { printf("destroy %d\n", (int)(intptr_t)group); }

static void* run_share(void* argument) {
    struct share* share = argument;
    share->function(&share->range, share->closure);
    return NULL;
}

int tarn_parallel_for(const struct loop* loop, range_function function, void* closure) {
    const struct range* r = loop->range;
    printf("loop flags %d group %d concurrency %u reserved %u range %u %d %d %d %d\n", (int)loop->flags,
           (int)(intptr_t)loop->group, loop->concurrency, loop->reserved, r->dimensions, (int)r->start, (int)r->end,
           (int)r->step, (int)r->reserved);
    enum { team = 3 };
    struct share shares[team];
    pthread_t threads[team];
    for (int i = 0; i < team; ++i) {
        shares[i] = (struct share){*r, function, closure};
        shares[i].range.start += i * r->step;
        shares[i].range.step *= team;
        if (i > 0) pthread_create(&threads[i], NULL, run_share, &shares[i]);
    }
    run_share(&shares[0]);
    for (int i = 1; i < team; ++i) pthread_join(threads[i], NULL);
    return 0;
}

void tarn_shm_win_query(void) { abort(); }
void tarn_shm_comm_create(void) { abort(); }
void tarn_shm_comm_destroy(void) { abort(); }
void tarn_shm_win_free(void) { abort(); }
void tarn_shm_win_alloc(void) { abort(); }
