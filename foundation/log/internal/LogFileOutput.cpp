#include "foundation/log/internal/LogFileOutput.h"

#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/host/internal/LocalTime.h"
#include "foundation/log/VLogFile.h"
#include "foundation/threads/internal/Futex.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <cstring>
#include <ctime>

namespace VFoundation {

namespace {

constexpr char kLinesSemaphore[] = "VLogFile";
constexpr char kShutdownSemaphore[] = "VLogFileShutdown";
constexpr long kMaxShutdownSignals = 1;

// Milliseconds.
constexpr int kWithoutLimit = -1;
/// How long a line that is written directly, or a closing file, waits for a writer.
constexpr int kBusyLimit = 100;
/// The writer gathers lines for so long, and only then waits for a signal: waking it for each line would cost the
/// caller more than all the rest.
constexpr long kWriterPause = 5;
/// The semaphore is shared with every process of the system, which may take a signal that was meant for this one. So
/// the wait is short, and the writer looks at the queue in either case.
constexpr long kSignalWait = 1;
constexpr long kStepAside = 1;

/// Signals that crashed processes may have left in a semaphore.
constexpr long kMostOldSignals = 1000;
/// Waiting lines that end the writer's pause, while there is still room for what comes until it is at work.
constexpr long kManyLines = VLogFile::kQueueCapacity / 2;
/// Lines after which the writer looks whether others wait for the file.
constexpr long kBatch = 64;

} // namespace

/// Holds the file. The writer waits without limit, others as long as they say.
class LogFileOutput::FileScope {
  public:
    explicit FileScope(LogFileOutput* output)
        : m_output(output), m_held(output->m_fileLock.TryLock(kWithoutLimit)) {}
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
      m_shutdownSemaphore(kMaxShutdownSignals, kShutdownSemaphore),
      m_forkHook(this, {&BeforeFork, &AfterForkInParent, &AfterForkInChild}) {
}

LogFileOutput::~LogFileOutput() {
    if (Queue* const queue = m_queue.load()) {
        queue->Release();
    }
}

// The file

/// Only a writer may hold the file for long; without one the wait is for another line.
int LogFileOutput::FilePatience() const noexcept {
    return IsWriterRunning() ? kBusyLimit : kWithoutLimit;
}

void LogFileOutput::SetCondition(std::uint32_t condition, bool holds) {
    {
        detail::MutexLock const lock(m_queueLock);
        m_conditions = holds ? m_conditions | condition : m_conditions & ~condition;
        m_queueing.store(m_conditions == (kFileOpen | kWriterTakesLines), std::memory_order_relaxed);
    }
    TellOfRoom(); // lines that are not queued any more need none
}

bool LogFileOutput::IsFileWanted() {
    detail::MutexLock const lock(m_queueLock);
    return (m_conditions & kFileOpen) != 0;
}

bool LogFileOutput::OpenFile(char const* path) {
    FileScope const file(this, FilePatience());
    if (!file) {
        return false;
    }
    if (!WithoutThrowing([&] { m_path = path; })) {
        return false;
    }
    bool const opened = m_file.Open(path);
    m_rotation.Begin(0);
    SetCondition(kFileOpen, opened);
    return opened;
}

void LogFileOutput::CloseFile() {
    SetCondition(kFileOpen, false);
    if (FileScope const file(this, FilePatience()); file) {
        PutAllQueuedLines();
        m_file.Close();
    }
}

/// False when no file is open. A line whose turn does not come is dropped.
template <class Action>
bool LogFileOutput::WithFile(Action action) {
    FileScope const file(this, FilePatience());
    if (!file) {
        CountDropped();
        return true;
    }
    if (!m_file.IsOpen()) {
        return false;
    }
    action();
    return true;
}

bool LogFileOutput::Write(char const* line) {
    return WithFile([&] { PutLine(line); });
}

bool LogFileOutput::WriteThrough(char const* line) {
    return WithFile([&] {
        PutAllQueuedLines();
        PutLine(line);
        m_file.Flush();
    });
}

void LogFileOutput::Flush() {
    if (FileScope const file(this, FilePatience()); file && m_file.IsOpen()) {
        m_file.Flush();
    }
}

bool LogFileOutput::SetRotation(VLogFile::Rotation const& rotation) {
    FileScope const file(this, FilePatience());
    if (file) {
        m_rotation.Set(rotation);
        m_rotation.Begin(0);
    }
    return static_cast<bool>(file);
}

/// The file is held.
void LogFileOutput::PutLine(char const* line) {
    if (m_rotation.IsDue(m_file.Size())) {
        bool isFresh = false;
        WithoutThrowing([&] { isFresh = BeginFreshFile(); });
        m_rotation.Begin(isFresh ? 0 : m_file.Size());
    }
    m_file.Put(line);
}

/// False when the old one goes on.
bool LogFileOutput::BeginFreshFile() {
    if (!m_rotation.PutAside(m_path.c_str())) {
        return false;
    }
    if (!m_file.Replace(m_path.c_str())) {
        m_rotation.TakeBack(m_path.c_str());
        return false;
    }
    char date[kLocalTimeTextSize];
    FormatLocalTime(static_cast<long long>(std::time(nullptr)), date);
    m_file.Put(date);
    return true;
}

// The queue

namespace {

/// A copy of the line, or null when memory runs out.
VObjectRef<VString> CopyOf(char const* line) {
    VObjectRef<VString> text;
    WithoutThrowing([&] { text = VObjectRef<VString>::Adopt(VString::NewString(line)); });
    return text && text->Length() == std::strlen(line) ? text : VObjectRef<VString>();
}

} // namespace

LogFileOutput::ePush LogFileOutput::Push(VString* line) {
    detail::MutexLock const lock(m_queueLock);
    if (!m_queueing.load(std::memory_order_relaxed)) {
        return ePush::eNotQueueing;
    }
    return line && m_queue.load()->Push(line) ? ePush::eDone : ePush::eFull;
}

LogFileOutput::ePush LogFileOutput::PushWhenThereIsRoom(VString* line, long milliseconds) {
    struct WaitingScope {
        std::atomic<long>& threads;
        explicit WaitingScope(std::atomic<long>& count) : threads(count) { ++threads; }
        WaitingScope(WaitingScope const&) = delete;
        WaitingScope& operator=(WaitingScope const&) = delete;
        ~WaitingScope() { --threads; }
    };
    MonotonicTime const deadline = MillisecondsFromNow(milliseconds);
    // Before the next try: room that comes after it is then told of.
    WaitingScope const waiting(m_waitingForRoom);
    m_wake.Set();
    for (;;) {
        std::uint32_t const seen = m_roomChanges.load();
        ePush const result = Push(line);
        if (result != ePush::eFull || !FutexWait(m_roomChanges, seen, &deadline)) {
            return result;
        }
    }
}

void LogFileOutput::TellOfRoom() noexcept {
    if (m_waitingForRoom.load() > 0) {
        m_roomChanges.fetch_add(1);
        FutexWakeAll(m_roomChanges);
    }
}

bool LogFileOutput::Enqueue(char const* line, long milliseconds) {
    if (!m_queueing.load(std::memory_order_relaxed)) {
        return false;
    }
    VObjectRef<VString> const text = CopyOf(line);
    ePush result = Push(text.Get());
    if (result == ePush::eFull && text && milliseconds > 0 &&
        m_writer.load(std::memory_order_relaxed) != VThread::GetCurrentThreadID()) {
        result = PushWhenThereIsRoom(text.Get(), milliseconds);
    }
    if (result == ePush::eNotQueueing) {
        return false;
    }
    if (result == ePush::eFull) {
        CountDropped();
        return true;
    }
    m_linesSemaphore.ReleaseSemaphore(1, nullptr);
    if (WaitingLines() >= kManyLines && !m_wake.IsSet()) {
        m_wake.Set();
    }
    return true;
}

/// Up to a batch; the file is held.
long LogFileOutput::PutQueuedLines() {
    Queue* const queue = m_queue.load();
    long count = 0;
    VString* line = nullptr;
    while (count < kBatch && m_file.IsOpen() && queue && queue->Pop(&line)) {
        PutLine(VObjectRef<VString>::Adopt(line)->CString());
        ++count;
    }
    if (count > 0) {
        TellOfRoom();
    }
    return count;
}

void LogFileOutput::PutAllQueuedLines() {
    while (PutQueuedLines() > 0) {
    }
}

// The writer

bool LogFileOutput::PrepareWriter() {
    if (!m_queue.load()) {
        auto made = VObjectRef<Queue>::Adopt(new Queue(VLogFile::kQueueCapacity));
        Queue* expected = nullptr;
        if (m_queue.compare_exchange_strong(expected, made.Get())) {
            static_cast<void>(made.Detach());
        }
    }
    if (m_running.exchange(true)) {
        return false;
    }
    for (long taken = 0; taken < kMostOldSignals && m_shutdownSemaphore.WaitForSemaphore(kSignalWait);
         ++taken) {
    }
    m_mayContinue.store(true);
    SetCondition(kWriterTakesLines, true);
    return true;
}

void LogFileOutput::ForgetWriter() {
    StopQueueing();
    {
        FileScope const file(this);
        PutAllQueuedLines();
    }
    m_running.store(false);
}

/// However the writer ends, lines are written directly from then on, and it is known to have ended.
class LogFileOutput::WriterScope {
  public:
    explicit WriterScope(LogFileOutput* output) : m_output(output) {}
    WriterScope(WriterScope const&) = delete;
    WriterScope& operator=(WriterScope const&) = delete;
    ~WriterScope() {
        m_output->StopQueueing();
        m_output->Drain();
        m_output->EndUnwantedFile();
        m_output->m_writer.store(VThread::ThreadID{}, std::memory_order_relaxed);
        m_output->m_running.store(false);
        m_output->m_shutdownSemaphore.ReleaseSemaphore(1, nullptr);
    }

  private:
    LogFileOutput* m_output;
};

void LogFileOutput::RunWriter() {
    WriterScope const scope(this);
    m_writer.store(VThread::GetCurrentThreadID(), std::memory_order_relaxed);
    while (m_mayContinue.load()) {
        m_wake.WaitFor(kWriterPause);
        m_wake.Clear();
        m_linesSemaphore.WaitForSemaphore(kSignalWait);
        TakeSignals(Drain() - 1);
    }
}

/// The file was closed while this thread held it.
void LogFileOutput::EndUnwantedFile() {
    FileScope const file(this);
    if (!IsFileWanted()) {
        m_file.Close();
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
                if (m_file.IsOpen() && count > 0) {
                    m_file.Flush();
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

// Forks

void LogFileOutput::BeforeFork(void* self) VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    auto* const output = static_cast<LogFileOutput*>(self);
    output->m_isHeldForFork = output->m_fileLock.TryLock(kBusyLimit);
    if (output->m_isHeldForFork && output->m_file.IsOpen()) {
        output->m_file.Flush();
    }
    output->m_queueLock.Lock();
}

void LogFileOutput::AfterForkInParent(void* self) VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    auto* const output = static_cast<LogFileOutput*>(self);
    output->m_queueLock.Unlock();
    if (output->m_isHeldForFork) {
        output->m_fileLock.Unlock();
    }
}

void LogFileOutput::AfterForkInChild(void* self) VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    auto* const output = static_cast<LogFileOutput*>(self);
    if (!output->m_isHeldForFork) {
        output->m_file.Abandon(); // a stuck writer held it
        output->m_conditions = 0;
    }
    output->m_conditions &= kFileOpen;
    output->m_queueing.store(false);
    output->m_waitingForFile.store(0);
    output->m_waitingForRoom.store(0);
    output->m_writer.store(VThread::ThreadID{});
    output->m_mayContinue.store(false);
    output->m_running.store(false);
    output->m_queueLock.Unlock();
    output->m_fileLock.Unlock();
    if (Queue* const queue = output->m_queue.load()) {
        queue->RemoveAllObjects();
    }
}

} // namespace VFoundation
