#include "foundation/containers/internal/ProcessBarrier.h"

#include <linux/membarrier.h>
#include <sys/single_threaded.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace VFoundation {

namespace {

bool Membarrier(int command) noexcept {
    return syscall(SYS_membarrier, command, 0, 0) == 0;
}

} // namespace

bool PrepareProcessBarrier() noexcept {
    return __libc_single_threaded != 0 && Membarrier(MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED);
}

bool ProcessBarrier() noexcept {
    return Membarrier(MEMBARRIER_CMD_PRIVATE_EXPEDITED);
}

} // namespace VFoundation
