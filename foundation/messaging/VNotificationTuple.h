#pragma once

#include "foundation/core/Registered.h"
#include "foundation/strings/VString.h"

#include <atomic>

namespace VFoundation {

class VNotification;

/// One registration at a notification centre. The centre makes them; a client has no use for one.
///
/// Ownership: borrows the observer and the object that it wants to hear of; copies the name.
/// Threads: set up by one thread before it is shared; ended and matched by any.
class VNotificationTuple : public Registered<VNotificationTuple, VObject> {
  public:
    static constexpr char const* kClassName = "VNotificationTuple";
    static VClass* ms_theClass;
    using Handler = void (*)(VObject* observer, VNotification* notification);

    /// One that matches nothing.
    explicit VNotificationTuple(VClass* cls = nullptr);
    VNotificationTuple(VNotificationTuple const&) = delete;
    VNotificationTuple& operator=(VNotificationTuple const&) = delete;
    ~VNotificationTuple() override;
    static VNotificationTuple* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// Null for `name` and `about` matches any.
    void Set(VObject* observer, Handler handler, VString const* name, VObject* about);
    /// Nothing is delivered from now on.
    void End() noexcept { m_observer.store(nullptr); }
    VObject* Observer() const noexcept { return m_observer.load(); }
    bool Matches(VNotification const& notification) const;
    /// Calls the handler unless the registration has ended.
    void Deliver(VNotification* notification) const;

  private:
    std::atomic<VObject*> m_observer{nullptr};
    Handler m_handler = nullptr;
    bool m_anyName = true;
    VString m_name;
    VObject* m_about = nullptr;
};

} // namespace VFoundation
