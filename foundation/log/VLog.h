#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace VFoundation {

class VCriticalSection;
class VObjectStack;

/// While false, a plain `VLog` writes nothing. True at first. Relaxed: a switch.
VFOUNDATION_API extern std::atomic<bool> ms_bVerbose;

/// The diagnostic trace. Clients use the static functions, which write to the process's default log:
///
///     VLog::StartLoggingContext("Import");            // [ Import - START ]
///     VLog::Trace("%i files\n", count);               //  12 files
///     VLog::EndLoggingContext();                      // [ Import - END ] 0.0123
///
/// A line is the indent (one space a level, at most 10), the elapsed time of the innermost context if that is
/// switched on, and the message. It holds at most 1023 characters; a longer one is cut but keeps its line
/// feed. A plain log writes to the standard error stream. Subclasses override `AddString`.
///
/// The library switches the log on in `InitializeLibrary` and off in `UninitializeLibrary`. Outside of these
/// there is no default log, and every operation but `SetLog` and `DestroyDefaultLog` does nothing.
///
/// Failures: a log writes what it can and counts the lines it loses (`DroppedLines`). A subclass may throw in
/// `AddString`: the exception passes to the caller of `Trace`, and a context that could not write its start
/// line was never opened. Destructors, the outermost function of a thread and the construction of an exception
/// use `TraceNoThrow`. The first use of the default log may throw `std::bad_alloc`.
///
/// A log may also leave out lines by their level (`TraceAt`), begin lines with the time of day,
/// hand its lines to a second log, and tell of the first line that it loses.
///
/// A subclass may trace in `AddString`. The lines go to the default log, so back to it; those that are nested
/// more than `kMaxNesting` deep are dropped and counted.
///
/// DELIBERATE: while switched off, `Trace` echoes the text of its format, uninterpreted but for "%%", to the
/// standard error stream; the arguments are not shown.
/// DELIBERATE: `TraceDebug` is compiled out; it has no output in any state.
/// DELIBERATE: a plain log waits 100 ms for its turn to write; a line that cannot get it is lost, and only
/// `DroppedLines` tells.
///
/// Ownership: the process holds one reference to its default log. A log that dies closes its open contexts
/// first, innermost first. The lines of a default log's own end go to that log; those of any other go to the
/// default log.
/// Threads: any thread may trace; lines come out whole. Replacing the default log does not wait for lines on
/// their way: they still reach the old one. Contexts are opened and closed by one thread at a time. A line
/// traced by another thread while a context writes its start or end line lacks the time.
class VFOUNDATION_API VLog : public Registered<VLog, VObject> {
  public:
    static constexpr char const* kClassName = "VLog";
    static VClass* ms_theClass;
    [[nodiscard]] static VLog* New();

    /// A timed section between a start and an end line (VLogContext.h).
    class VLogContext;

    /// How much a line matters to its reader.
    enum eLevel : long { eDebug = 0, eInfo = 1, eWarning = 2, eError = 3 };

    static constexpr long kMaxIndentLevel = 10;
    /// Bytes of the line buffer, the terminator included.
    static constexpr unsigned long kLineSize = 1024;
    /// How deep lines may be nested: `AddString` writes one, which calls it again, and so on.
    static constexpr int kMaxNesting = 4;

    VLog(VLog const&) = delete;
    VLog& operator=(VLog const&) = delete;
    ~VLog() override;
    void DeleteInstance() const override;

    /// Writes one line, formatted as `printf` does. Text that comes from data is an argument, never the
    /// format.
    [[gnu::format(printf, 1, 2)]] static void Trace(char const* format, ...);
    /// Writes the object's description, with neither indent nor time, and a line feed if it ends without one.
    static void Trace(VObject const& object);
    /// Writes the line if its level is at least that of the default log (`SetLevel`), after "DEBUG: ", "WARNING: " or
    /// "ERROR: ". Lines of `Trace` have no level and are always written.
    [[gnu::format(printf, 2, 3)]] static void TraceAt(eLevel level, char const* format, ...);
    /// For the library's lines about what it routinely does (`SetShowRoutineLines`).
    [[gnu::format(printf, 1, 2)]] static void TraceRoutine(char const* format, ...);
    /// As `Trace`, and nothing that the log throws leaves them: the line is lost then, and counted.
    [[gnu::format(printf, 1, 2)]] static void TraceNoThrow(char const* format, ...);
    static void TraceNoThrow(VObject const& object);
    /// Nothing.
    [[gnu::format(printf, 1, 2)]] static void TraceDebug(char const* /*format*/, ...) {}
    /// Writes a line of 78 hyphens.
    static void Divider();
    /// Moves the lines that follow one place to the right.
    static void StartIndent();
    /// Opens a context on the default log, inside those already open. A null name is empty. Nothing on a log
    /// that is being destroyed, and when the start line throws.
    static void StartLoggingContext(char const* name);
    /// Closes the innermost context of the default log; nothing if none is open. It is closed, and the indent
    /// is restored, also when the end line throws.
    static void EndLoggingContext();

    /// The default log (borrowed), made on first use; null while the log is switched off. While a thread
    /// destroys the default log, it gets the one that takes its place, or null.
    static VLog* GetDefaultLog();
    /// Makes `log` the default log (retained) and releases the one before; null leaves none, until the next
    /// line makes one. Works in every state. A log that is being destroyed is not taken.
    static void SetLog(VLog* log);
    /// Releases the default log. Works in every state. Like `SetLog` and `SetSafeShutdown` it passes on what
    /// the end lines of the log's open contexts throw, after it has done its work.
    static void DestroyDefaultLog();
    /// Switches the log on.
    static void SetSafeStartup();
    /// Releases the default log and switches the log off.
    static void SetSafeShutdown();

    /// Writes one finished line, without indent or time. A null line is nothing. A plain log adds a line feed
    /// to a line that is not empty and ends without one.
    virtual void AddString(char const* line);
    /// What `Divider()` calls.
    virtual void DividerI();
    /// Lines that this log lost, in all: a plain log's turn did not come, the stream or the disk took no more,
    /// memory ran out, they were nested too deep, or `AddString` threw.
    virtual long DroppedLines() const noexcept { return m_dropped.load(std::memory_order_relaxed); }

    /// Called once, when the log finds that it has lost a line since: on the thread that traces the next line or closes
    /// the log's file, often the one whose line was lost. No lock is held, and the callback may trace. What it throws is
    /// dropped. Null removes it.
    void SetOnFirstLoss(std::function<void()> callback);

    /// A second log (retained) that gets each line before this one writes it, as it stands; null for none. It keeps its
    /// own count of lost lines, and what it throws is dropped. It does not pass the lines on to a second log of its
    /// own. Two logs that are each other's second log keep each other alive. False, and nothing changed, for this log.
    bool SetTee(VLog* second);

    /// Whether the library writes what it routinely does: the start and end of its threads, the steps of its shut-down;
    /// on at first. Failures are written in either case. One switch for the process.
    static bool GetShowRoutineLines() noexcept { return ms_bShowRoutine.load(std::memory_order_relaxed); }
    static void SetShowRoutineLines(bool show) noexcept {
        ms_bShowRoutine.store(show, std::memory_order_relaxed);
    }

    long GetIndentLevel() const noexcept { return m_indentLevel.load(std::memory_order_relaxed); }

    /// Whether lines inside a context begin with its elapsed seconds; off at first.
    bool GetShowContextTime() const noexcept { return m_showContextTime.load(std::memory_order_relaxed); }
    void SetShowContextTime(bool show) noexcept { m_showContextTime.store(show, std::memory_order_relaxed); }

    /// Whether lines begin with the local time of day, "09:05:00.123 "; off at first.
    bool GetShowTimeOfDay() const noexcept { return m_showTimeOfDay.load(std::memory_order_relaxed); }
    void SetShowTimeOfDay(bool show) noexcept { m_showTimeOfDay.store(show, std::memory_order_relaxed); }

    /// Whether the time of day, and what a subclass adds of its own, may stand in lines; on at first. It is off while a
    /// table is printed.
    bool GetAllowAnnotations() const noexcept { return m_allowAnnotations.load(std::memory_order_relaxed); }
    void SetAllowAnnotations(bool allow) noexcept {
        m_allowAnnotations.store(allow, std::memory_order_relaxed);
    }

    /// Lines of `TraceAt` below this level are left out; `eInfo` at first. Any number is kept.
    long GetLevel() const noexcept { return m_level.load(std::memory_order_relaxed); }
    void SetLevel(long level) noexcept;

  protected:
    explicit VLog(VClass* cls = nullptr);

    /// What serialises the writing of lines (borrowed).
    VCriticalSection* CriticalSection() const noexcept { return m_criticalSection.Get(); }
    /// Calls the callback of `SetOnFirstLoss` if there is reason to.
    void TellOfLoss();
    void CountDroppedLine() noexcept { m_dropped.fetch_add(1, std::memory_order_relaxed); }

    // relaxed: switches; what they switch is guarded by itself
    static std::atomic<bool> ms_bInStartup;
    static std::atomic<bool> ms_bInShutdown;
    /// True while a context writes its start or end line. Relaxed: a switch, too.
    static std::atomic<bool> ms_bHeaderFooter;

  private:
    class DefaultLogRef;
    class DyingLogScope;
    class LineScope;
    enum eLife : std::uint32_t { eAlive, eClosing, eBeingDestroyed };

    static bool IsSwitchedOff() noexcept;
    /// True while the log is switched off; the format's text is echoed then.
    static bool EchoIfSwitchedOff(char const* format);
    [[gnu::format(printf, 2, 0)]] static char const*
    FormatMessage(char (&buffer)[kLineSize], char const* format, std::va_list arguments);
    static void WriteMessage(char const* format, char const* message);
    static void ReplaceDefaultLog(VLog* log, bool switchOff = false);
    bool IsDying() const noexcept { return m_life.load(std::memory_order_relaxed) != eAlive; }
    void AddLine(char const* line);
    void AddOwnLine(char const* line);
    void HandToTee(char const* line);
    /// Writes indent and time; the number of characters.
    std::size_t WritePrefix(char* line) const;
    static VObjectRef<VObjectStack> NewContextStack(long room, VLogContext const& any);
    void PushContext(VObjectRef<VLogContext> context);
    VObjectRef<VLogContext> PopContext();
    /// Throws what an end line throws, with the other contexts still open.
    void CloseContexts();
    void DetachContexts();

    /// Guards which log is the default one, the stacks of open contexts, and which context belongs to which
    /// log.
    static detail::Mutex ms_lock;
    static std::atomic<bool> ms_bShowRoutine; // relaxed: a switch
    static VLog* ms_theLog VFOUNDATION_GUARDED_BY(ms_lock);

    // relaxed: settings and numbers, each of its own
    std::atomic<std::int32_t> m_indentLevel{0};
    std::atomic<bool> m_showContextTime{false};
    std::atomic<bool> m_allowAnnotations{true};
    std::atomic<bool> m_showTimeOfDay{false};
    std::atomic<std::int32_t> m_level{eInfo};
    std::atomic<std::uint32_t> m_life{eAlive};
    std::atomic<long> m_dropped{0};
    VObjectRef<VCriticalSection> m_criticalSection;
    /// The open contexts, the innermost on top, with the one reference to each.
    VObjectRef<VObjectStack> m_contexts VFOUNDATION_GUARDED_BY(ms_lock);
    std::atomic<bool> m_hasTee{false}; // relaxed: the log itself is read under the lock
    VObjectRef<VLog> m_tee VFOUNDATION_GUARDED_BY(ms_lock);
    std::atomic<bool> m_watchesForLoss{false}; // relaxed: the callback is read under the lock
    std::atomic<long> m_lossesBefore{0};       // when the callback was set; relaxed: a number
    std::function<void()> m_onFirstLoss VFOUNDATION_GUARDED_BY(ms_lock);
    VLogContext* m_attached VFOUNDATION_GUARDED_BY(ms_lock) = nullptr;
};

} // namespace VFoundation
