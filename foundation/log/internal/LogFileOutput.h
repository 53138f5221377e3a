#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/Mutex.h"
#include "foundation/log/internal/LineFile.h"
#include "foundation/log/internal/LogRotation.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VLock.h"
#include "foundation/threads/VSemaphore.h"
#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/EventFlag.h"
#include "foundation/threads/internal/ForkHook.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace VFoundation {

/// What a log file and its writer thread share: the open file, the lines that wait for it, and the signals between
/// the two. Both hold it, so that a writer which is stuck in the system and was given up still has what it works on.
/// Internal.
///
/// The file lock is a `VLock`, because a wait for it has an end: it guards the file, and the taking of lines from the
/// queue. Lines are put into the queue under the queue lock only. So the ring has one producer and one consumer at a
/// time, for which it keeps the order; and once queueing was switched off, every line that was accepted is in the
/// queue. Whoever takes both locks takes the file's first.
///
/// A child process has the file, but neither the writer nor the lines in the queue, which the parent's writer writes.
/// What was written before a fork is handed to the system first, so that it is there once.
///
/// Threads: any thread may call any operation.
class LogFileOutput {
  public:
    using Queue = VObjectRingBufferTmpl<VString>;

    LogFileOutput();
    LogFileOutput(LogFileOutput const&) = delete;
    LogFileOutput& operator=(LogFileOutput const&) = delete;
    /// Closes the file.
    ~LogFileOutput();

    /// Opens the file for writing. False when that fails, and while a stuck writer holds the one before.
    bool OpenFile(char const* path);
    /// Writes what is queued and closes the file. One that a stuck writer holds is closed when the writer ends.
    void CloseFile();

    /// False when no file is open. A line that would have to wait for a stuck writer is dropped.
    bool Write(char const* line);
    /// As `Write`; the line, and those queued before it, are handed to the system.
    bool WriteThrough(char const* line);
    /// False when lines are not queued now. A line that finds no memory is dropped, and one that finds the queue full
    /// when there is no room within so many milliseconds.
    bool Enqueue(char const* line, long milliseconds);
    /// False when a stuck writer holds the file.
    bool SetRotation(VLogFile::Rotation const& rotation);
    /// Hands what was written directly to the system.
    void Flush();

    long WaitingLines() const noexcept {
        Queue const* const queue = m_queue.load();
        return queue ? queue->UsedCount() : 0;
    }
    long DroppedLines() const noexcept {
        return m_dropped.load(std::memory_order_relaxed) + m_file.LostLines();
    }

    // The writer thread.

    /// Before the thread is started: lines are queued from now on. False while another one, perhaps given up, is
    /// still running.
    bool PrepareWriter();
    /// After that, when the thread could not be started.
    void ForgetWriter();
    void StopQueueing() { SetCondition(kWriterTakesLines, false); }
    /// The thread's body. Lines are no longer queued when it ends.
    void RunWriter();
    bool IsWriterRunning() const noexcept { return m_running.load(); }
    bool MayWriterContinue() const noexcept { return m_mayContinue.load(); }
    void TellWriterToEnd() noexcept { m_mayContinue.store(false); }
    void WakeWriter() {
        m_linesSemaphore.ReleaseSemaphore(1, nullptr);
        m_wake.Set();
    }
    /// True when a writer has signalled its end; it may be that of another process.
    bool WaitForShutdownSignal(long milliseconds) {
        return m_shutdownSemaphore.WaitForSemaphore(milliseconds);
    }

  private:
    // What has to hold for lines to be queued.
    static constexpr std::uint32_t kFileOpen = 1;
    static constexpr std::uint32_t kWriterTakesLines = 2;

    enum class ePush { eDone, eFull, eNotQueueing };

    class FileScope;
    class WriterScope;

    int FilePatience() const noexcept;
    void SetCondition(std::uint32_t condition, bool holds);
    bool IsFileWanted();
    template <class Action>
    bool WithFile(Action action);
    ePush Push(VString* line);
    ePush PushWhenThereIsRoom(VString* line, long milliseconds);
    void TellOfRoom() noexcept;
    void PutLine(char const* line);
    bool BeginFreshFile();
    long PutQueuedLines();
    void PutAllQueuedLines();
    long Drain();
    void TakeSignals(long count);
    void EndUnwantedFile();
    void CountDropped() noexcept { m_dropped.fetch_add(1, std::memory_order_relaxed); }

    static void BeforeFork(void* self);
    static void AfterForkInParent(void* self);
    static void AfterForkInChild(void* self);

    VSemaphore m_linesSemaphore;
    VSemaphore m_shutdownSemaphore;

    VLock m_fileLock; // the file, and taking lines from the queue
    LineFile m_file;
    std::string m_path;
    LogRotation m_rotation;
    std::atomic<long> m_waitingForFile{0}; // threads, without the writer
    bool m_isHeldForFork = false;          // the file, by the thread that forks

    detail::Mutex m_queueLock; // also putting lines into the queue
    std::uint32_t m_conditions VFOUNDATION_GUARDED_BY(m_queueLock) = 0;
    std::atomic<bool> m_queueing{false};  // all of them hold; relaxed: true is looked at again under the lock
    std::atomic<Queue*> m_queue{nullptr}; // made with the first writer, and kept

    std::atomic<long> m_waitingForRoom{0};       // threads
    std::atomic<std::uint32_t> m_roomChanges{0}; // they sleep on it

    EventFlag m_wake;                          // ends the writer's pause
    std::atomic<VThread::ThreadID> m_writer{}; // relaxed: a thread only looks for its own id
    std::atomic<bool> m_running{false};
    std::atomic<bool> m_mayContinue{false};
    std::atomic<long> m_dropped{0}; // relaxed: a statistic
    ForkHook const m_forkHook;      // the last one
};

} // namespace VFoundation
