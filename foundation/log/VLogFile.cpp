#include "foundation/log/VLogFile.h"

#include "foundation/host/internal/LocalTime.h"
#include "foundation/log/VLogContext.h"
#include "foundation/log/internal/LogFileOutput.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/internal/ThreadPresence.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <ctime>
#include <optional>
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
struct WriterShare {
    std::shared_ptr<ThreadPresence> presence;
    std::shared_ptr<LogFileOutput> output;

    WriterShare(std::shared_ptr<ThreadPresence> itsPresence, std::shared_ptr<LogFileOutput> itsOutput)
        : presence(std::move(itsPresence)), output(std::move(itsOutput)) {}
    WriterShare(WriterShare const&) = delete;
    WriterShare& operator=(WriterShare const&) = delete;
    ~WriterShare() {
        presence->BeginLeaving();
        output.reset();
        presence->Leave();
    }
};

void* RunWriter(void* argument) {
    std::unique_ptr<WriterShare> const writer(static_cast<WriterShare*>(argument));
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
    if (CurrentWriter().thread) {
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
    scope.SetAndEnter(nullptr);
    TellOfLoss();
    return true;
}

void VLogFile::EndFile() {
    m_output->CloseFile();
    m_name.reset();
    m_opener.store(VThread::ThreadID{});
    m_fileState.store(eClosed);
}

bool VLogFile::SetRotation(Rotation const& rotation) {
    return m_output->SetRotation(rotation);
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
    bool const written = GetFlushEachLine()
                             ? m_output->WriteThrough(line)
                             : m_output->Enqueue(line, GetFullQueueWait()) || m_output->Write(line);
    if (!written) {
        VLog::AddString(line); // closed in the meantime
    }
}

long VLogFile::DroppedLines() const noexcept {
    return VLog::DroppedLines() + m_output->DroppedLines();
}

// The writer thread

/// Empty when the thread has left, also because this is a child process.
VLogFile::WriterHandle VLogFile::CurrentWriter() {
    WriterHandle writer;
    {
        detail::MutexLock const lock(m_threadLock);
        writer = m_writer;
    }
    if (writer.presence && writer.presence->HasLeft()) {
        Forget(writer);
        return WriterHandle();
    }
    return writer;
}

void VLogFile::Forget(WriterHandle const& writer) {
    VThread::UnregisterThread(writer.thread.Get());
    detail::MutexLock const lock(m_threadLock);
    if (m_writer.presence == writer.presence) { // or another thread has started the next one
        m_writer = WriterHandle();
    }
}

/// Of another one that was started meanwhile the log says nothing here.
bool VLogFile::IsRunning(WriterHandle const& writer) const noexcept {
    return IsLoggingThreadRunning() && !writer.presence->HasLeft();
}

bool VLogFile::IsLoggingThreadRunning() const noexcept {
    return m_output->IsWriterRunning();
}

bool VLogFile::StartLoggingThread() {
    if (CurrentWriter().thread) {
        return false;
    }
    auto presence = std::make_shared<ThreadPresence>();
    auto writer = std::make_unique<WriterShare>(presence, m_output);
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
        m_writer = {thread, std::move(presence)};
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
    std::optional<VLogContext> context;
    if (GetShowRoutineLines()) {
        context.emplace("ShutdownLoggingThread");
    }
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
    WriterHandle writer = CurrentWriter();
    if (writer.thread) {
        m_output->StopQueueing();
    }
    VLog::TraceRoutine("Writing thread handle exists?: %s\n", YesOrNo(writer.thread.Get() != nullptr));
    VLog::TraceRoutine("Writing thread is running?     %s\n", YesOrNo(IsLoggingThreadRunning()));
    VLog::TraceRoutine("Writing thread can continue?   %s\n", YesOrNo(m_output->MayWriterContinue()));
    if (!writer.thread) {
        bool const running = IsLoggingThreadRunning();
        if (running) {
            VLog::Trace("m_writingThread has already been set to zero, but thread is still running according "
                        "to m_bThreadIsRunning\n");
        }
        return !running;
    }
    stage = eThreadHeld;
    VLog::TraceRoutine("Signalling logging thread to die...\n");
    m_output->TellWriterToEnd();
    writer.presence->Dismiss(); // also one that is given up below is kept off the end of the library
    stage = eToldToEnd;
    VLog::TraceRoutine("Semaphoring logging thread to die...\n");
    m_output->WakeWriter();
    stage = eRaising;
    VLog::TraceRoutine("Setting logging thread priority to high...\n");
    {
        detail::MutexLock const lock(m_threadLock); // another thread may be stopping the same writer
        writer.thread->SetPriority(VThread::eHigh);
    }
    VLog::TraceRoutine("Checking outstanding lines...\n");
    long const outstanding = m_output->WaitingLines();
    stage = eCounting;
    VLog::TraceRoutine("Outstanding lines are: %i\n", narrow_cast<int>(outstanding));
    AwaitWriter(writer, outstanding);
    stage = eWaited;
    bool const running = IsRunning(writer);
    if (running) {
        VLog::Trace("WARNING! Logging thread is still running after being told to shutdown! Bad Thread!\n");
    } else {
        VLog::TraceRoutine("Logging thread has been shutdown safely\n");
    }
    stage = eUnregistering;
    VLog::TraceRoutine("Unregistering logging thread...\n");
    VThread::UnregisterThread(writer.thread.Get());
    stage = eReleasing;
    VLog::TraceRoutine("Releasing logging thread...\n");
    Forget(writer);
    stage = eLetGo;
    writer.thread.Exchange(nullptr);
    m_output->Flush();
    return !running;
}

void VLogFile::AwaitWriter(WriterHandle const& writer, long outstanding) {
    int round = 0;
    do {
        VLog::TraceRoutine("waiting for shutdown semaphore...(%i/25)\n", round);
        bool const signalled = m_output->WaitForShutdownSignal(kShutdownWait);
        VLog::TraceRoutine(signalled ? "got shutdown semaphore!\n" : "didn't get shutdown semaphore!\n");
        ++round;
        if (m_output->WaitingLines() < outstanding) {
            round = 0;
        } else if (round > kMostRounds) {
            break;
        }
    } while (IsRunning(writer));
    while (!IsRunning(writer) &&
           !writer.presence->WaitUntilLeft(kShutdownWait)) { // it does not wait any more
    }
}

/// Without a line, for where the default log must not be used. Nothing when there is no thread.
void VLogFile::StopWriterQuietly() {
    WriterHandle const writer = CurrentWriter();
    if (!writer.thread) {
        return;
    }
    m_output->StopQueueing();
    m_output->TellWriterToEnd();
    writer.presence->Dismiss();
    m_output->WakeWriter();
    for (int round = 0; round <= kMostRounds && !writer.presence->WaitUntilLeft(kShutdownWait); ++round) {
    }
    Forget(writer);
}

} // namespace VFoundation
