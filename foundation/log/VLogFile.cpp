#include "foundation/log/VLogFile.h"

#include "foundation/host/internal/LocalTime.h"
#include "foundation/log/VLogContext.h"
#include "foundation/log/internal/LogFileOutput.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/internal/ThreadPresence.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <ctime>
#include <utility>

namespace VFoundation {

VClass* VLogFile::ms_theClass = nullptr;

namespace {

// Milliseconds.
constexpr long kCloseTry = 100;
constexpr long kShutdownWait = 1000;

constexpr int kMostRounds = 24;

char const* YesOrNo(bool flag) {
    return flag ? "YES" : "NO";
}

/// The writer thread's share of what it works with. However the thread ends, it leaves last.
struct Writer {
    std::shared_ptr<ThreadPresence> presence;
    std::shared_ptr<LogFileOutput> output;

    Writer(std::shared_ptr<ThreadPresence> itsPresence, std::shared_ptr<LogFileOutput> itsOutput)
        : presence(std::move(itsPresence)), output(std::move(itsOutput)) {}
    Writer(Writer const&) = delete;
    Writer& operator=(Writer const&) = delete;
    ~Writer() {
        presence->BeginLeaving();
        output.reset();
        presence->Leave();
    }
};

void* RunWriter(void* argument) {
    std::unique_ptr<Writer> const writer(static_cast<Writer*>(argument));
    writer->presence->Enter();
    writer->output->RunWriter();
    return nullptr;
}

} // namespace

VLogFile::VLogFile(char const* path, VClass* cls)
    : Registered(cls), m_output(std::make_shared<LogFileOutput>()) {
    if (path) {
        VLogFile::Open(path);
    }
}

VLogFile::~VLogFile() {
    if (WritingThread()) {
        WithoutThrowing([this] { VLogFile::ShutdownLoggingThread(); });
        StopWriterQuietly(); // if the default log stopped that
    }
    VLogFile::Close();
}

VLogFile* VLogFile::New() {
    return new VLogFile(nullptr);
}

// The file

bool VLogFile::Open(char const* path) {
    if (!path) {
        return false;
    }
    auto name = std::make_unique<char[]>(kPathSize);
    VString::strncpy(name.get(), path, kPathSize);
    name[kPathSize - 1] = '\0';
    std::uint32_t expected = eClosed;
    if (!m_fileState.compare_exchange_strong(expected, eOpening)) {
        return false;
    }
    if (!m_output->OpenFile(name.get())) {
        m_fileState.store(eClosed);
        return false;
    }
    m_name = std::move(name);
    // Until the date is written the file is open for this thread alone, so that it is the first line.
    m_opener.store(VThread::GetCurrentThreadID());
    try {
        char date[kLocalTimeTextSize];
        FormatLocalTime(static_cast<long long>(std::time(nullptr)), date);
        AddString(date);
    } catch (...) { // of a subclass
        EndFile();
        throw;
    }
    m_opener.store(VThread::ThreadID{});
    m_fileState.store(eOpen);
    return true;
}

bool VLogFile::Close() {
    std::uint32_t expected = eOpen;
    if (!m_fileState.compare_exchange_strong(expected, eClosing)) {
        return false;
    }
    VCriticalSectionScope scope;
    scope.TryEnter(CriticalSection(), kCloseTry); // closed in either case
    EndFile();
    return true;
}

void VLogFile::EndFile() {
    m_output->CloseFile();
    m_name.reset();
    m_opener.store(VThread::ThreadID{});
    m_fileState.store(eClosed);
}

bool VLogFile::IsOpenForThisThread() const noexcept {
    std::uint32_t const state = m_fileState.load();
    return state == eOpen || (state == eOpening && m_opener.load() == VThread::GetCurrentThreadID());
}

void VLogFile::AddString(char const* line) {
    if (!IsOpenForThisThread()) {
        VLog::AddString(line);
        return;
    }
    if (!line) {
        return;
    }
    bool const written =
        GetFlushEachLine() ? m_output->WriteThrough(line) : m_output->Enqueue(line) || m_output->Write(line);
    if (!written) {
        VLog::AddString(line); // closed in the meantime
    }
}

long VLogFile::DroppedLines() const noexcept {
    return VLog::DroppedLines() + m_output->DroppedLines();
}

// The writer thread

/// Null when the thread has left, also because this is a child process.
VObjectRef<VThread> VLogFile::WritingThread() {
    VObjectRef<VThread> thread;
    {
        detail::MutexLock const lock(m_threadLock);
        thread = m_writingThread;
        if (!m_writer || !m_writer->HasLeft()) {
            return thread;
        }
    }
    ForgetWritingThread(thread.Get());
    return VObjectRef<VThread>();
}

void VLogFile::ForgetWritingThread(VThread* thread) {
    VThread::UnregisterThread(thread);
    detail::MutexLock const lock(m_threadLock);
    if (m_writingThread.Get() == thread) {
        m_writingThread = VObjectRef<VThread>();
        m_writer.reset();
    }
}

bool VLogFile::IsLoggingThreadRunning() const noexcept {
    return m_output->IsWriterRunning();
}

bool VLogFile::StartLoggingThread() {
    if (WritingThread()) {
        return false;
    }
    auto presence = std::make_shared<ThreadPresence>();
    auto writer = std::make_unique<Writer>(presence, m_output);
    if (!m_output->PrepareWriter()) {
        return false;
    }
    VObjectRef<VThread> thread;
    try {
        thread = VObjectRef<VThread>::Adopt(VThread::StartThread(&RunWriter, writer.get(), kClassName));
    } catch (...) {
        m_output->ForgetWriter();
        throw;
    }
    if (!thread) {
        m_output->ForgetWriter();
        return false;
    }
    static_cast<void>(writer.release()); // the thread's now
    {
        detail::MutexLock const lock(m_threadLock);
        m_writingThread = thread;
        m_writer = std::move(presence);
    }
    try {
        VThread::RegisterThread(thread.Get());
    } catch (...) {
        StopWriterQuietly();
        throw;
    }
    return true;
}

bool VLogFile::ShutdownLoggingThread() {
    VLog::VLogContext const context("ShutdownLoggingThread");
    eStage stage = eBegun;
    try {
        return StopWriter(stage);
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        VLog::TraceNoThrow("Exception caught shutting down logging thread, stage: %i\n", stage);
    }
    return !IsLoggingThreadRunning();
}

bool VLogFile::StopWriter(eStage& stage) {
    VObjectRef<VThread> thread = WritingThread();
    if (thread) {
        m_output->StopQueueing();
    }
    VLog::Trace("Writing thread handle exists?: %s\n", YesOrNo(thread.Get() != nullptr));
    VLog::Trace("Writing thread is running?     %s\n", YesOrNo(IsLoggingThreadRunning()));
    VLog::Trace("Writing thread can continue?   %s\n", YesOrNo(m_output->MayWriterContinue()));
    if (!thread) {
        bool const running = IsLoggingThreadRunning();
        if (running) {
            VLog::Trace("m_writingThread has already been set to zero, but thread is still running according "
                        "to m_bThreadIsRunning\n");
        }
        return !running;
    }
    stage = eThreadHeld;
    VLog::Trace("Signalling logging thread to die...\n");
    m_output->TellWriterToEnd();
    if (auto const writer = WriterPresence()) {
        writer->Dismiss(); // also one that is given up below is kept off the end of the library
    }
    stage = eToldToEnd;
    VLog::Trace("Semaphoring logging thread to die...\n");
    m_output->WakeWriter();
    stage = eRaising;
    VLog::Trace("Setting logging thread priority to high...\n");
    thread->SetPriority(VThread::eHigh);
    VLog::Trace("Checking outstanding lines...\n");
    long const outstanding = m_output->WaitingLines();
    stage = eCounting;
    VLog::Trace("Outstanding lines are: %i\n", narrow_cast<int>(outstanding));
    AwaitWriter(outstanding);
    stage = eWaited;
    VLog::Trace(IsLoggingThreadRunning()
                    ? "WARNING! Logging thread is still running after being told to shutdown! Bad Thread!\n"
                    : "Logging thread has been shutdown safely\n");
    stage = eUnregistering;
    VLog::Trace("Unregistering logging thread...\n");
    VThread::UnregisterThread(thread.Get());
    stage = eReleasing;
    VLog::Trace("Releasing logging thread...\n");
    ForgetWritingThread(thread.Get());
    stage = eLetGo;
    thread.Exchange(nullptr);
    m_output->Flush();
    return !IsLoggingThreadRunning();
}

void VLogFile::AwaitWriter(long outstanding) {
    int round = 0;
    do {
        VLog::Trace("waiting for shutdown semaphore...(%i/25)\n", round);
        bool const signalled = m_output->WaitForShutdownSignal(kShutdownWait);
        VLog::Trace(signalled ? "got shutdown semaphore!\n" : "didn't get shutdown semaphore!\n");
        ++round;
        if (m_output->WaitingLines() < outstanding) {
            round = 0;
        } else if (round > kMostRounds) {
            break;
        }
    } while (IsLoggingThreadRunning());
    if (auto const writer = WriterPresence(); writer && !IsLoggingThreadRunning()) {
        while (!writer->WaitUntilLeft(kShutdownWait)) { // it has nothing left to wait for
        }
    }
}

std::shared_ptr<ThreadPresence> VLogFile::WriterPresence() {
    detail::MutexLock const lock(m_threadLock);
    return m_writer;
}

/// Without a line, for where the default log must not be used. Nothing when there is no thread.
void VLogFile::StopWriterQuietly() {
    VObjectRef<VThread> const thread = WritingThread();
    auto const writer = WriterPresence();
    if (!thread || !writer) {
        return;
    }
    m_output->StopQueueing();
    m_output->TellWriterToEnd();
    writer->Dismiss();
    m_output->WakeWriter();
    for (int round = 0; round <= kMostRounds && !writer->WaitUntilLeft(kShutdownWait); ++round) {
    }
    ForgetWritingThread(thread.Get());
}

} // namespace VFoundation
