#include "foundation/core/internal/ClassStart.h"

#include "foundation/core/internal/ClassRegistry.h"

#include <utility>

namespace VFoundation {

constinit detail::Mutex ClassStart::s_lock;
constinit ClassStart::Waiter* ClassStart::s_waiters = nullptr;

ClassStart::ThreadMark ClassStart::ThisThread() noexcept {
    static constinit thread_local char t_mark = 0;
    return &t_mark;
}

VClass* detail::ReadyClass(ClassDefinition const& definition) {
    return ClassStart::Ready(definition);
}

VClass* ClassStart::Ready(detail::ClassDefinition const& definition) {
    VClass* record = LoadClassSlot(*definition.slot);
    // relaxed: only this thread can have written its own mark
    if (record && record->m_state.load(std::memory_order_relaxed) == VClass::State::eStarting &&
        record->m_starter.load(std::memory_order_relaxed) == ThisThread()) {
        return record; // its hook uses the class
    }
    record = MakeOrAttach(definition);
    Start(*record);
    return record;
}

VClass* ClassStart::MakeOrAttach(detail::ClassDefinition const& definition) {
    // Before the lock, as this may wait. The superclass's hook may make this very class.
    VClass* const superClass = definition.superClass ? definition.superClass() : nullptr;
    ClassRegistry::CreationScope const creation;
    VClass* record = LoadClassSlot(*definition.slot);
    if (record) {
        // relaxed: records are detached and taken back under the lock of `creation`
        if (record->m_state.load(std::memory_order_relaxed) == VClass::State::eDetached) {
            ClassRegistry::Reattach(record, superClass);
        }
        return record;
    }
    if (definition.isSharedByName) {
        record = ClassRegistry::FindExactly(definition.name);
    }
    return record ? record
                  : new VClass(definition.name, superClass, definition.factory, 1, definition.initialize,
                               definition.uninitialize, definition.size, definition.slot);
}

void ClassStart::Start(VClass& record) {
    if (record.IsReady() || !MayStart(record)) {
        return;
    }
    try {
        record.InitializeClass();
    } catch (...) {
        Finish(record, VClass::State::eUnstarted);
        throw;
    }
    Finish(record, VClass::State::eReady);
}

/// Waits while another thread runs the hook. True when this thread is to run it.
bool ClassStart::MayStart(VClass& record) {
    detail::MutexLock lock(s_lock);
    for (;;) {
        VClass::State const state = record.m_state.load(std::memory_order_acquire);
        if (state == VClass::State::eUnstarted) {
            record.m_starter.store(ThisThread(), std::memory_order_relaxed);
            record.m_state.store(VClass::State::eStarting, std::memory_order_release);
            return true;
        }
        if (state != VClass::State::eStarting || !WaitCouldEnd(record)) {
            return false;
        }
        Waiter waiter{ThisThread(), &record, s_waiters};
        s_waiters = &waiter;
        lock.Unlock();
        record.m_state.wait(VClass::State::eStarting, std::memory_order_acquire);
        lock.Lock();
        Remove(waiter);
    }
}

/// False when the thread that runs the hook waits for this one, through any number of others, or may come to:
/// it may need the lock that this thread holds.
bool ClassStart::WaitCouldEnd(VClass const& record) {
    if (ClassRegistry::CreationScope::IsHeldByThisThread()) {
        return false;
    }
    VClass const* next = &record;
    while (next->m_state.load(std::memory_order_relaxed) == VClass::State::eStarting) {
        ThreadMark const starter = next->m_starter.load(std::memory_order_relaxed);
        if (starter == ThisThread()) {
            return false;
        }
        Waiter const* const waiter = WaiterOf(starter);
        if (!waiter) {
            return true;
        }
        next = waiter->record;
    }
    return true;
}

ClassStart::Waiter const* ClassStart::WaiterOf(ThreadMark thread) {
    Waiter const* waiter = s_waiters;
    while (waiter && waiter->thread != thread) {
        waiter = waiter->next;
    }
    return waiter;
}

void ClassStart::Remove(Waiter const& waiter) {
    Waiter** link = &s_waiters;
    while (*link != &waiter) {
        link = &(*link)->next;
    }
    *link = waiter.next;
}

void ClassStart::Finish(VClass& record, VClass::State state) {
    {
        detail::MutexLock const lock(s_lock);
        record.m_state.store(state, std::memory_order_release);
    }
    record.m_state.notify_all();
}

void ClassStart::RunAgain(VClass& record) {
    if (!std::exchange(record.m_initializeAgain, false)) {
        return;
    }
    try {
        record.InitializeClass();
    } catch (...) {
        record.m_initializeAgain = true;
        throw;
    }
}

} // namespace VFoundation
