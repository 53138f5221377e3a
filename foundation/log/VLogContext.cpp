#include "foundation/log/VLogContext.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/log/internal/ContextTraceHook.h"
#include "foundation/log/internal/DefaultLogRef.h"
#include "foundation/log/internal/SecondsText.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <utility>

namespace VFoundation {

VClass* VLog::VLogContext::ms_theClass = nullptr;

/// Marks the lines of contexts, which carry no time.
class VLog::VLogContext::HeaderFooterScope {
  public:
    HeaderFooterScope() noexcept { VLog::ms_bHeaderFooter.store(true, std::memory_order_relaxed); }
    HeaderFooterScope(HeaderFooterScope const&) = delete;
    HeaderFooterScope& operator=(HeaderFooterScope const&) = delete;
    ~HeaderFooterScope() { VLog::ms_bHeaderFooter.store(false, std::memory_order_relaxed); }
};

VLog::VLogContext::VLogContext(char const* name, VLog* log) : VLogContext(nullptr, name, log) {
}

VLog::VLogContext::VLogContext(VClass* cls, char const* name, VLog* log)
    : Registered(cls), m_stopWatch(true) {
    if (name) {
        m_name = VObjectRef<VString>::Adopt(VString::NewString(name));
    }
    if (log) {
        Attach(log);
    } else if (DefaultLogRef const defaultLog; defaultLog) {
        Attach(defaultLog.Get());
    }
    try {
        WriteStart();
    } catch (...) {
        detail::MutexLock const lock(ms_lock);
        Detach();
        throw;
    }
}

VLog::VLogContext::~VLogContext() {
    WithoutThrowing([this] { WriteEnd(); });
}

VLog::VLogContext* VLog::VLogContext::New() {
    return new VLogContext(nullptr, nullptr);
}

char const* VLog::VLogContext::Name() const {
    return m_name ? m_name->CString() : "";
}

void VLog::VLogContext::Attach(VLog* log) {
    detail::MutexLock const lock(ms_lock);
    m_log = log;
    m_nextAttached = log->m_attached;
    log->m_attached = this;
}

/// Nothing for a context whose log is gone.
void VLog::VLogContext::Detach() {
    if (!m_log) {
        return;
    }
    VLogContext** link = &m_log->m_attached;
    while (*link != this) {
        link = &(*link)->m_nextAttached;
    }
    *link = m_nextAttached;
    m_log = nullptr;
}

void VLog::VLogContext::WriteStart() {
    HeaderFooterScope const headerFooter;
    VLog::Trace("[ %s - START ]\n", Name());
    {
        detail::MutexLock const lock(ms_lock);
        if (!m_log) {
            return;
        }
        m_savedIndent = narrow_cast<std::int32_t>(m_log->GetIndentLevel());
    }
    VLog::StartIndent();
}

void VLog::VLogContext::WriteEnd() {
    if (std::exchange(m_hasEnded, true)) {
        return;
    }
    {
        detail::MutexLock const lock(ms_lock);
        if (m_log) {
            m_log->m_indentLevel.store(m_savedIndent, std::memory_order_relaxed);
            Detach();
        }
    }
    ContextTraceHook::ContextEnded(Name(), m_stopWatch.GetElapsedTime());
    HeaderFooterScope const headerFooter;
    if (!VLog::EchoIfSwitchedOff("[ %s - END ] %5.4lf\n")) {
        VLog::Trace("[ %s - END ] %s\n", Name(), SecondsText(m_stopWatch.GetElapsedTime()).Text());
    }
}

} // namespace VFoundation
