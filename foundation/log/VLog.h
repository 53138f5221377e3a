#pragma once

#include "foundation/containers/VObjectStack.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace VFoundation {

class VCriticalSection;

/// While false, a plain `VLog` writes nothing. True at first.
extern std::atomic<bool> ms_bVerbose;

/// The diagnostic trace. Clients use the static functions, which write to the process's default log:
///
///     VLog::StartLoggingContext("Import");            // [ Import - START ]
///     VLog::Trace("%i files\n", count);               //  12 files
///     VLog::EndLoggingContext();                      // [ Import - END ] 0.0123
///
/// A line is the indent (one space a level, at most 10), the elapsed time of the innermost context if that is
/// switched on, and the message; it holds at most 1023 characters, and a longer one is cut but keeps its line
/// feed. A plain log writes to the standard error stream. Subclasses override `AddString`.
///
/// The library switches the log on in `InitializeLibrary` and off in `UninitializeLibrary`. Outside of these
/// there is no default log, and every operation but `SetLog` and `DestroyDefaultLog` does nothing.
///
/// DELIBERATE: while switched off, `Trace` echoes the text of its format, uninterpreted but for "%%", to the
/// standard error stream; the arguments are not shown.
/// DELIBERATE: `TraceDebug` is compiled out; it has no output in any state.
/// DELIBERATE: a plain log waits 100 ms for its turn to write; a line that cannot get it is lost silently.
///
/// Ownership: the process holds one reference to its default log. A log that dies closes its open contexts
/// first, innermost first.
/// Threads: any thread may trace; lines come out whole. Replacing the default log waits for nobody: a line on
/// its way still reaches the old one. Contexts are opened and closed by one thread at a time. A line traced
/// by another thread while a context writes its start or end line lacks the time.
class VLog : public Registered<VLog, VObject> {
  public:
    static constexpr char const* kClassName = "VLog";
    static VClass* ms_theClass;
    static VLog* New();

    /// A timed section between a start and an end line (VLogContext.h).
    class VLogContext;

    static constexpr long kMaxIndentLevel = 10;
    /// Bytes of the line buffer, the terminator included.
    static constexpr unsigned long kLineSize = 1024;

    VLog(VLog const&) = delete;
    VLog& operator=(VLog const&) = delete;
    ~VLog() override;
    void DeleteInstance() const override;

    /// Writes one line, formatted as `printf` does. Text that comes from data is an argument, never the
    /// format.
    [[gnu::format(printf, 1, 2)]] static void Trace(char const* format, ...);
    /// Writes the object's description, with neither indent nor time, and a line feed if it ends without one.
    static void Trace(VObject const& object);
    /// Nothing.
    [[gnu::format(printf, 1, 2)]] static void TraceDebug(char const* /*format*/, ...) {}
    /// Writes a line of 78 hyphens.
    static void Divider();
    /// Moves the lines that follow one place to the right.
    static void StartIndent();
    /// Opens a context on the default log, inside those already open. A null name is empty.
    static void StartLoggingContext(char const* name);
    /// Closes the innermost context of the default log; nothing if none is open.
    static void EndLoggingContext();

    /// The default log (borrowed), made on first use; null while the log is switched off.
    static VLog* GetDefaultLog();
    /// Makes `log` the default log (retained) and releases the one before; null leaves none, until the next
    /// line makes one. Works in every state.
    static void SetLog(VLog* log);
    /// Releases the default log. Works in every state.
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

    long GetIndentLevel() const noexcept { return m_indentLevel.load(std::memory_order_relaxed); }

    /// Whether lines inside a context begin with its elapsed seconds; off at first.
    bool GetShowContextTime() const noexcept { return m_showContextTime.load(std::memory_order_relaxed); }
    void SetShowContextTime(bool show) noexcept { m_showContextTime.store(show, std::memory_order_relaxed); }

    /// Whether a subclass may add something of its own to lines, such as the time of day; on at first. It is
    /// off while a table is printed. A plain log adds nothing.
    bool GetAllowAnnotations() const noexcept { return m_allowAnnotations.load(std::memory_order_relaxed); }
    void SetAllowAnnotations(bool allow) noexcept {
        m_allowAnnotations.store(allow, std::memory_order_relaxed);
    }

    /// A setting for subclasses; 1 at first. The library does not read it.
    long GetLevel() const noexcept { return m_level.load(std::memory_order_relaxed); }
    void SetLevel(long level) noexcept;

  protected:
    explicit VLog(VClass* cls = nullptr);

    /// What serialises the writing of lines (borrowed).
    VCriticalSection* CriticalSection() const noexcept { return m_criticalSection.Get(); }

    static std::atomic<bool> ms_bInStartup;
    static std::atomic<bool> ms_bInShutdown;
    /// True while a context writes its start or end line.
    static std::atomic<bool> ms_bHeaderFooter;

  private:
    class DefaultLogRef;

    static bool IsSwitchedOff() noexcept;
    /// True while the log is switched off; the format's text is echoed then.
    static bool EchoIfSwitchedOff(char const* format);
    static VLog* ReplaceDefaultLog(VLog* log);
    /// Writes indent and time; the number of characters.
    std::size_t WritePrefix(char* line) const;
    void CloseContexts();
    void DetachContexts();

    static VLog* ms_theLog;

    std::atomic<std::int32_t> m_indentLevel{0};
    std::atomic<bool> m_showContextTime{false};
    std::atomic<bool> m_allowAnnotations{true};
    std::atomic<std::int32_t> m_level{1};
    VObjectRef<VCriticalSection> m_criticalSection;
    VObjectStack m_contexts;
    VLogContext* m_attached = nullptr;
};

} // namespace VFoundation
