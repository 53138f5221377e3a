#include "foundation/threads/VThread.h"

#include <cxxabi.h>
#include <pthread.h>

namespace VFoundation {

int VThread::CreateSystemThread(ThreadID& id, Body body, void* argument) {
    return pthread_create(&id, nullptr, body, argument);
}

/// Unwinds the stack, so that the objects on it are destroyed.
void VThread::EndThread() {
    pthread_exit(nullptr);
}

bool VThread::CaughtEndOfThread() noexcept {
    // It has no type. Catching `abi::__forced_unwind` by name binds a reference to null.
    return abi::__cxa_current_exception_type() == nullptr;
}

} // namespace VFoundation
