#include "foundation/messaging/VMessageCenter.h"

#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/messaging/VMessageCenterJob.h"
#include "foundation/messaging/VMessenger.h"
#include "foundation/threads/VJobServer.h"
#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace VFoundation {

VClass* VMessageCenter::ms_theClass = nullptr;

namespace {

constexpr int kServerQueueSize = 1;

unsigned long UsableCapacity(int capacity) {
    return static_cast<unsigned long>(std::max(capacity, 0));
}

} // namespace

/// A command that has left a ring, until it is back among the free ones or was handed on.
class VMessageCenter::CommandScope {
  public:
    CommandScope(VMessageCenter* center, VCommandTuple* command)
        : m_center(center), m_command(VObjectRef<VCommandTuple>::Adopt(command)) {}
    CommandScope(CommandScope const&) = delete;
    CommandScope& operator=(CommandScope const&) = delete;
    ~CommandScope() {
        if (m_command) {
            m_command->ClearAndRelease();
            m_center->ReturnToFree(m_command);
        }
    }

    VCommandTuple& Command() const noexcept { return *m_command; }
    bool PushTo(CommandRing& ring) {
        bool const pushed = ring.PushAdopted(m_command.Get());
        if (pushed) {
            (void)m_command.Detach(); // the ring has the reference now
        }
        return pushed;
    }

  private:
    VMessageCenter* m_center;
    VObjectRef<VCommandTuple> m_command;
};

VMessageCenter::VMessageCenter(VClass* cls, int capacity)
    : Registered(cls), m_pending(UsableCapacity(capacity)), m_free(UsableCapacity(capacity)) {
    for (int i = 0; i < capacity; ++i) {
        m_free.Push(VObjectRef<VCommandTuple>::Adopt(VCommandTuple::New()).Get());
    }
}

VMessageCenter::~VMessageCenter() {
    VMessageCenter::StopCenter();
}

VMessageCenter* VMessageCenter::New() {
    return new VMessageCenter(kDefaultCapacity);
}

// Posts

template <class Fill>
bool VMessageCenter::Post(Fill fill) {
    if (!IsAccepting()) {
        return Lose(m_refused);
    }
    VCommandTuple* popped = nullptr;
    if (!m_free.Pop(&popped)) {
        return Lose(m_dropped);
    }
    CommandScope scope(this, popped);
    try {
        fill(scope.Command());
    } catch (...) { // no memory for a string
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        return Lose(m_dropped);
    }
    if (!PushThenMark([&] { return scope.PushTo(m_pending); })) {
        return Lose(m_dropped);
    }
    if (m_stopped.load()) { // the command may have come after the clearing of the queue
        DropPending();
    }
    return true;
}

/// Counts a command that is lost, and tells of it if that was asked for. False, for the post.
bool VMessageCenter::Lose(std::atomic<long>& count) {
    count.fetch_add(1, std::memory_order_relaxed);
    if (m_tells.load(std::memory_order_relaxed) && m_tells.exchange(false)) {
        std::function<void()> tell;
        {
            detail::MutexLock const lock(m_tellLock);
            tell.swap(m_tell);
        }
        if (tell) {
            WithoutThrowing(tell);
        }
    }
    return false;
}

void VMessageCenter::TellOfNextLoss(std::function<void()> tell) {
    bool const tells = static_cast<bool>(tell);
    detail::MutexLock const lock(m_tellLock);
    tell.swap(m_tell); // the former one goes after the lock
    m_tells.store(tells);
}

/// One by one, so that messengers whose last reference a command has go to the garbage can.
void VMessageCenter::DropPending() {
    VCommandTuple* command = nullptr;
    while (m_pending.Pop(&command)) {
        VObjectRef<VCommandTuple>::Adopt(command)->ClearAndRelease();
        Lose(m_dropped);
    }
}

void VMessageCenter::ReturnToFree(VObjectRef<VCommandTuple>& command) {
    if (m_free.PushAdopted(command.Get())) {
        (void)command.Detach();
    }
    if (m_stopped.load()) {
        m_free.RemoveAllObjects();
    }
}

bool VMessageCenter::MessageDelay(VMessenger* target, VMessage* message) {
    return message && Post([=](VCommandTuple& command) { command.SetAndRetainMessage(target, message); });
}

bool VMessageCenter::ConnectDelayed(VMessenger* source, int sourceId, VMessageCenter* center,
                                    VMessenger* target, int targetId) {
    return Post([=](VCommandTuple& command) {
        command.SetAndRetainConnect(source, sourceId, center, target, targetId);
    });
}

bool VMessageCenter::DisconnectDelayed(VMessenger* source, int sourceId, VMessageCenter* center,
                                       VMessenger* target, int targetId) {
    return Post([=](VCommandTuple& command) {
        command.SetAndRetainDisconnect(source, sourceId, center, target, targetId);
    });
}

long VMessageCenter::CommandCountMin() {
    return m_pending.UsedCount();
}

// Connections

/// Tells both messengers that a connection between them is about to change; false when an id is too high.
bool VMessageCenter::Touch(VMessenger* source, int sourceId, VMessenger* target, int targetId) {
    if (!source || !target || sourceId >= source->GetOutMessageCount() ||
        targetId >= target->GetInMessageCount()) {
        return false;
    }
    source->TouchOutMessage(sourceId);
    target->TouchInMessage(targetId);
    return true;
}

bool VMessageCenter::ConnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center,
                                      VMessenger* target, int targetId) {
    return Touch(source, sourceId, target, targetId) &&
           source->AddConnection(sourceId, target, targetId, center);
}

bool VMessageCenter::DisconnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center,
                                         VMessenger* target, int targetId) {
    return source && source->GetConnectionsCount() > 0 && Touch(source, sourceId, target, targetId) &&
           source->RemoveConnection(sourceId, target, targetId, center);
}

bool VMessageCenter::ReconnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center,
                                        VMessenger* target, int targetId) {
    DisconnectImmediate(source, sourceId, center, target, targetId);
    return ConnectImmediate(source, sourceId, center, target, targetId);
}

// Service

long VMessageCenter::SendDelayedCommands() {
    VObjectRef<VMessageCenter> const self(this); // a handler may drop the last reference
    VCommandDelayer::SendDelayedCommands();
    SetServiced(true); // before the queue is looked at: any later post clears it
    long count = 0;
    VCommandTuple* command = nullptr;
    try {
        while (m_pending.Pop(&command)) {
            CommandScope const scope(this, command);
            Service(*command);
            ++count;
        }
    } catch (...) {
        SetServiced(false); // the commands that are left need another service
        throw;
    }
    return count;
}

void VMessageCenter::Service(VCommandTuple& command) {
    VMessenger* const source = command.Source();
    VMessenger* const target = command.Target();
    double const start = m_serviceStopWatch.GetElapsedTime();
    switch (command.Kind()) {
    case VCommandTuple::eConnect:
        if (source && target) {
            ConnectImmediate(source, command.SourceID(), command.Center(), target, command.TargetID());
        }
        break;
    case VCommandTuple::eDisconnect:
        if (source && target) {
            DisconnectImmediate(source, command.SourceID(), command.Center(), target, command.TargetID());
        }
        break;
    case VCommandTuple::eMessage:
        if (target) {
            target->ReceiveMessage(command.Message());
        }
        break;
    default:
        break;
    }
    double const seconds = m_serviceStopWatch.GetElapsedTime() - start;
    if (seconds > kLongServiceTime) {
        m_slow.fetch_add(1, std::memory_order_relaxed);
        ReportLongService(command, seconds);
    }
}

void VMessageCenter::ReportLongService(VCommandTuple& command, double seconds) const {
    std::fprintf(stderr, "[%s] LONG MESSAGE SERVICE TIME DETECTED! %.6lf\n", command.Label(), seconds);
    if (command.Kind() == VCommandTuple::eMessage) {
        auto const nameOf = [](VMessenger* messenger) {
            char const* const name = messenger ? messenger->GetMessengerName() : nullptr;
            return name ? name : "NULL";
        };
        std::fprintf(stderr, "%s: %s [msg:%i] -> %s [msg:%i]\n", command.Label(), nameOf(command.Source()),
                     command.SourceID(), nameOf(command.Target()), command.TargetID());
    }
}

VCriticalSection* VMessageCenter::GetCriticalSection() {
    return m_criticalSection.load();
}

void VMessageCenter::SetCriticalSection(VCriticalSection* section) {
    m_criticalSection.store(section);
}

// The job

void VMessageCenter::StartCenter(char const* name, long sleepMilliseconds) {
    VObjectRef<VJobServer> server;
    VObjectRef<VMessageCenterJob> job;
    {
        detail::MutexLock const lock(m_startLock);
        server = m_server;
        job = m_job;
    }
    // Made outside the lock, as a name that does not do is reported to the log.
    if (!server) {
        server = VObjectRef<VJobServer>::Adopt(new VJobServer(name, kServerQueueSize, nullptr));
    }
    if (job && job->EndInChild()) {
        job.Exchange(nullptr);
    }
    if (!job) {
        job = VObjectRef<VMessageCenterJob>::Adopt(new VMessageCenterJob(this, sleepMilliseconds));
    }
    auto formerJob = job; // released after the lock
    {
        detail::MutexLock const lock(m_startLock);
        m_server = server;
        std::swap(m_job, formerJob);
    }
    server->StartServer();
    server->AddJob(job.Get());
    {
        detail::MutexLock const lock(m_startLock);
        if (m_server.Get() == server.Get()) {
            return;
        }
    }
    // A handler has stopped the centre meanwhile, and the job may have been queued after that.
    server->KillAllJobs();
    EndServer(*server, *job);
}

void VMessageCenter::StopCenter() {
    m_stopped.store(true);
    EndJob();
    m_free.RemoveAllObjects();
    DropPending();
}

long VMessageCenter::FinishCenter() {
    SetAccepting(false);
    EndJob();
    long serviced = 0;
    try {
        serviced = SendDelayedCommands();
    } catch (...) {
        StopCenter();
        throw;
    }
    StopCenter();
    return serviced;
}

void VMessageCenter::EndJob() {
    VObjectRef<VJobServer> server;
    VObjectRef<VMessageCenterJob> job;
    {
        detail::MutexLock const lock(m_startLock);
        std::swap(server, m_server);
        job = m_job;
    }
    if (server) {
        server->KillAllJobs();
    }
    if (job) {
        // Also a job that was on its way from the queue to its start, will never start, or runs a handler that
        // has stopped the centre itself.
        job->AbortJob();
    }
    if (server) {
        EndServer(*server, *job);
    }
}

void VMessageCenter::EndServer(VJobServer& server, VMessageCenterJob const& job) {
    if (job.IsOnThisThread()) {
        server.RequestEnd(); // a handler cannot wait for its own thread
    } else {
        server.EndServer(true);
    }
}

} // namespace VFoundation
