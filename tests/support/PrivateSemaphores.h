#pragma once

#include <atomic>

namespace testing_support {

/// Opens of named semaphores that are not closed again.
extern std::atomic<int> s_openSemaphores;

} // namespace testing_support
