// SPDX-License-Identifier: Apache-2.0
// Threads of the program's own, each with a plan of its own: per_thread makes it when a thread first asks.
#include <atomic>
#include <complex>
#include <cstdio>
#include <qfftf.hpp>
#include <thread>
#include <vector>

int main() {
    constexpr int n = 256, workers = 4, transforms = 25;
    qfftf::per_thread<qfftf::c2c_plan> plans([] {
        std::vector<std::complex<float>> array(n);  // only its length and being in place count
        return qfftf::plan_c2c({n}, array, array, qfftf::forward);
    });
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int worker = 0; worker < workers; ++worker) {
        threads.emplace_back([&, worker] {
            for (int t = 0; t < transforms; ++t) {
                std::vector<std::complex<float>> data(n);
                data[0] = static_cast<float>(worker + t);
                plans.get()(data, data);
                right += data[n - 1] == std::complex<float>(static_cast<float>(worker + t));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::printf("%d of %d transforms are right\n", right.load(), workers * transforms);
}
/* Prints:
100 of 100 transforms are right
*/
