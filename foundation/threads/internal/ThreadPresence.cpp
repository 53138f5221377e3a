#include "foundation/threads/internal/ThreadPresence.h"

#include "foundation/threads/internal/Futex.h"

namespace VFoundation {

constinit detail::Mutex ThreadPresence::ms_lock;
constinit ThreadPresence* ThreadPresence::ms_first = nullptr;
constinit bool ThreadPresence::ms_libraryEnds = false;

namespace {

// Milliseconds. The first is what the end of a server waits in all.
constexpr long kForClientCode = 1100;
constexpr long kForLeaving = 25'000;

/// Counts the threads that have left, and the ends of the library that are over; what waits for either sleeps
/// on the word.
constinit std::atomic<std::uint32_t> s_changes{0};

void TellOfChange() noexcept {
    s_changes.fetch_add(1);
    FutexWakeAll(s_changes);
}

} // namespace

ThreadPresence::ThreadPresence() : m_forkHook(this, {nullptr, nullptr, &LeaveInChild}) {
    detail::MutexLock const lock(ms_lock);
    m_link = &ms_first;
    m_next = ms_first;
    if (m_next) {
        m_next->m_link = &m_next;
    }
    ms_first = this;
}

ThreadPresence::~ThreadPresence() {
    detail::MutexLock const lock(ms_lock);
    *m_link = m_next;
    if (m_next) {
        m_next->m_link = m_link;
    }
}

void ThreadPresence::BeginLeaving() noexcept {
    for (;;) {
        std::uint32_t const seen = s_changes.load();
        {
            detail::MutexLock const lock(ms_lock);
            if (!m_givenUp || !ms_libraryEnds) {
                m_leaving = true;
                return;
            }
        }
        FutexWait(s_changes, seen, nullptr);
    }
}

void ThreadPresence::Leave() noexcept {
    m_up.Set();
    m_left.Set();
    TellOfChange();
}

void ThreadPresence::LeaveInChild(void* self) {
    auto* const presence = static_cast<ThreadPresence*>(self);
    if (presence->m_thread.load() != VThread::GetCurrentThreadID()) {
        presence->Leave();
    }
}

bool ThreadPresence::LibraryEnd::AwaitAll(bool onlyLeaving, long milliseconds) noexcept {
    MonotonicTime const deadline = MillisecondsFromNow(milliseconds);
    auto const self = VThread::GetCurrentThreadID();
    for (;;) {
        std::uint32_t const seen = s_changes.load();
        bool any = false;
        {
            detail::MutexLock const lock(ms_lock);
            for (ThreadPresence* thread = ms_first; thread && !any; thread = thread->m_next) {
                bool const concerns = thread->m_leaving || (!onlyLeaving && thread->m_dismissed.load());
                any = concerns && !thread->m_givenUp && !thread->HasLeft() && thread->m_thread.load() != self;
            }
        }
        if (!any) {
            return true;
        }
        if (!FutexWait(s_changes, seen, &deadline)) {
            return false;
        }
    }
}

void ThreadPresence::LibraryEnd::Await() noexcept {
    if (!AwaitAll(false, kForClientCode)) {
        AwaitAll(true, kForLeaving);
    }
    detail::MutexLock const lock(ms_lock);
    ms_libraryEnds = true;
    for (ThreadPresence* thread = ms_first; thread; thread = thread->m_next) {
        thread->m_givenUp = thread->m_givenUp || (thread->m_dismissed.load() && !thread->m_leaving);
    }
}

ThreadPresence::LibraryEnd::~LibraryEnd() {
    {
        detail::MutexLock const lock(ms_lock);
        ms_libraryEnds = false;
    }
    TellOfChange();
}

} // namespace VFoundation
