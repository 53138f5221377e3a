#include "foundation/threads/VThread.h"

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/log/VLog.h"

#include <mutex>
#include <utility>

namespace VFoundation {

VClass* VThread::ms_theClass = nullptr;
VObjectArrayTmpl<VThread>* VThread::ms_threads = nullptr;

namespace {

/// Room made with the list, so that the first entry, made under the lock below, allocates nothing.
constexpr long kInitialThreads = 32;

constinit std::mutex s_threadsLock;

VObjectArrayTmpl<VThread>* ExchangeThreads(VObjectArrayTmpl<VThread>* threads) {
    std::lock_guard const lock(s_threadsLock);
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
        std::lock_guard const lock(s_threadsLock);
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
    auto thread = VObjectRef<VThread>::Adopt(New());
    auto id = std::make_unique<ThreadID>();
    int const status = CreateSystemThread(*id, body, argument);
    if (status != 0) {
        VLog::Trace("Error starting thread: %i\n", status);
        return nullptr;
    }
    thread->m_handle = std::move(id);
    return thread.Detach();
}

bool VThread::RegisterThread(VThread* thread) {
    std::lock_guard const lock(s_threadsLock);
    return thread && ms_threads && ms_threads->AddObjectTyped(thread);
}

void VThread::UnregisterThread(VThread* thread) {
    if (!thread) {
        return;
    }
    VObjectRef<VThread> const keep(thread); // let go after the lock, as it may be the last reference
    std::lock_guard const lock(s_threadsLock);
    if (ms_threads) {
        ms_threads->RemoveObject(thread);
    }
}

bool VThread::SetPriority(ePriority priority) {
    m_priority = priority;
    return true;
}

} // namespace VFoundation
