#include "foundation/log/VLog.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/log/VLogContext.h"
#include "foundation/log/internal/DefaultLogRef.h"
#include "foundation/log/internal/LogLock.h"
#include "foundation/log/internal/SecondsText.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace VFoundation {

constinit std::atomic<bool> ms_bVerbose{true};

VClass* VLog::ms_theClass = nullptr;
constinit VLog* VLog::ms_theLog = nullptr;
constinit std::atomic<bool> VLog::ms_bInStartup{true};
constinit std::atomic<bool> VLog::ms_bInShutdown{false};
constinit std::atomic<bool> VLog::ms_bHeaderFooter{false};

namespace {

constexpr long kBusyLimit = 100; // ms
constexpr char kDivider[] =
    "------------------------------------------------------------------------------\n";

constinit std::recursive_mutex s_logLock;

/// The log that this thread is destroying, if any. What its destruction traces goes to it, and makes no new
/// log.
constinit thread_local VLog* t_dyingLog = nullptr;

class DyingLogScope {
  public:
    explicit DyingLogScope(VLog* log) noexcept : m_before(std::exchange(t_dyingLog, log)) {}
    DyingLogScope(DyingLogScope const&) = delete;
    DyingLogScope& operator=(DyingLogScope const&) = delete;
    ~DyingLogScope() { t_dyingLog = m_before; }

  private:
    VLog* m_before;
};

/// Whether the text that `format` and `arguments` make, `length` characters, ends with a line feed.
[[gnu::format(printf, 2, 0)]] bool EndsWithLineFeed(int length, char const* format, va_list arguments) {
    auto const size = narrow_cast<std::size_t>(length) + 1;
    std::unique_ptr<char[]> const whole(new (std::nothrow) char[size]);
    if (!whole) {
        return true;
    }
    std::vsnprintf(whole.get(), size, format, arguments);
    return whole[size - 2] == '\n';
}

/// Formats into `size` bytes; a text that does not fit is cut, but keeps its line feed.
[[gnu::format(printf, 3, 0)]] void FormatBounded(char* out, std::size_t size, char const* format,
                                                 va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    int const length = std::vsnprintf(out, size, format, arguments);
    if (length < 0) {
        out[0] = '\0';
    } else if (narrow_cast<std::size_t>(length) >= size && EndsWithLineFeed(length, format, again)) {
        out[size - 2] = '\n';
    }
    va_end(again);
}

} // namespace

std::recursive_mutex& LogLock() noexcept {
    return s_logLock;
}

VLog::DefaultLogRef::DefaultLogRef() : m_log(t_dyingLog) {
    if (m_log || Settle()) {
        return;
    }
    // Made outside the lock, as it takes class records; another thread may have been faster.
    VObjectRef<VLog> made = VObjectRef<VLog>::Adopt(VLog::New());
    std::lock_guard const lock(s_logLock);
    if (!IsSwitchedOff() && !ms_theLog) {
        ms_theLog = made.Detach();
    }
    Settle();
}

VLog::DefaultLogRef::~DefaultLogRef() {
    if (m_retained) {
        m_log->Release();
    }
}

bool VLog::DefaultLogRef::Settle() {
    std::lock_guard const lock(s_logLock);
    if (IsSwitchedOff()) {
        return true;
    }
    m_log = ms_theLog;
    if (m_log) {
        m_log->Retain();
        m_retained = true;
    }
    return m_retained;
}

VLog::VLog(VClass* cls)
    : Registered(cls), m_criticalSection(VObjectRef<VCriticalSection>::Adopt(VCriticalSection::New())) {
}

VLog::~VLog() {
    CloseContexts();
    DetachContexts();
}

VLog* VLog::New() {
    return new VLog();
}

void VLog::DeleteInstance() const {
    VLog* const self = const_cast<VLog*>(this);
    DyingLogScope const dying(self);
    self->CloseContexts(); // while the object is whole, so that a subclass gets the lines
    VObject::DeleteInstance();
}

void VLog::CloseContexts() {
    for (;;) {
        VObjectRef<VObject> innermost;
        {
            std::lock_guard const lock(s_logLock);
            innermost = VObjectRef<VObject>::Adopt(m_contexts.Pop());
        }
        if (!innermost) {
            return;
        }
    }
}

void VLog::DetachContexts() {
    std::lock_guard const lock(s_logLock);
    while (m_attached) {
        m_attached->m_log = nullptr;
        m_attached = std::exchange(m_attached->m_nextAttached, nullptr);
    }
}

bool VLog::IsSwitchedOff() noexcept {
    return !t_dyingLog &&
           (ms_bInStartup.load(std::memory_order_relaxed) || ms_bInShutdown.load(std::memory_order_relaxed));
}

bool VLog::EchoIfSwitchedOff(char const* format) {
    if (!IsSwitchedOff()) {
        return false;
    }
    if (!format || !ms_bVerbose.load(std::memory_order_relaxed)) {
        return true;
    }
    char piece[kLineSize];
    std::size_t length = 0;
    while (*format) {
        format += format[0] == '%' && format[1] == '%';
        piece[length++] = *format++;
        if (length == sizeof piece || !*format) {
            std::fwrite(piece, 1, std::exchange(length, 0), stderr);
        }
    }
    return true;
}

std::size_t VLog::WritePrefix(char* line) const {
    auto const indent = narrow_cast<std::size_t>(GetIndentLevel());
    std::memset(line, ' ', indent);
    if (!GetShowContextTime() || ms_bHeaderFooter.load(std::memory_order_relaxed)) {
        return indent;
    }
    std::lock_guard const lock(s_logLock);
    auto const* const innermost = static_cast<VLogContext*>(m_contexts.ObjectAtTopOfStack());
    if (!innermost) {
        return indent;
    }
    SecondsText const seconds(innermost->GetElapsedTime());
    std::memcpy(line + indent, seconds.Text(), seconds.Length());
    line[indent + seconds.Length()] = ' ';
    return indent + seconds.Length() + 1;
}

void VLog::Trace(char const* format, ...) {
    if (EchoIfSwitchedOff(format)) {
        return;
    }
    DefaultLogRef const log;
    if (!log || !format) {
        return;
    }
    char line[kLineSize];
    std::size_t const used = log->WritePrefix(line);
    va_list arguments;
    va_start(arguments, format);
    FormatBounded(line + used, sizeof line - used, format, arguments);
    va_end(arguments);
    log->AddString(line);
}

void VLog::Trace(VObject const& object) {
    DefaultLogRef const log;
    if (!log) {
        return;
    }
    VString line;
    object.GetDescription(line);
    if (line.IsEmpty() || line.GetCharAtIndex(line.Length() - 1) != '\n') {
        line << '\n';
    }
    log->AddString(line.CString());
}

void VLog::Divider() {
    if (DefaultLogRef const log; log) {
        log->DividerI();
    }
}

void VLog::DividerI() {
    Trace("%s", kDivider);
}

void VLog::StartIndent() {
    if (DefaultLogRef const log; log) {
        long const level = log->GetIndentLevel();
        if (level < kMaxIndentLevel) {
            log->m_indentLevel.store(narrow_cast<std::int32_t>(level + 1), std::memory_order_relaxed);
        }
    }
}

void VLog::StartLoggingContext(char const* name) {
    DefaultLogRef const log;
    if (!log) {
        return;
    }
    auto const context = VObjectRef<VLogContext>::Adopt(new VLogContext(name, log.Get()));
    std::lock_guard const lock(s_logLock);
    log->m_contexts.Array().AddObject(context.Get());
}

void VLog::EndLoggingContext() {
    DefaultLogRef const log;
    if (!log) {
        return;
    }
    VObjectRef<VObject> innermost; // released after the lock: that writes the end line
    std::lock_guard const lock(s_logLock);
    innermost = VObjectRef<VObject>::Adopt(log->m_contexts.Pop());
}

VLog* VLog::GetDefaultLog() {
    return DefaultLogRef().Get();
}

VLog* VLog::ReplaceDefaultLog(VLog* log) {
    std::lock_guard const lock(s_logLock);
    return std::exchange(ms_theLog, log);
}

void VLog::SetLog(VLog* log) {
    VObjectRef<VLog> replaced(log);
    {
        std::lock_guard const lock(s_logLock);
        if (ms_theLog == log) {
            return;
        }
        replaced = VObjectRef<VLog>::Adopt(ReplaceDefaultLog(replaced.Detach()));
    }
    std::fflush(stderr);
}

void VLog::DestroyDefaultLog() {
    VObjectRef<VLog>::Adopt(ReplaceDefaultLog(nullptr));
}

void VLog::SetSafeStartup() {
    ms_bInStartup.store(false);
    ms_bInShutdown.store(false);
}

void VLog::SetSafeShutdown() {
    VObjectRef<VLog> old;
    std::lock_guard const lock(s_logLock);
    ms_bInShutdown.store(true);
    old = VObjectRef<VLog>::Adopt(ReplaceDefaultLog(nullptr));
}

void VLog::SetLevel(long level) noexcept {
    m_level.store(narrow_cast<std::int32_t>(level), std::memory_order_relaxed);
}

void VLog::AddString(char const* line) {
    if (!line || !ms_bVerbose.load(std::memory_order_relaxed)) {
        return;
    }
    VCriticalSectionScope scope;
    if (!scope.TryEnter(m_criticalSection.Get(), kBusyLimit)) {
        return;
    }
    std::size_t const length = std::strlen(line);
    bool const needsLineFeed = length > 0 && line[length - 1] != '\n';
    if (needsLineFeed) {
        std::fprintf(stderr, "%s\n", line); // one call, so that the line reaches the stream whole
    } else {
        std::fputs(line, stderr);
    }
}

} // namespace VFoundation
