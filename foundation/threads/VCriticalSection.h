#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

/// A re-entrant lock: the thread that holds it may enter again, and leaves as often as it entered. Containers
/// and the log own one each. Hold it through a `VCriticalSectionScope`, which leaves on every way out of a
/// block; where another thread may have to unlock, use a `VLock`.
///
/// |           | free  | held by this thread | held by another thread                                |
/// |-----------|-------|---------------------|-------------------------------------------------------|
/// | Enter     | holds | holds once more     | waits                                                 |
/// | Try(ms)   | true  | true, once more     | waits at most so long; true when it got the section   |
/// | Leave     | error | one entry less      | error; nothing changes                                |
///
/// Ownership: by reference count. No thread may hold the section when its last reference goes.
/// Threads: any thread may call any operation. All are const, so that const accessors can lock.
class VFOUNDATION_API VCriticalSection : public Registered<VCriticalSection, VObject> {
  public:
    static constexpr char const* kClassName = "VCriticalSection";
    static VClass* ms_theClass;

    explicit VCriticalSection(VClass* cls = nullptr) : Registered(cls) {}
    VCriticalSection(VCriticalSection const&) = delete;
    VCriticalSection& operator=(VCriticalSection const&) = delete;
    ~VCriticalSection() override = default;
    static VCriticalSection* New();

    /// Waits until the section is this thread's. 0, or the system's error number.
    long EnterCriticalSection() const;
    /// Waits at most so many milliseconds; true when entered. -1 waits forever, 0 and other negatives do not
    /// wait. Setting the calendar clock does not move the end of a wait.
    bool TryCriticalSection(long milliseconds) const;
    /// Undoes one entry of this thread. 0, or the system's error number when the thread holds none.
    long LeaveCriticalSection() const;

  private:
    mutable std::atomic<std::uint32_t> m_word{0};
    // The thread's id; 0 without one. relaxed: a thread only looks for its own id.
    mutable std::atomic<std::uintptr_t> m_owner{0};
    mutable std::int64_t m_entries = 0; // the owner's
};

} // namespace VFoundation
