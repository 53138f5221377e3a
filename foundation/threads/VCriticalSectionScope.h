#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

class VCriticalSection;

/// Keeps a critical section entered until the end of a block, on every way out of it. A caller makes an empty
/// one and passes it to an accessor that enters its own lock into it:
///
///     VCriticalSectionScope scope;
///     VObject* const* objects = container->GetObjects(scope);   // locked until `scope` goes
///
/// DELIBERATE: null counts as entered; `SetAndEnter(nullptr)` leaves what was held and `IsEntered()` is true,
/// with nothing to leave.
///
/// Ownership: retains the section while it is held.
/// Threads: a scope belongs to one thread, and is never shared.
class VFOUNDATION_API VCriticalSectionScope {
  public:
    VCriticalSectionScope() noexcept = default;
    explicit VCriticalSectionScope(VCriticalSection* section) { SetAndEnter(section); }
    VCriticalSectionScope(VCriticalSectionScope const&) = delete;
    VCriticalSectionScope& operator=(VCriticalSectionScope const&) = delete;
    ~VCriticalSectionScope() {
        if (m_section) {
            LeaveAndRelease();
        }
    }

    /// Leaves what is held, then holds `section` and waits until it is entered.
    void SetAndEnter(VCriticalSection* section) {
        if (m_section || section) {
            Change(section);
        }
        m_entered = true;
    }

    /// Leaves what is held, then enters `section` if that takes at most so many milliseconds (as
    /// `VCriticalSection::TryCriticalSection` counts them). True when entered; else nothing is held.
    bool TryEnter(VCriticalSection* section, long milliseconds);

    bool IsEntered() const noexcept { return m_entered; }
    /// What is held, or null (borrowed).
    VCriticalSection* Section() const noexcept { return m_section; }

  private:
    void Change(VCriticalSection* section);
    void LeaveAndRelease();

    VCriticalSection* m_section = nullptr;
    bool m_entered = false;
};

} // namespace VFoundation
