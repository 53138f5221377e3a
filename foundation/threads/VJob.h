#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <atomic>
#include <concepts>
#include <cstdint>

namespace VFoundation {

class IVJobDelegate;

/// One piece of work for a `VJobServer`. Derive from it and write `DoJob`:
///
///     class Import : public Registered<Import, VJob> {
///       public:
///         static constexpr char const* kClassName = "Import";
///         static VClass* ms_theClass;
///         static constexpr bool kIsAbstract = true;               // or a New()
///         explicit Import(IVJobDelegate* delegate) : Registered(nullptr, nullptr, delegate) {}
///         bool DoJob() override;                                  // true: succeeded
///         double JobProgress() override { return m_done; }
///         bool AbortJob() override;                               // ask DoJob to return early
///     };
///
/// Set priority and delegate before the job is queued. A job may be queued again once it has run.
///
/// Ownership: retains its description object; borrows its delegate. A server retains the job until it has
/// run.
/// Threads: `DoJob` runs on the server's thread, `AbortJob` and `JobProgress` are called by others meanwhile.
/// Flags and times may be read by any thread.
class VFOUNDATION_API VJob : public Registered<VJob, VObject> {
  public:
    static constexpr char const* kClassName = "VJob";
    static VClass* ms_theClass;
    static constexpr bool kIsAbstract = true;

    /// Priority 0. Both pointers may be null.
    VJob(VObject* description, IVJobDelegate* delegate, VClass* cls = nullptr);
    VJob(VJob const&) = delete;
    VJob& operator=(VJob const&) = delete;
    ~VJob() override;

    /// Prepares the job for another use: clears the user value and the flags and replaces the rest. The times
    /// stay.
    void Init(VObject* description, IVJobDelegate* delegate, int priority);

    /// The work; true when it succeeded.
    virtual bool DoJob() = 0;
    /// How much of the work is done, 0 to 1.
    virtual double JobProgress() = 0;
    /// Asks a running job to return from `DoJob` early, and may wait until it has. The library does not look at
    /// the result.
    virtual bool AbortJob() = 0;
    /// Called by the server before and after the job; overrides call the base version.
    virtual void StartedJob();
    virtual void FinishedJob();

    /// "[<class name>]", then the description: a string's text, or what another object says of itself.
    void GetDescription(VString& out) const override;
    VObject* GetDescriptionObject() const noexcept { return m_description.Get(); }
    void SetDescription(VObject* description) { m_description.Exchange(description); }

    IVJobDelegate* Delegate() const noexcept { return m_delegate.load(); }
    void SetDelegate(IVJobDelegate* delegate) noexcept { m_delegate.store(delegate); }

    /// Higher runs first.
    int Priority() const noexcept { return m_priority; }

    /// A number for the job's owner, which the library does not read.
    long UserValue() const noexcept { return m_userValue; }
    void SetUserValue(long value) noexcept { m_userValue = narrow_cast<std::int32_t>(value); }
    /// A flag for the job's owner, which the library clears when the job starts and does not read.
    bool UserFlag() const noexcept { return m_userFlag.load(std::memory_order_relaxed); }
    void SetUserFlag(bool flag) noexcept { m_userFlag.store(flag, std::memory_order_relaxed); }

    /// True between `StartedJob` and `FinishedJob`.
    bool IsActive() const noexcept { return m_active.load(std::memory_order_relaxed); }
    /// True from a successful `AddJob` to `FinishedJob`; a job thrown out by `KillAllJobs` stays so.
    bool IsQueued() const noexcept { return m_queued.load(std::memory_order_relaxed); }

    /// Seconds since the server's thread was started; 0 until the event. A job that is queued while no thread
    /// runs keeps its time.
    double QueuedTime() const noexcept { return m_queuedTime.load(std::memory_order_relaxed); }
    double StartTime() const noexcept { return m_startTime.load(std::memory_order_relaxed); }
    double EndTime() const noexcept { return m_endTime.load(std::memory_order_relaxed); }

  protected:
    /// For `Registered` subclasses. A template, so that a literal null is never taken for a class record.
    template <std::same_as<VClass> Record>
    explicit VJob(Record* cls, VObject* description = nullptr, IVJobDelegate* delegate = nullptr)
        : VJob(description, delegate, cls) {}

  private:
    friend class VJobPool;
    friend class VJobServer;

    std::atomic<IVJobDelegate*> m_delegate;
    VObjectRef<VObject> m_description;
    std::int32_t m_userValue = 0;
    // relaxed: times and flags to look at; the queue hands over the job itself
    std::atomic<double> m_queuedTime{0};
    std::atomic<double> m_startTime{0};
    std::atomic<double> m_endTime{0};
    std::atomic<bool> m_active{false};
    std::atomic<bool> m_queued{false};
    std::atomic<bool> m_userFlag{false};
    std::int32_t m_priority = 0;
};

} // namespace VFoundation
