// SPDX-License-Identifier: Apache-2.0
// Signals for chosen threads, again and again while this lives. Their handler has no SA_RESTART, so that every wait
// returns early now and then.
#pragma once
#include <pthread.h>
#include <unistd.h>
#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

class signals_at {
public:
    explicit signals_at(std::vector<pthread_t> threads) : threads_(std::move(threads)) {
        struct sigaction do_nothing = {};
        do_nothing.sa_handler = [](int) {};
        sigaction(SIGVTALRM, &do_nothing, nullptr);  // for good: a signal may be on its way when this ends
        pest_ = std::thread([this] {
            for (; !done_; usleep(200))
                for (const pthread_t thread : threads_) sent_ += pthread_kill(thread, SIGVTALRM) == 0;
        });
        while (!sent_) usleep(100);
    }
    ~signals_at() {
        done_ = true;
        pest_.join();
    }
    int sent() const { return sent_; }

private:
    std::vector<pthread_t> threads_;
    std::atomic<bool> done_{false};
    std::atomic<int> sent_{0};
    std::thread pest_;
};
