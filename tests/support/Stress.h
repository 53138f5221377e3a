#pragma once

#include <cstdlib>
#include <thread>
#include <vector>

namespace testing_support {

/// How much longer than a few seconds a stress test is to run: VFOUNDATION_STRESS_FACTOR, 1 if unset.
inline int StressFactor() {
    char const* const text = std::getenv("VFOUNDATION_STRESS_FACTOR");
    int const factor = text ? std::atoi(text) : 1;
    return factor > 1 ? factor : 1;
}

/// Runs `body(number)` on so many threads, and waits for them.
template <class Body>
void OnThreads(int count, Body body) {
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back(body, number);
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

} // namespace testing_support
