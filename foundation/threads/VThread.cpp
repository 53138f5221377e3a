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

/// Room made with the list, and added to it when it is full.
constexpr long kRoom = 32;

using ThreadList = VObjectArrayTmpl<VThread>;

/// Protects `VThread::ms_threads`, which is public.
constinit detail::Mutex s_threadsLock;

ThreadList* ExchangeThreads(ThreadList* threads) {
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
    auto* threads = new ThreadList(kRoom);
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
        VObjectRef<ThreadList> larger; // or the former list; released after the lock
        detail::MutexLock lock(s_threadsLock);
        while (thread && ms_threads) {
            if (ms_threads->Count() < ms_threads->AllocatedCapacity()) {
                return ms_threads->AddObjectTyped(thread);
            }
            long const count = ms_threads->Count();
            if (larger && count < larger->AllocatedCapacity()) {
                for (long i = 0; i < count; ++i) {
                    larger->AddObject(ms_threads->ObjectAtIndex(i));
                }
                larger = VObjectRef<ThreadList>::Adopt(std::exchange(ms_threads, larger.Detach()));
                continue;
            }
            lock.Unlock(); // an allocation that fails traces, and a log may register a thread
            larger = VObjectRef<ThreadList>::Adopt(new ThreadList(count + kRoom));
            lock.Lock();
        }
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
