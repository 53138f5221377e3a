#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/messaging/INotification.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/SValue.h"

namespace VFoundation {

class VDictionary;

/// An announcement to all observers of a name: the name, the object that it is about, and what else they should
/// know. A `VNotificationCenter` delivers it.
///
///     auto const news = MakeObject<VNotification>();
///     news->SetName(VString("DocumentSaved"));
///     news->SetObject(document);
///     VNotificationCenter::DefaultCenter()->PostNotification(news.Get());
///
/// Ownership: retains the objects, copies name and value.
/// Threads: one thread at a time; do not change a notification while it is posted.
class VFOUNDATION_API VNotification : public INotification, public Registered<VNotification, VObject> {
  public:
    static constexpr char const* kClassName = "VNotification";
    static VClass* ms_theClass;

    /// Without name, objects and value.
    explicit VNotification(VClass* cls = nullptr);
    VNotification(VNotification const&) = delete;
    VNotification& operator=(VNotification const&) = delete;
    ~VNotification() override;
    [[nodiscard]] static VNotification* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    VString const& Name() const noexcept { return m_name; }
    void SetName(VString const& name);
    /// What the notification is about, or null.
    VObject* Object() const noexcept { return m_object.Get(); }
    void SetObject(VObject* object) { m_object.Exchange(object); }
    SValue const& UserVal() const noexcept { return m_userVal; }
    void SetUserVal(SValue const& value) { m_userVal = value; }
    VDictionary* UserInfo() const noexcept { return m_userInfo.Get(); }
    void SetUserInfo(VDictionary* info);
    /// One more object for the poster's use, or null.
    VObject* Attachment() const noexcept { return m_attachment.Get(); }
    void SetAttachment(VObject* object) { m_attachment.Exchange(object); }

  private:
    VString m_name;
    VObjectRef<VObject> m_object;
    SValue m_userVal;
    VObjectRef<VDictionary> m_userInfo;
    VObjectRef<VObject> m_attachment;
};

} // namespace VFoundation
