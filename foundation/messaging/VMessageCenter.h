#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/host/VFpuMode.h"
#include "foundation/messaging/ScopedConnection.h"
#include "foundation/messaging/VCommandDelayer.h"
#include "foundation/messaging/VCommandTuple.h"

#include <atomic>
#include <functional>

namespace VFoundation {

class VJobServer;
class VMessageCenterJob;

/// Connects messengers, and carries messages between threads. A post leaves a command in a queue of fixed size,
/// without a lock and without an allocation (a message that holds a string copies it). Commands are serviced
/// later, in batches: by a job that looks every few milliseconds (`StartCenter`), or by calls of
/// `SendDelayedCommands`.
///
///     auto const center = MakeObject<VMessageCenter>(256);
///     center->ConnectImmediate(knob, kTurned, center.Get(), motor, kSetSpeed); // delayed through the centre
///     center->StartCenter("Panel 4711", 5);
///     ...
///     center->StopCenter();
///
/// `StartedCenter` pairs start and stop, `Connect` makes connections that end with a scope, to functions too, and
/// `FinishCenter` delivers what is queued before it stops.
///
/// The centre that stands among the arguments becomes the delayer of the connection: null connects for
/// immediate delivery, on the sender's thread.
///
/// Stop a centre before its last `Release`: its job, and connect commands that wait in it, hold references to
/// it. The name given to `StartCenter` is that of a job server and has its rules (`VJobServer`). Polling
/// every 5 ms costs about 1 % of a core, the server's thread included.
///
/// A queue that is full loses commands, and senders through a connection are not told: size it for a burst, and look
/// at `DroppedCommands()`.
///
/// A command that takes more than 100 microseconds is reported on the standard error stream. An exception of
/// a handler leaves `SendDelayedCommands`; the commands after it stay queued. The job writes a line to the
/// log and goes on.
///
/// In a child process (`fork`) the job of the parent does not run, and holds the centre until `StartCenter` or
/// `StopCenter`; `StartCenter` starts another one.
///
/// DELIBERATE: the job services at most once in 0.1 s, however often it looks.
/// DELIBERATE: a stopped centre has lost its commands for good; started again it runs and still refuses
/// every post.
/// DELIBERATE: a slow message is reported with "NULL" and -1 for its source and both ids, which the command
/// does not have.
/// DELIBERATE: the job asks for the critical section once, when it begins; one set later does not bind it.
/// DELIBERATE: handlers called by the job find floating-point arithmetic rounding downward; `UsualRounding` restores it
/// for a scope, and functions connected by `Connect` have it already.
///
/// Ownership: retains what its commands name until they are serviced or dropped. A messenger whose last reference
/// a command has goes to the garbage can, if one is set (`VCommandTuple`). Borrows the critical section.
/// Threads: posts from any thread. Servicing by one thread at a time: to service a started centre by hand as
/// well, set a critical section and hold it; the job skips its poll while another thread does. `StartCenter` and
/// `StopCenter` are for the owner's thread; a handler may stop its own centre, and drop its last reference.
class VFOUNDATION_API VMessageCenter : public Registered<VMessageCenter, VCommandDelayer> {
  public:
    static constexpr char const* kClassName = "VMessageCenter";
    static VClass* ms_theClass;
    static constexpr int kDefaultCapacity = 256;
    /// Seconds that a command may take unreported.
    static constexpr double kLongServiceTime = 0.0001;

    /// Room for `capacity` commands; none when it is 0 or less.
    explicit VMessageCenter(int capacity, VClass* cls = nullptr) : VMessageCenter(cls, capacity) {}
    VMessageCenter(VMessageCenter const&) = delete;
    VMessageCenter& operator=(VMessageCenter const&) = delete;
    /// Stops the centre.
    ~VMessageCenter() override;
    /// One with room for `kDefaultCapacity` commands.
    [[nodiscard]] static VMessageCenter* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    // Posts: true when queued. False when the queue is full, when memory runs out, when the centre does not
    // accept, and once it was stopped; `StopCenter` drops what is queued. A message (not null) is copied.
    // Commands without source or target do nothing when their time comes.
    bool MessageDelay(VMessenger* target, VMessage* message) override;
    bool ConnectDelayed(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                        int targetId) override;
    bool DisconnectDelayed(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                           int targetId) override;

    // At once: true when it was done. False for an id that is too high for its messenger, and when memory runs
    // out. A negative source id connects nothing, a negative target id is delivered as it is.
    bool ConnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                          int targetId) override;
    bool DisconnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                             int targetId) override;
    /// Disconnects, whether or not there was a connection, and connects.
    bool ReconnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                            int targetId) override;

    using Function = std::function<void(VMessage const&)>;
    /// As `ConnectImmediate`, until the result goes; it is empty where that is false. A connection through a centre
    /// keeps it, so that it cannot outlive it: drop it before the centre is to go.
    [[nodiscard]] static ScopedConnection Connect(VMessageCenter* center, VMessenger* source, int sourceId,
                                                  VMessenger* target, int targetId);
    /// Connects an outgoing message with a function; a null centre calls it on the sender's thread.
    [[nodiscard]] static ScopedConnection Connect(VMessageCenter* center, VMessenger* source, int sourceId,
                                                  Function function);
    /// A messenger that calls a function with each message it receives, as the target of `MessageDelay`:
    ///
    ///     auto const bar = VMessageCenter::MakeReceiver([](VMessage const& message) { Show(message.FirstArg()); });
    ///     center->MessageDelay(bar.Get(), &message);      // from any thread
    ///
    /// The function finds the usual rounding. It is kept by the messenger, which each queued message keeps. Null for an
    /// empty function; without memory `std::bad_alloc`.
    [[nodiscard]] static VObjectRef<VMessenger> MakeReceiver(Function function);

    // What was lost since the centre was made.

    /// Commands for which there was no room or no memory, and those that were queued when the centre stopped.
    long DroppedCommands() const noexcept { return m_dropped.load(std::memory_order_relaxed); }
    /// Posts while the centre did not accept any.
    long RefusedCommands() const noexcept { return m_refused.load(std::memory_order_relaxed); }
    /// Commands that took longer than `kLongServiceTime`.
    long SlowCommands() const noexcept { return m_slow.load(std::memory_order_relaxed); }
    /// Has `tell` called once, at the next command that is dropped or refused, on the thread that loses it, which may
    /// be in the destructor. What it throws is dropped. An empty function takes an earlier one back.
    void TellOfNextLoss(std::function<void()> tell);

    /// Services commands until none is queued; the result is their number.
    long SendDelayedCommands() override;
    /// Commands queued; other threads may be adding to them.
    long CommandCountMin() override;

    VCriticalSection* GetCriticalSection() override;
    void SetCriticalSection(VCriticalSection* section) override;

    /// Starts a job that services the centre, and looks for commands every so many milliseconds (1 at least).
    /// Another call queues the same job once more, which changes nothing.
    void StartCenter(char const* name, long sleepMilliseconds) override;
    /// Stops the job, waits until it is over, and drops what is queued. From a handler it does not wait: the
    /// job ends after the handler. Any other caller waits for a handler that is running, however long that
    /// takes, also when the handler has stopped the centre itself.
    void StopCenter() override;
    /// Stops the centre and loses nothing: takes no more posts, waits as `StopCenter` does, and services what is still
    /// queued on the calling thread. The result is the number of commands serviced there. What a handler throws passes;
    /// the centre is stopped then.
    long FinishCenter();

    /// A centre that does not accept refuses posts. It accepts at first, and never again once it was stopped.
    bool IsAccepting() const noexcept {
        return m_accepting.load(std::memory_order_relaxed) && !m_stopped.load();
    }
    void SetAccepting(bool accepting) noexcept { m_accepting.store(accepting, std::memory_order_relaxed); }

  protected:
    VMessageCenter(VClass* cls, int capacity);

  private:
    class CommandScope;

    /// Commands go from ring to ring with the one reference that they have.
    class CommandRing : public VObjectRingBufferTmpl<VCommandTuple> {
      public:
        using VObjectRingBufferTmpl::PushAdopted;
        using VObjectRingBufferTmpl::VObjectRingBufferTmpl;
    };

    static bool Touch(VMessenger* source, int sourceId, VMessenger* target, int targetId);
    static ScopedConnection ConnectScoped(VMessageCenter* center, VMessenger* source, int sourceId,
                                          VMessenger* target, int targetId, VMessenger* function);
    template <class Fill>
    bool Post(Fill fill);
    bool Lose(std::atomic<long>& count);
    void ReturnToFree(VObjectRef<VCommandTuple>& command);
    void DropPending();
    void EndJob();
    static void EndServer(VJobServer& server, VMessageCenterJob const& job);
    void Service(VCommandTuple& command);
    void ReportLongService(VCommandTuple& command, double seconds) const;

    CommandRing m_pending;
    CommandRing m_free;
    detail::Mutex m_startLock; // held for their exchange only
    VObjectRef<VJobServer> m_server VFOUNDATION_GUARDED_BY(m_startLock);
    VObjectRef<VMessageCenterJob> m_job VFOUNDATION_GUARDED_BY(m_startLock);
    std::atomic<VCriticalSection*> m_criticalSection{nullptr};
    std::atomic<bool> m_accepting{true};
    std::atomic<bool> m_stopped{false};
    std::atomic<long> m_dropped{0};
    std::atomic<long> m_refused{0};
    std::atomic<long> m_slow{0};
    std::atomic<bool> m_tells{false};
    detail::Mutex m_tellLock;
    std::function<void()> m_tell VFOUNDATION_GUARDED_BY(m_tellLock);
};

/// For the handlers of a started centre: arithmetic rounds to the nearest, as in the rest of the program, until the
/// end of the scope.
class VFOUNDATION_API UsualRounding : public VFpuMode {
  public:
    UsualRounding() noexcept : VFpuMode(kToNearest) {}
};

} // namespace VFoundation
