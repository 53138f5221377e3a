#pragma once

#include <atomic>

namespace testing_support {

/// Opens of named semaphores that are not closed again.
extern std::atomic<int> s_openSemaphores;
/// While true, every `sem_open` fails as if the process had too many files open.
extern std::atomic<bool> s_refusesSemaphores;

} // namespace testing_support
