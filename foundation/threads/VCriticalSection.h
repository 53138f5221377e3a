#pragma once

#include "foundation/core/Registered.h"

#include <pthread.h>

namespace VFoundation {

/// A re-entrant lock: the thread that holds it may enter again, and leaves as often as it entered. Containers
/// and the log own one each. Hold it through a `VCriticalSectionScope`, which leaves on every way out of a
/// block; where another thread may have to let go, use a `VLock`.
///
/// |           | free  | held by this thread | held by another thread                                |
/// |-----------|-------|---------------------|-------------------------------------------------------|
/// | Enter     | holds | holds once more     | waits                                                 |
/// | Try(ms)   | true  | true, once more     | waits at most so long; true when it got the section   |
/// | Leave     | error | one entry less      | error; nothing changes                                |
///
/// Ownership: by reference count. Nobody may hold the section when its last reference goes.
/// Threads: any thread may call any operation. All are const, so that const accessors can lock.
class VCriticalSection : public Registered<VCriticalSection, VObject> {
  public:
    static constexpr char const* kClassName = "VCriticalSection";
    static VClass* ms_theClass;

    explicit VCriticalSection(VClass* cls = nullptr);
    VCriticalSection(VCriticalSection const&) = delete;
    VCriticalSection& operator=(VCriticalSection const&) = delete;
    ~VCriticalSection() override;
    static VCriticalSection* New();

    /// Waits until the section is this thread's. 0, or the system's error number.
    long EnterCriticalSection() const;
    /// Waits at most so many milliseconds; true when entered. -1 waits for ever, 0 and other negatives do not
    /// wait. The wait follows the system's calendar clock, so setting that clock moves its end.
    bool TryCriticalSection(long milliseconds) const;
    /// Undoes one entry of this thread. 0, or the system's error number when the thread holds none.
    long LeaveCriticalSection() const;

  private:
    bool EnterIfFree() const;
    bool EnterWithin(long milliseconds) const;

    mutable pthread_mutex_t m_region;
};

} // namespace VFoundation
