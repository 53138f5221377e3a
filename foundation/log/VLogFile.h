#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/VThread.h"

#include <atomic>
#include <concepts>
#include <cstdint>
#include <memory>

namespace VFoundation {

class LogFileOutput;
class ThreadPresence;

/// The log that writes to a file, directly or through a writer thread, so that tracing threads do not wait
/// for the disk:
///
///     auto const log = MakeObject<VLogFile>("/var/tmp/app.log");
///     log->StartLoggingThread();
///     VLog::SetLog(log.Get());             // UninitializeLibrary stops the thread
///
/// The first line is the date and time of the opening. Lines are written as they are, without a line feed of
/// their own. While no file is open they go where a plain log's go.
///
/// With the writer thread a line costs the caller a copy and a signal. Lines keep the order in which a thread
/// traced them. A line is in the file soon after it was traced; without the thread it may stay in the stream's
/// buffer until the file is closed or the process ends. When a process crashes, lines that are still queued or
/// in the buffer are lost, unless `SetFlushEachLine` was called.
///
/// Failures: `DroppedLines` counts the lines that found the queue of `kQueueCapacity` lines full (unless
/// `SetFullQueueWait` lets them wait), no memory, no way past a stuck thread, or no space on the disk. A line that the
/// disk took only in part is cut off again.
///
/// The thread gathers lines for some milliseconds, unless the queue fills up, which costs about 1 % of a core
/// while nothing is logged. It is woken through semaphores that all processes of the system share ("VLogFile"
/// and "VLogFileShutdown"). Where these cannot be opened it does without.
///
/// After `fork` the child has the file but no writer thread: its lines are written directly, until it starts a
/// thread of its own. The parent writes what was queued. Both write to the same place in the same file, which
/// keeps lines apart but not in order. Fork while no other thread is inside the library.
///
/// DELIBERATE: while the thread is being stopped, lines are written directly and may stand before queued
/// ones.
/// DELIBERATE: `ShutdownLoggingThread` gives up only on a thread that has made no progress for 25 s; the
/// count of waiting lines it compares with is never updated, so one that has written a single line is waited
/// for without end.
/// DELIBERATE: the date line has no line feed; the first line that follows is appended to it.
///
/// Ownership: owns its file and thread. A thread that was given up keeps what it needs, and the file if it
/// holds it.
/// Threads: any thread may call any operation. A line that has to wait for a stuck thread for more than 100 ms
/// is dropped.
class VFOUNDATION_API VLogFile : public Registered<VLogFile, VLog> {
  public:
    static constexpr char const* kClassName = "VLogFile";
    static VClass* ms_theClass;

    /// Lines that may wait for the writer thread.
    static constexpr long kQueueCapacity = 2048;
    /// Bytes of a path, its terminator included; longer paths are cut.
    static constexpr unsigned long kPathSize = 260;

    /// Opens the file unless `path` is null.
    explicit VLogFile(char const* path, VClass* cls = nullptr);
    VLogFile(VLogFile const&) = delete;
    VLogFile& operator=(VLogFile const&) = delete;
    /// Stops the thread and closes the file.
    ~VLogFile() override;
    /// One without a file.
    [[nodiscard]] static VLogFile* New();

    /// Opens a file, or empties one that exists. False when one is open already, and when it cannot be
    /// opened.
    bool Open(char const* path);
    /// Writes what is queued and closes the file; false when none is open. Lines that cannot be written are
    /// counted as dropped.
    bool Close();
    /// The path of the open file (borrowed until it is closed), or null.
    char const* FileName() const noexcept { return m_name.get(); }

    void AddString(char const* line) override;

    /// When the file is put aside for a fresh one, which begins with the date and time again.
    struct Rotation {
        long long bytes = 0; // once it has at least so many, before the next line; 0: whatever its size
        bool daily = false;  // with the first line of each day, local time
        int kept = 5;        // files put aside: "<path>.1", the last one, to "<path>.<kept>"; 1 to 1000
    };
    /// May be called at any time; off at first. A file that cannot be put aside, or is no regular one, goes on, until the
    /// next time. Of processes that share a file only one may do this. False, and nothing changed, while a stuck thread
    /// holds the file.
    bool SetRotation(Rotation const& rotation);

    /// Starts the writer thread. False when there is one already, also one that was given up and still runs,
    /// and when the system refuses. Without memory it throws, and there is no thread.
    bool StartLoggingThread();
    bool IsLoggingThreadRunning() const noexcept;
    /// Stops the writer thread once it has written what is queued; the file holds all of it then. Traces
    /// every step. True when the thread has ended, and when there was none. What the default log throws stops
    /// the shut-down and is not passed on, except by the start line of its context.
    bool ShutdownLoggingThread();
    long DroppedLines() const noexcept override;

    /// Whether each line is handed to the system before `Trace` returns, after those that are queued, so that
    /// it survives a crash of the process, though not of the system; off at first. A line then costs a call of
    /// the system, some 2 us more (benchmarks/LogFileBench.cpp), and the writer thread has nothing to do.
    bool GetFlushEachLine() const noexcept { return m_flushEachLine.load(std::memory_order_relaxed); }
    void SetFlushEachLine(bool flush) noexcept { m_flushEachLine.store(flush, std::memory_order_relaxed); }

    /// How many milliseconds a line waits for room when it finds the queue full, before it is dropped; 0, the value at
    /// first, and less do not wait. The wait holds no lock of the log and ends when the writer thread is told to stop;
    /// the line is then written directly. The writer thread itself never waits.
    long GetFullQueueWait() const noexcept { return m_fullQueueWait.load(std::memory_order_relaxed); }
    void SetFullQueueWait(long milliseconds) noexcept {
        m_fullQueueWait.store(milliseconds, std::memory_order_relaxed);
    }

    /// A setting for subclasses; 1 at first. The library does not read it.
    long GetFileSetting() const noexcept { return m_setting; }
    void SetFileSetting(long setting) noexcept { m_setting = narrow_cast<std::int32_t>(setting); }

  protected:
    /// For `Registered` subclasses. A template, so that a literal null is never taken for a class record.
    template <std::same_as<VClass> Record>
    VLogFile(Record* cls, char const* path) : VLogFile(path, cls) {}

  private:
    /// How far a shut-down has got; the number stands in the line about an exception.
    enum eStage : int {
        eBegun = 0,
        eThreadHeld = 1,
        eToldToEnd = 2,
        eRaising = 3,
        eCounting = 5,
        eWaited = 8,
        eUnregistering = 9,
        eReleasing = 10,
        eLetGo = 11
    };
    enum eFileState : std::uint32_t { eClosed, eOpening, eOpen, eClosing };

    /// Empty, or one writer thread.
    struct WriterHandle {
        VObjectRef<VThread> thread;
        std::shared_ptr<ThreadPresence> presence;
    };

    bool IsOpenForThisThread() const noexcept;
    bool StopWriter(eStage& stage);
    void AwaitWriter(WriterHandle const& writer, long outstanding);
    void EndFile();
    void StopWriterQuietly();
    WriterHandle CurrentWriter();
    void Forget(WriterHandle const& writer);
    bool IsRunning(WriterHandle const& writer) const noexcept;

    std::unique_ptr<char[]> m_name;
    std::atomic<std::uint32_t> m_fileState{eClosed};
    std::atomic<VThread::ThreadID> m_opener{};
    std::int32_t m_setting = 1;
    std::atomic<bool> m_flushEachLine{false}; // relaxed: a setting
    std::atomic<long> m_fullQueueWait{0};     // relaxed: a setting
    detail::Mutex m_threadLock;
    WriterHandle m_writer VFOUNDATION_GUARDED_BY(m_threadLock);
    std::shared_ptr<LogFileOutput> const m_output;
};

} // namespace VFoundation
