#pragma once

#include "foundation/core/Registered.h"

#include <initializer_list>
#include <vector>

namespace VFoundation {

/// Takes classes out of the registry, all or none. Internal to the kernel; `UnregisterClasses` is its interface.
///
/// Ownership: a record stays the registry's until all are taken out; then they are freed.
/// Threads: any. No lock is held while a hook runs.
class ClassEnd {
  public:
    /// Throws `std::bad_alloc`. After that only hooks throw.
    explicit ClassEnd(std::initializer_list<VClass**> slots);
    /// Gives back what was claimed and not taken out.
    ~ClassEnd();
    ClassEnd(ClassEnd const&) = delete;
    ClassEnd& operator=(ClassEnd const&) = delete;

    UnregisterResult Run();

  private:
    struct Claimed {
        VClass* record;
        VClass::State before;
        bool isHookRun;
    };

    UnregisterResult Claim();
    UnregisterResult CheckSubclasses() const;
    UnregisterResult CheckInstances() const noexcept;
    bool HasHooks() const noexcept;
    void RunHooks();
    UnregisterResult TakeOut();
    void GiveBack() noexcept;
    void StartAgain();

    std::initializer_list<VClass**> m_slots;
    std::vector<Claimed> m_claimed; // a class before its superclass
};

} // namespace VFoundation
