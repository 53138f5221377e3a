#include "foundation/log/internal/LogFileOutput.h"

#include "foundation/host/VFileManager.h"
#include "foundation/log/VLogFile.h"
#include "foundation/threads/VThread.h"

namespace VFoundation {

namespace {

constexpr char kLinesSemaphore[] = "VLogFile";
constexpr char kShutdownSemaphore[] = "VLogFileShutdown";
constexpr long kMaxShutdownSignals = 1;

// Milliseconds.
constexpr int kForEver = -1;
/// What a line that is written directly, or a closing file, waits for a writer.
constexpr int kBusyLimit = 100;
/// The writer gathers lines for so long, and only then waits for a signal: waking it for each line would cost
/// the caller more than all the rest.
constexpr long kWriterPause = 5;
/// The semaphore is shared with every process of the system, which may take a signal that was meant for this
/// one: so the wait is short, and the queue is looked at in either case.
constexpr long kSignalWait = 1;
constexpr long kStepAside = 1;

/// Signals that crashed processes may have left behind.
constexpr long kMostOldSignals = 1000;
/// Waiting lines that end the writer's pause, while there is still room for what comes until it is at work.
constexpr long kManyLines = VLogFile::kQueueCapacity / 2;
/// Lines after which the writer looks whether others wait for the file.
constexpr long kBatch = 64;

} // namespace

/// Holds the file. The writer waits for ever, others as long as they say.
class LogFileOutput::FileScope {
  public:
    explicit FileScope(LogFileOutput* output)
        : m_output(output), m_held(output->m_fileLock.TryLock(kForEver)) {}
    FileScope(LogFileOutput* output, int milliseconds)
        : m_output(output), m_held(output->m_fileLock.TryLock(0)) {
        if (!m_held) {
            output->m_waitingForFile.fetch_add(1);
            m_held = output->m_fileLock.TryLock(milliseconds);
            output->m_waitingForFile.fetch_sub(1);
        }
    }
    FileScope(FileScope const&) = delete;
    FileScope& operator=(FileScope const&) = delete;
    ~FileScope() {
        if (m_held) {
            m_output->m_fileLock.Unlock();
        }
    }
    explicit operator bool() const noexcept { return m_held; }

  private:
    LogFileOutput* m_output;
    bool m_held;
};

LogFileOutput::LogFileOutput()
    : m_linesSemaphore(VLogFile::kQueueCapacity, kLinesSemaphore),
      m_shutdownSemaphore(kMaxShutdownSignals, kShutdownSemaphore) {
}

LogFileOutput::~LogFileOutput() {
    EndFile();
}

// The file

/// Only a writer may hold the file for long: without one there is nobody to give up on.
int LogFileOutput::FilePatience() const noexcept {
    return IsWriterRunning() ? kBusyLimit : kForEver;
}

void LogFileOutput::SetFlag(bool& flag, bool value) {
    std::lock_guard const lock(m_queueLock);
    flag = value;
    m_queueing.store(m_fileOpen && m_writerTakesLines, std::memory_order_relaxed);
}

bool LogFileOutput::OpenFile(char const* path) {
    FileScope const file(this, FilePatience());
    if (!file) {
        return false;
    }
    EndFile();
    m_file = VFileManager::vfc_fopen(path, "w");
    SetFlag(m_fileOpen, m_file != nullptr);
    return m_file != nullptr;
}

void LogFileOutput::CloseFile() {
    SetFlag(m_fileOpen, false);
    if (FileScope const file(this, FilePatience()); file) {
        while (PutQueuedLines() > 0) {
        }
        EndFile();
    }
}

void LogFileOutput::EndFile() {
    if (m_file) {
        std::fclose(m_file);
        m_file = nullptr;
    }
}

void LogFileOutput::Put(char const* line) {
    if (std::fputs(line, m_file) == EOF) {
        CountDropped();
    }
}

bool LogFileOutput::Write(char const* line) {
    FileScope const file(this, FilePatience());
    if (!file) {
        CountDropped();
        return true;
    }
    if (!m_file) {
        return false;
    }
    Put(line);
    return true;
}

void LogFileOutput::Flush() {
    if (FileScope const file(this, FilePatience()); file && m_file) {
        std::fflush(m_file);
    }
}

// The queue

bool LogFileOutput::Enqueue(char const* line) {
    if (!m_queueing.load(std::memory_order_relaxed)) {
        return false;
    }
    auto const text = VObjectRef<VString>::Adopt(VString::NewString(line));
    {
        std::lock_guard const lock(m_queueLock);
        if (!m_queueing.load(std::memory_order_relaxed)) {
            return false;
        }
        if (!m_queue->Push(text.Get())) {
            CountDropped();
            return true;
        }
    }
    m_linesSemaphore.ReleaseSemaphore(1, nullptr);
    if (WaitingLines() >= kManyLines && !m_wake.IsSet()) {
        m_wake.Set();
    }
    return true;
}

void LogFileOutput::BeginQueueing() {
    SetFlag(m_writerTakesLines, true);
}

void LogFileOutput::StopQueueing() {
    SetFlag(m_writerTakesLines, false);
}

/// Up to a batch; the file is held.
long LogFileOutput::PutQueuedLines() {
    long count = 0;
    VString* line = nullptr;
    while (count < kBatch && m_file && m_queue && m_queue->Pop(&line)) {
        Put(VObjectRef<VString>::Adopt(line)->CString());
        ++count;
    }
    return count;
}

// The writer

bool LogFileOutput::PrepareWriter() {
    if (m_running.exchange(true)) {
        return false;
    }
    if (FileScope const file(this); !m_queue) {
        m_queue = VObjectRef<VObjectRingBufferTmpl<VString>>::Adopt(
            new VObjectRingBufferTmpl<VString>(VLogFile::kQueueCapacity));
    }
    for (long taken = 0; taken < kMostOldSignals && m_shutdownSemaphore.WaitForSemaphore(kSignalWait);
         ++taken) {
    }
    m_mayContinue.store(true);
    return true;
}

void LogFileOutput::RunWriter() {
    while (m_mayContinue.load()) {
        m_wake.WaitFor(kWriterPause);
        m_wake.Clear();
        m_linesSemaphore.WaitForSemaphore(kSignalWait);
        TakeSignals(Drain() - 1);
    }
    Drain();
    EndUnwantedFile();
    m_running.store(false);
    m_shutdownSemaphore.ReleaseSemaphore(1, nullptr);
}

/// The file was closed while this thread held it.
void LogFileOutput::EndUnwantedFile() {
    FileScope const file(this);
    std::lock_guard const lock(m_queueLock);
    if (!m_fileOpen) {
        EndFile();
    }
}

/// Writes all queued lines, and hands them to the system. Returns their number.
long LogFileOutput::Drain() {
    long count = 0;
    for (;;) {
        {
            FileScope const file(this);
            long written = 0;
            do {
                written = PutQueuedLines();
                count += written;
            } while (written == kBatch && m_waitingForFile.load() == 0);
            if (written < kBatch) {
                if (m_file && count > 0) {
                    std::fflush(m_file);
                }
                return count;
            }
        }
        VThread::Sleep(kStepAside); // a lock gives no turns: without this the others would wait in vain
    }
}

/// One signal came with each line. They are taken as the lines were, or the count would grow without end.
void LogFileOutput::TakeSignals(long count) {
    for (long taken = 0; taken < count && m_linesSemaphore.WaitForSemaphore(kSignalWait); ++taken) {
    }
}

} // namespace VFoundation
