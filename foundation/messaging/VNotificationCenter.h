#pragma once

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/Registered.h"
#include "foundation/messaging/VNotificationTuple.h"

#include <atomic>
#include <mutex>

namespace VFoundation {

class VNotification;
class VString;

/// Broadcasts notifications to whoever has asked for them by name, by object, by both, or for all. Delivery
/// is at once, on the poster's thread, in the order of registration.
///
///     void OnSaved(VObject* observer, VNotification* notification);
///     VNotificationCenter::DefaultCenter()->AddObserver(window, &OnSaved, &savedName, nullptr);
///     ...
///     VNotificationCenter::DefaultCenter()->RemoveObserver(window);   // before the window goes
///
/// Handlers may add and remove observers, themselves included, and post. What was added during a post hears
/// of the next one; what was removed is not called any more. Registering twice delivers twice.
///
/// Ownership: borrows observers and the objects they ask for: remove an observer before it dies.
/// Threads: any thread may call any operation; no lock is held while handlers run. When `RemoveObserver`
/// returns, a handler that another thread had begun to call may still be running.
class VNotificationCenter : public Registered<VNotificationCenter, VObject> {
  public:
    static constexpr char const* kClassName = "VNotificationCenter";
    static VClass* ms_theClass;
    using Handler = VNotificationTuple::Handler;

    explicit VNotificationCenter(VClass* cls = nullptr);
    VNotificationCenter(VNotificationCenter const&) = delete;
    VNotificationCenter& operator=(VNotificationCenter const&) = delete;
    ~VNotificationCenter() override;
    static VNotificationCenter* New();
    static void InitializeClass() {}
    /// Ends the default centre.
    static void UninitializeClass();

    /// The centre of the process (borrowed); made on first use.
    static VNotificationCenter* DefaultCenter();
    static void DeleteDefaultCenter();

    /// `handler(observer, notification)` is called for each notification of that name about that object; null
    /// for either means any. Nothing happens when observer or handler is null.
    void AddObserver(VObject* observer, Handler handler, VString const* name, VObject* about);
    /// Ends all registrations of the observer.
    void RemoveObserver(VObject* observer);
    /// Nothing happens for null.
    void PostNotification(VNotification* notification);

    static std::atomic<VNotificationCenter*> ms_defaultNotificationCenter;

  private:
    mutable std::mutex m_lock;
    VObjectArrayTmpl<VNotificationTuple> m_registrations;
};

} // namespace VFoundation
