#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/messaging/ScopedConnection.h"
#include "foundation/messaging/VNotificationTuple.h"

#include <atomic>
#include <functional>
#include <vector>

namespace VFoundation {

class VNotification;
class VString;

/// Tells observers what happens, by name and by the object that it happens to, so that neither side needs to
/// know the other. One centre serves the process: `DefaultCenter()`.
///
///     m_saved = center->Observe("DocumentSaved", document, [this](VNotification&) { Redraw(); });
///
/// or, with an observer that is an object and a function that gets it,
///
///     center->AddObserver(window, &Window::DocumentSaved, &documentSaved, document);
///     ...
///     center->RemoveObserver(window);          // before the window goes
///
/// Notifications are delivered at once, on the poster's thread, in the order of registration, to the observers
/// that are registered when the posting begins: one that is added meanwhile hears of the next one, and one that
/// is removed meanwhile is no longer called. An exception of an observer passes to the poster; the observers
/// after it are not called.
///
/// Ownership: borrows observers and objects: remove an observer before it goes. Names are copied. The default
/// centre is the class's; callers borrow it.
/// Threads: any thread may call any operation; no lock is held while observers are called. When
/// `RemoveObserver` returns, a call that another thread has begun may still be running. `DeleteDefaultCenter`
/// while no other thread uses that centre.
class VFOUNDATION_API VNotificationCenter : public Registered<VNotificationCenter, VObject> {
  public:
    static constexpr char const* kClassName = "VNotificationCenter";
    static VClass* ms_theClass;
    using Callback = VNotificationTuple::Callback;

    explicit VNotificationCenter(VClass* cls = nullptr);
    VNotificationCenter(VNotificationCenter const&) = delete;
    VNotificationCenter& operator=(VNotificationCenter const&) = delete;
    ~VNotificationCenter() override;
    [[nodiscard]] static VNotificationCenter* New();
    static void InitializeClass() {}
    /// Ends the default centre.
    static void UninitializeClass();

    /// Made on first use.
    static VNotificationCenter* DefaultCenter();
    static void DeleteDefaultCenter();

    /// Registers an observer for notifications of that name about that object; null matches any. Registered
    /// twice it is called twice. False without observer or callback, and when memory runs out.
    bool AddObserver(VObject* observer, Callback callback, VString const* name, VObject* about);
    /// Registers a function until the result goes, which waits for a call that is running. Null matches any. The
    /// result is empty for an empty function, and when memory runs out. It keeps the centre.
    using Function = std::function<void(VNotification&)>;
    [[nodiscard]] ScopedConnection Observe(char const* name, VObject* about, Function function);
    /// Ends all registrations of an observer.
    void RemoveObserver(VObject* observer);
    /// Delivers a notification to every observer that it concerns; nothing for null. May run out of memory, with
    /// nothing delivered.
    void PostNotification(VNotification* notification);

    static std::atomic<VNotificationCenter*> ms_defaultNotificationCenter;

  private:
    /// Not an object array: one that cannot grow throws a `VException`, whose line must not be written under a lock.
    using Registrations = std::vector<VObjectRef<VNotificationTuple>>;

    bool Register(VObject* observer, Callback callback, VString const* name, VObject* about, VObject* kept);
    VObjectRef<VNotificationTuple> TakeRegistrationOf(VObject* observer);

    detail::Mutex m_lock;
    Registrations m_registrations VFOUNDATION_GUARDED_BY(m_lock); // in order
};

} // namespace VFoundation
