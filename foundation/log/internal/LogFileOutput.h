#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VLock.h"
#include "foundation/threads/VSemaphore.h"
#include "foundation/threads/internal/EventFlag.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <mutex>

namespace VFoundation {

/// What a log file and its writer thread share: the open file, the lines that wait for it, and the signals
/// between the two. Both hold it, so that a writer which is stuck in the system and was given up still has
/// what it works on.
/// Internal.
///
/// Lines are taken from the queue under the file lock only, and put into it under the queue lock only. So the
/// ring has one producer and one consumer at a time, for which it keeps the order; and once queueing was
/// switched off, every line that was accepted is in the queue.
///
/// Threads: any thread may call any operation, except where it says otherwise.
class LogFileOutput {
  public:
    LogFileOutput();
    LogFileOutput(LogFileOutput const&) = delete;
    LogFileOutput& operator=(LogFileOutput const&) = delete;
    /// Closes the file.
    ~LogFileOutput();

    /// Opens the file for writing. False when that fails, and while a stuck writer holds the one before.
    bool OpenFile(char const* path);
    /// Writes what is queued and closes the file. One that a stuck writer holds is closed when the writer
    /// ends.
    void CloseFile();

    /// False when no file is open. A line that would have to wait for a stuck writer is dropped.
    bool Write(char const* line);
    /// False when lines are not queued now. A line that finds the queue full is dropped.
    bool Enqueue(char const* line);
    /// Hands what was written directly to the system.
    void Flush();

    long WaitingLines() const noexcept { return m_queue ? m_queue->UsedCount() : 0; }
    long DroppedLines() const noexcept { return m_dropped.load(std::memory_order_relaxed); }

    // The writer thread. Starting and stopping it is for one thread at a time.

    /// Before the thread is started. False while another one, perhaps given up, is still running.
    bool PrepareWriter();
    /// Instead of `BeginQueueing`, when the thread could not be started.
    void ForgetWriter() noexcept { m_running.store(false); }
    void BeginQueueing();
    void StopQueueing();
    /// The thread's body.
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
    class FileScope;

    int FilePatience() const noexcept;
    void SetFlag(bool& flag, bool value);
    void Put(char const* line);
    long PutQueuedLines();
    long Drain();
    void TakeSignals(long count);
    void EndFile();
    void EndUnwantedFile();
    void CountDropped() noexcept { m_dropped.fetch_add(1, std::memory_order_relaxed); }

    VSemaphore m_linesSemaphore;
    VSemaphore m_shutdownSemaphore;

    VLock m_fileLock; // the file, and taking lines from the queue
    std::FILE* m_file = nullptr;
    std::atomic<long> m_waitingForFile{0}; // threads, without the writer

    std::mutex m_queueLock; // putting lines into the queue, and the two flags
    bool m_fileOpen = false;
    bool m_writerTakesLines = false;
    std::atomic<bool> m_queueing{false}; // both of them
    VObjectRef<VObjectRingBufferTmpl<VString>> m_queue;

    EventFlag m_wake; // ends the writer's pause
    std::atomic<bool> m_running{false};
    std::atomic<bool> m_mayContinue{false};
    std::atomic<long> m_dropped{0};
};

} // namespace VFoundation
