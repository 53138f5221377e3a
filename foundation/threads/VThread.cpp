#include "foundation/threads/VThread.h"

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/VException.h"
#include "foundation/log/VLog.h"

#include <cerrno>
#include <new>
#include <utility>

namespace VFoundation {

VClass* VThread::ms_theClass = nullptr;
VObjectArrayTmpl<VThread>* VThread::ms_threads = nullptr;

namespace {

/// Room made with the list, so that the first entry, made under the lock below, allocates nothing.
constexpr long kInitialThreads = 32;

/// Protects `VThread::ms_threads`, which is public.
constinit detail::Mutex s_threadsLock;

VObjectArrayTmpl<VThread>* ExchangeThreads(VObjectArrayTmpl<VThread>* threads) {
    detail::MutexLock const lock(s_threadsLock);
    return std::exchange(VThread::ms_threads, threads);
}

} // namespace

VThread::VThread(VClass* cls) : Registered(cls) {
}

VThread::~VThread() = default;

VThread* VThread::New() {
    return new VThread();
}

void VThread::InitializeClass() {
    auto* threads = new VObjectArrayTmpl<VThread>(kInitialThreads);
    {
        detail::MutexLock const lock(s_threadsLock);
        if (!ms_threads) {
            ms_threads = std::exchange(threads, nullptr);
        }
    }
    if (threads) {
        threads->Release();
    }
}

void VThread::UninitializeClass() {
    if (auto* const threads = ExchangeThreads(nullptr)) {
        threads->Release();
    }
}

VThread* VThread::StartThread(Body body, void* argument, char const* /*name*/) {
    int status = ENOMEM;
    try {
        auto thread = VObjectRef<VThread>::Adopt(New());
        thread->m_handle = std::make_unique<ThreadID>();
        status = CreateSystemThread(*thread->m_handle, body, argument);
        if (status == 0) {
            return thread.Detach();
        }
    } catch (std::bad_alloc const&) { // as if the system had refused
    }
    VLog::Trace("Error starting thread: %i\n", status);
    return nullptr;
}

bool VThread::RegisterThread(VThread* thread) {
    try {
        detail::MutexLock const lock(s_threadsLock);
        return thread && ms_threads && ms_threads->AddObjectTyped(thread);
    } catch (VException const&) { // no memory for the entry, as below
    } catch (std::bad_alloc const&) {
    }
    return false;
}

void VThread::UnregisterThread(VThread* thread) {
    if (!thread) {
        return;
    }
    VObjectRef<VThread> const keep(thread); // let go after the lock, as it may be the last reference
    detail::MutexLock const lock(s_threadsLock);
    if (ms_threads) {
        ms_threads->RemoveObject(thread);
    }
}

bool VThread::SetPriority(ePriority priority) {
    m_priority = priority;
    return true;
}

} // namespace VFoundation
