#pragma once

#include "foundation/threads/VCriticalSection.h"

namespace VFoundation {

/// Holds a container's lock for one operation; null holds nothing. So does an operation that another one of the same
/// container calls, as that one holds the lock until it is over.
///
/// Destructors of elements run with the lock of their container held, and may use other containers. So that two
/// containers whose elements use each other do not wait for each other, an operation that would have to wait first
/// leaves the locks of containers that are only releasing elements on this thread (`Releasing`): they have given these
/// up already and are whole. It enters them again when it is over. Locks that were entered by other means, as a
/// caller's scope is, stay entered.
///
/// Ownership: retains the lock.
/// Threads: lives on the stack of one thread.
class ContainerLock {
  public:
    explicit ContainerLock(VCriticalSection* section)
        : m_section(section && !IsHeldByInnermost(section) ? section : nullptr) {
        if (m_section) {
            Enter();
        }
    }
    ContainerLock(ContainerLock const&) = delete;
    ContainerLock& operator=(ContainerLock const&) = delete;
    ~ContainerLock() {
        if (m_section) {
            Leave();
        }
    }

    /// Says for a scope that the container with this lock releases elements which it no longer holds.
    class Releasing {
      public:
        explicit Releasing(VCriticalSection const* section) noexcept;
        Releasing(Releasing const&) = delete;
        Releasing& operator=(Releasing const&) = delete;
        ~Releasing();

      private:
        friend class ContainerLock;

        VCriticalSection const* const m_section;
        Releasing const* const m_outer;
    };

  private:
    static bool IsHeldByInnermost(VCriticalSection const* section) noexcept {
        return s_innermost && s_innermost->m_section == section && !s_innermost->m_leftFor;
    }
    void Enter();
    void Leave();
    void LeaveOthers() noexcept;
    void EnterOthers() noexcept;
    static bool IsReleasing(VCriticalSection const* section) noexcept;

    static constinit thread_local ContainerLock* s_innermost;
    static constinit thread_local Releasing const* s_releasing;

    VCriticalSection* const m_section;
    ContainerLock* m_outer = nullptr;         // the next lock of this thread
    ContainerLock const* m_leftFor = nullptr; // the operation that it was left for
};

} // namespace VFoundation
