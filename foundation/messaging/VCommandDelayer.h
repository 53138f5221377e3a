#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/log/VStopWatch.h"

#include <atomic>

namespace VFoundation {

class VCriticalSection;
class VMessage;
class VMessageCenter;
class VMessenger;

/// The base of classes that queue commands and service them later; it holds the timing. It queues nothing
/// itself: use a `VMessageCenter`.
///
/// The serviced flag says that nothing was queued since the last service began; a polling job services only
/// while it is clear. So that no command is forgotten, a service sets the flag before it looks at the queue,
/// and a post clears it after the push (`PushThenMark`).
///
/// Ownership: by reference count. Borrows the critical section.
/// Threads: posting and the flags from any thread; servicing by one thread at a time.
class VFOUNDATION_API VCommandDelayer : public Registered<VCommandDelayer, VObject> {
  public:
    static constexpr char const* kClassName = "VCommandDelayer";
    static VClass* ms_theClass;
    /// Seconds.
    static constexpr double kServiceInterval = 0.1;

    explicit VCommandDelayer(VClass* cls = nullptr);
    VCommandDelayer(VCommandDelayer const&) = delete;
    VCommandDelayer& operator=(VCommandDelayer const&) = delete;
    ~VCommandDelayer() override;
    [[nodiscard]] static VCommandDelayer* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// What `VMessageCenter` says; the base versions queue nothing, connect nothing and return false, 0 or
    /// null.
    virtual bool MessageDelay(VMessenger* target, VMessage* message);
    /// The base version notes the time of service.
    virtual long SendDelayedCommands();
    virtual VCriticalSection* GetCriticalSection();
    virtual void SetCriticalSection(VCriticalSection* section);
    virtual void StartCenter(char const* name, long sleepMilliseconds);
    virtual void StopCenter();
    virtual long CommandCountMin();
    virtual bool ConnectDelayed(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                                int targetId);
    virtual bool DisconnectDelayed(VMessenger* source, int sourceId, VMessageCenter* center,
                                   VMessenger* target, int targetId);
    virtual bool ConnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center,
                                  VMessenger* target, int targetId);
    virtual bool DisconnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center,
                                     VMessenger* target, int targetId);
    virtual bool ReconnectImmediate(VMessenger* source, int sourceId, VMessageCenter* center,
                                    VMessenger* target, int targetId);

    bool Serviced() const noexcept { return m_serviced.load(); }
    void SetServiced(bool serviced) noexcept { m_serviced.store(serviced); }

    /// When the last service began, and how long to wait until the next: seconds on the delayer's clock.
    double LastServiceTime() const noexcept { return m_lastServiceTime.load(std::memory_order_relaxed); }
    double ServiceInterval() const noexcept { return kServiceInterval; }
    /// True when more than the interval has passed.
    bool IsServiceDue() const;

  protected:
    /// Queues a command by `push`, and if that is true clears the serviced flag after it: a service already under
    /// way either sees the command or leaves it to the next.
    template <class Push>
    bool PushThenMark(Push push) {
        bool const pushed = push();
        if (pushed && Serviced()) {
            SetServiced(false);
        }
        return pushed;
    }

    /// Times commands, by the difference of two readings: a handler may service others while it is timed itself.
    VStopWatch m_serviceStopWatch{true};

  private:
    std::atomic<bool> m_serviced{false};
    VStopWatch m_clock{true};
    std::atomic<double> m_lastServiceTime{0}; // relaxed: a number of its own
};

} // namespace VFoundation
