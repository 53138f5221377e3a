#pragma once

#include <algorithm>
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

/// How many lives of the library a test is to see that looks for growth: `count`, less by the factor
/// VFOUNDATION_SLOW_FACTOR, which an emulator's preset sets. At least 12.
inline int Lives(int count) {
    char const* const text = std::getenv("VFOUNDATION_SLOW_FACTOR");
    int const factor = text ? std::atoi(text) : 1;
    return factor > 1 ? std::max(count / factor, 12) : count;
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
