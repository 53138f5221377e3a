#include "foundation/log/VLog.h"

#include "foundation/containers/VObjectStack.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/host/internal/LocalTime.h"
#include "foundation/log/VLogContext.h"
#include "foundation/log/internal/DefaultLogRef.h"
#include "foundation/log/internal/SecondsText.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/internal/FormatText.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <algorithm>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>
#include <utility>

namespace VFoundation {

constinit std::atomic<bool> ms_bVerbose{true};

VClass* VLog::ms_theClass = nullptr;
constinit detail::Mutex VLog::ms_lock;
constinit VLog* VLog::ms_theLog = nullptr;
constinit std::atomic<bool> VLog::ms_bInStartup{true};
constinit std::atomic<bool> VLog::ms_bInShutdown{false};
constinit std::atomic<bool> VLog::ms_bHeaderFooter{false};
constinit std::atomic<bool> VLog::ms_bShowRoutine{true};

namespace {

constexpr long kBusyLimit = 100;           // ms
constexpr std::size_t kTimeOfDaySize = 64; // whatever the system's clock says
constexpr char kDivider[] =
    "------------------------------------------------------------------------------\n";

/// How many lines of this thread are under way, each nested in the one before.
constinit thread_local int t_linesUnderWay = 0;

char const* NameOf(VLog::eLevel level) {
    switch (level) {
    case VLog::eDebug:
        return "DEBUG: ";
    case VLog::eWarning:
        return "WARNING: ";
    case VLog::eError:
        return "ERROR: ";
    default:
        return "";
    }
}

/// "09:05:00.123 "; the number of characters.
std::size_t WriteTimeOfDay(char* out) {
    using namespace std::chrono;
    auto const now = system_clock::now().time_since_epoch();
    std::tm time{};
    LocalTime(duration_cast<seconds>(now).count(), time);
    auto const part = static_cast<int>(duration_cast<milliseconds>(now).count() % 1000);
    return narrow_cast<std::size_t>(std::snprintf(out, kTimeOfDaySize, "%02d:%02d:%02d.%03d ", time.tm_hour,
                                                  time.tm_min, time.tm_sec, part));
}

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

/// Copies into `size` bytes; a text that does not fit is cut, but keeps its line feed.
void CopyBounded(char* out, std::size_t size, char const* text) {
    std::size_t const length = std::strlen(text);
    std::size_t const kept = std::min(length, size - 1);
    std::memcpy(out, text, kept);
    out[kept] = '\0';
    if (kept < length && text[length - 1] == '\n') {
        out[kept - 1] = '\n';
    }
}

/// Formats into `size` bytes; a text that does not fit is cut, but keeps its line feed.
[[gnu::format(printf, 3, 0)]] void FormatBounded(char* out, std::size_t size, char const* format,
                                                 va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    int const length = FormatText(out, size, format, arguments);
    if (length < 0) {
        out[0] = '\0';
    } else if (narrow_cast<std::size_t>(length) >= size && EndsWithLineFeed(length, format, again)) {
        out[size - 2] = '\n';
    }
    va_end(again);
}

} // namespace

constinit thread_local VLog* VLog::DyingLogScope::t_log = nullptr;

VLog::DefaultLogRef::DefaultLogRef() : m_log(DyingLogScope::Current()) {
    if (m_log) {
        return;
    }
    {
        detail::MutexLock const lock(ms_lock);
        if (TakeDefaultLog()) {
            return;
        }
    }
    // Made outside the lock, as it takes class records; another thread may have been faster.
    VObjectRef<VLog> made = VObjectRef<VLog>::Adopt(VLog::New());
    detail::MutexLock const lock(ms_lock);
    if (!IsSwitchedOff() && !ms_theLog) {
        ms_theLog = made.Detach();
    }
    TakeDefaultLog();
}

VLog::DefaultLogRef::~DefaultLogRef() {
    if (m_retained) {
        DyingLogScope const dying(m_log); // another thread may have replaced it meanwhile
        m_log->Release();
    }
}

bool VLog::DefaultLogRef::TakeDefaultLog() {
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

/// The time that a line takes, from the call of the client to the return of `AddString`.
class VLog::LineScope {
  public:
    LineScope() noexcept { ++t_linesUnderWay; }
    LineScope(LineScope const&) = delete;
    LineScope& operator=(LineScope const&) = delete;
    ~LineScope() { --t_linesUnderWay; }

    /// True, and the line counted as lost, when it is nested too deep.
    static bool Drop(VLog& log) noexcept {
        bool const drop = t_linesUnderWay > 1 + kMaxNesting;
        if (drop) {
            log.CountDroppedLine();
        }
        return drop;
    }
};

VLog::VLog(VClass* cls)
    : Registered(cls), m_criticalSection(VObjectRef<VCriticalSection>::Adopt(VCriticalSection::New())),
      m_contexts(VObjectRef<VObjectStack>::Adopt(VObjectStack::New())) {
}

VLog::~VLog() {
    m_life.store(eBeingDestroyed, std::memory_order_relaxed);
    while (!WithoutThrowing([this] { CloseContexts(); })) {
    }
    DetachContexts();
}

VLog* VLog::New() {
    return new VLog();
}

void VLog::DeleteInstance() const {
    VLog* const self = const_cast<VLog*>(this);
    self->m_life.store(eBeingDestroyed, std::memory_order_relaxed);
    // While the object is whole, so that a subclass gets the lines.
    while (!WithoutThrowing([self] { self->CloseContexts(); })) {
    }
    VObject::DeleteInstance();
}

// Contexts

/// An empty stack with room for so many contexts.
VObjectRef<VObjectStack> VLog::NewContextStack(long room, VLogContext const& any) {
    auto stack = VObjectRef<VObjectStack>::Adopt(VObjectStack::New());
    stack->Array().SetGrowSize(room);
    stack->Array().AddObject(&any); // takes the room
    stack->Array().RemoveAllObjects();
    return stack;
}

void VLog::PushContext(VObjectRef<VLogContext> context) {
    VObjectRef<VObjectStack> larger;
    detail::MutexLock lock(ms_lock);
    for (;;) {
        VObjectArray& open = m_contexts->Array();
        long const count = open.Count();
        if (count < open.AllocatedCapacity()) {
            open.AddObject(context.Get());
            return;
        }
        if (larger && count < larger->Array().AllocatedCapacity()) {
            for (long i = 0; i < count; ++i) {
                larger->Array().AddObject(open.ObjectAtIndex(i));
            }
            std::swap(m_contexts, larger);
            continue;
        }
        lock.Unlock(); // an allocation that fails traces, and tracing takes the lock
        larger = NewContextStack(count + VObjectContainer::kDefaultGrowSize, *context);
        lock.Lock();
    }
}

VObjectRef<VLog::VLogContext> VLog::PopContext() {
    detail::MutexLock const lock(ms_lock);
    return VObjectRef<VLogContext>::Adopt(static_cast<VLogContext*>(m_contexts->Pop()));
}

void VLog::CloseContexts() {
    while (auto const innermost = PopContext()) {
        innermost->WriteEnd();
    }
}

void VLog::DetachContexts() {
    detail::MutexLock const lock(ms_lock);
    while (m_attached) {
        m_attached->m_log = nullptr;
        m_attached = std::exchange(m_attached->m_nextAttached, nullptr);
    }
}

void VLog::StartLoggingContext(char const* name) {
    DefaultLogRef const log;
    if (log && !log->IsDying()) {
        log->PushContext(VObjectRef<VLogContext>::Adopt(new VLogContext(name, log.Get())));
    }
}

void VLog::EndLoggingContext() {
    if (DefaultLogRef const log; log) {
        if (auto const innermost = log->PopContext()) {
            innermost->WriteEnd();
        }
    }
}

// Lines

bool VLog::IsSwitchedOff() noexcept {
    return !DyingLogScope::Current() &&
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
    std::size_t const time = GetShowTimeOfDay() && GetAllowAnnotations() ? WriteTimeOfDay(line) : 0;
    std::size_t const indent = time + narrow_cast<std::size_t>(GetIndentLevel());
    std::memset(line + time, ' ', indent - time);
    if (!GetShowContextTime() || ms_bHeaderFooter.load(std::memory_order_relaxed)) {
        return indent;
    }
    detail::MutexLock const lock(ms_lock);
    auto const* const innermost = static_cast<VLogContext const*>(m_contexts->ObjectAtTopOfStack());
    if (!innermost) {
        return indent;
    }
    SecondsText const seconds(innermost->GetElapsedTime());
    std::memcpy(line + indent, seconds.Text(), seconds.Length());
    line[indent + seconds.Length()] = ' ';
    return indent + seconds.Length() + 1;
}

/// The second log first, so that it has the line also when this one throws.
void VLog::AddLine(char const* line) {
    if (m_hasTee.load(std::memory_order_relaxed)) {
        HandToTee(line);
    }
    AddOwnLine(line);
    TellOfLoss();
}

void VLog::HandToTee(char const* line) {
    VObjectRef<VLog> tee;
    {
        detail::MutexLock const lock(ms_lock);
        tee = m_tee;
    }
    if (tee) {
        WithoutThrowing([&] {
            tee->AddOwnLine(line);
            tee->TellOfLoss();
        });
    }
}

void VLog::AddOwnLine(char const* line) {
    try {
        AddString(line);
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        CountDroppedLine();
        if (m_life.load(std::memory_order_relaxed) != eBeingDestroyed) {
            TellOfLoss();
            throw;
        }
    }
}

/// The text of a line, in `buffer`; null when there is none to write.
char const* VLog::FormatMessage(char (&buffer)[kLineSize], char const* format, std::va_list arguments) {
    if (!format || IsSwitchedOff()) {
        return nullptr;
    }
    FormatBounded(buffer, sizeof buffer, format, arguments);
    return buffer;
}

/// The default log is made even when `message` is null.
void VLog::WriteMessage(char const* format, char const* message) {
    if (EchoIfSwitchedOff(format)) {
        return;
    }
    LineScope const scope;
    DefaultLogRef const log;
    if (!log || !message || LineScope::Drop(*log.Get())) {
        return;
    }
    char line[kLineSize];
    std::size_t const used = log->WritePrefix(line);
    CopyBounded(line + used, sizeof line - used, message);
    log->AddLine(line);
}

void VLog::Trace(char const* format, ...) {
    char buffer[kLineSize];
    va_list arguments;
    va_start(arguments, format);
    char const* const message = FormatMessage(buffer, format, arguments);
    va_end(arguments);
    WriteMessage(format, message);
}

void VLog::TraceRoutine(char const* format, ...) {
    if (!GetShowRoutineLines()) {
        return;
    }
    char buffer[kLineSize];
    va_list arguments;
    va_start(arguments, format);
    char const* const message = FormatMessage(buffer, format, arguments);
    va_end(arguments);
    WriteMessage(format, message);
}

void VLog::TraceAt(eLevel level, char const* format, ...) {
    {
        DefaultLogRef const log;
        if (log && level < log->GetLevel()) {
            return;
        }
    }
    char buffer[kLineSize];
    va_list arguments;
    va_start(arguments, format);
    char const* const message = FormatMessage(buffer, format, arguments);
    va_end(arguments);
    char const* const mark = NameOf(level);
    if (!message || !*mark) {
        WriteMessage(format, message);
        return;
    }
    char marked[kLineSize];
    std::size_t const length = std::strlen(mark);
    CopyBounded(marked, sizeof marked, mark);
    CopyBounded(marked + length, sizeof marked - length, message);
    WriteMessage(format, marked);
}

void VLog::TraceNoThrow(char const* format, ...) {
    char buffer[kLineSize];
    va_list arguments;
    va_start(arguments, format);
    char const* const message = FormatMessage(buffer, format, arguments);
    va_end(arguments);
    WithoutThrowing([&] { WriteMessage(format, message); });
}

void VLog::Trace(VObject const& object) {
    LineScope const scope;
    DefaultLogRef const log;
    if (!log || LineScope::Drop(*log.Get())) {
        return;
    }
    VString line;
    object.GetDescription(line);
    if (line.IsEmpty() || line.GetCharAtIndex(line.Length() - 1) != '\n') {
        line << '\n';
    }
    if (line.IsEmpty()) {
        log->CountDroppedLine(); // no memory
    }
    log->AddLine(line.CString());
}

void VLog::TraceNoThrow(VObject const& object) {
    WithoutThrowing([&] { Trace(object); });
}

void VLog::Divider() {
    LineScope const scope;
    if (DefaultLogRef const log; log && !LineScope::Drop(*log.Get())) {
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

// The default log

VLog* VLog::GetDefaultLog() {
    if (DyingLogScope::Current()) {
        detail::MutexLock const lock(ms_lock);
        return ms_theLog;
    }
    return DefaultLogRef().Get();
}

void VLog::ReplaceDefaultLog(VLog* log, bool switchOff) {
    VObjectRef<VLog> next(log);
    VLog* before = nullptr;
    {
        detail::MutexLock const lock(ms_lock);
        if (switchOff) {
            ms_bInShutdown.store(true);
        }
        before = std::exchange(ms_theLog, next.Detach());
    }
    if (!before) {
        return;
    }
    DyingLogScope const dying(before);
    auto const last = VObjectRef<VLog>::Adopt(before);
    if (before->RetainCount() == 1) {
        before->m_life.store(eClosing, std::memory_order_relaxed);
        before->CloseContexts(); // what throws leaves the rest to the destruction
    }
}

void VLog::SetLog(VLog* log) {
    {
        detail::MutexLock const lock(ms_lock);
        if (ms_theLog == log || (log && log->IsDying())) {
            return;
        }
    }
    std::fflush(stderr);
    ReplaceDefaultLog(log);
}

void VLog::DestroyDefaultLog() {
    ReplaceDefaultLog(nullptr);
}

void VLog::SetSafeStartup() {
    ms_bInStartup.store(false);
    ms_bInShutdown.store(false);
}

void VLog::SetSafeShutdown() {
    ReplaceDefaultLog(nullptr, true);
}

// What lines are handed to, and what is told of losses

bool VLog::SetTee(VLog* second) {
    if (second == this) {
        return false;
    }
    VObjectRef<VLog> tee(second); // then the one before, which is released after the lock
    detail::MutexLock const lock(ms_lock);
    std::swap(m_tee, tee);
    m_hasTee.store(second != nullptr, std::memory_order_relaxed);
    return true;
}

void VLog::SetOnFirstLoss(std::function<void()> callback) {
    m_lossesBefore.store(DroppedLines(), std::memory_order_relaxed);
    bool const watches = callback != nullptr;
    detail::MutexLock const lock(ms_lock);
    std::swap(m_onFirstLoss, callback);
    m_watchesForLoss.store(watches, std::memory_order_relaxed);
}

void VLog::TellOfLoss() {
    if (!m_watchesForLoss.load(std::memory_order_relaxed) ||
        DroppedLines() == m_lossesBefore.load(std::memory_order_relaxed)) {
        return;
    }
    std::function<void()> callback;
    {
        detail::MutexLock const lock(ms_lock);
        std::swap(callback, m_onFirstLoss);
        m_watchesForLoss.store(false, std::memory_order_relaxed);
    }
    if (callback) {
        WithoutThrowing(callback);
    }
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
        CountDroppedLine();
        return;
    }
    std::size_t const length = std::strlen(line);
    bool const needsLineFeed = length > 0 && line[length - 1] != '\n';
    // One call, so that the line reaches the stream whole.
    if ((needsLineFeed ? std::fprintf(stderr, "%s\n", line) : std::fputs(line, stderr)) < 0) {
        CountDroppedLine();
    }
}

} // namespace VFoundation
