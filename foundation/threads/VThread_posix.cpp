#include "foundation/threads/VThread.h"

#include <cerrno>
#include <ctime>

namespace VFoundation {

void VThread::Sleep(long milliseconds) {
    if (milliseconds <= 0) {
        return;
    }
    timespec left{};
    left.tv_sec = milliseconds / 1000;
    left.tv_nsec = milliseconds % 1000 * 1'000'000;
    while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
    }
}

} // namespace VFoundation
