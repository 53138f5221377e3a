#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"

#include <atomic>

namespace VFoundation {

class VNotification;

/// One registration at a `VNotificationCenter`: the observer, its callback, and the notifications it asked for.
///
/// Ownership: borrows the observer and the object; the object's address is compared, nothing more.
/// Threads: set up by one thread; then read by any, and ended by any.
class VFOUNDATION_API VNotificationTuple : public Registered<VNotificationTuple, VObject> {
  public:
    static constexpr char const* kClassName = "VNotificationTuple";
    static VClass* ms_theClass;
    using Callback = void (*)(VObject* observer, VNotification* notification);

    /// A registration without observer.
    explicit VNotificationTuple(VClass* cls = nullptr);
    VNotificationTuple(VNotificationTuple const&) = delete;
    VNotificationTuple& operator=(VNotificationTuple const&) = delete;
    ~VNotificationTuple() override;
    [[nodiscard]] static VNotificationTuple* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// A null name (copied) matches every name, a null object every object. `kept` is retained as long as the
    /// registration; it may be the observer.
    void Set(VObject* observer, Callback callback, VString const* name, VObject const* about,
             VObject* kept = nullptr);
    bool IsOf(VObject const* observer) const noexcept { return m_observer == observer; }
    bool Matches(VNotification const& notification) const;
    /// Calls the observer, unless the registration was ended.
    void Deliver(VNotification* notification) const;
    /// From here on nothing more is delivered; a call that is under way on another thread is not waited for.
    void End() noexcept { m_ended.store(true, std::memory_order_relaxed); }

  private:
    VObject* m_observer = nullptr;
    Callback m_callback = nullptr;
    VString m_name;
    bool m_anyName = true;
    VObject const* m_about = nullptr;
    VObjectRef<VObject> m_kept;
    std::atomic<bool> m_ended{false}; // relaxed: a call that is under way is not waited for
};

} // namespace VFoundation
