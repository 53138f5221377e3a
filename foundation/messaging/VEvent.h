#pragma once

#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstdint>

namespace VFoundation {

/// Something that happened: an id and a time. A subclass gives its ids names, by which files know them:
///
///     char const* EventIDToText(int id) const override { return id == kMouseDown ? "mouse_down" : "unknown"; }
///     int TextToEventID(char const* text) const override;
///
/// In XML an event has the attributes "time" and "evID".
///
/// DELIBERATE: files hold names, never numbers; an event of this class, whose ids have none, is read back
/// with -1.
///
/// Ownership: retains its object.
/// Threads: one thread at a time.
class VEvent : public Registered<VEvent, VObject> {
  public:
    static constexpr char const* kClassName = "VEvent";
    static VClass* ms_theClass;
    static constexpr int kUnknownID = -1;

    explicit VEvent(VClass* cls = nullptr, int eventId = 0);
    VEvent(VEvent const&) = delete;
    VEvent& operator=(VEvent const&) = delete;
    ~VEvent() override;
    static VEvent* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    int GetEventID() const noexcept { return m_eventId; }
    int EventID() const noexcept { return m_eventId; }
    void SetEventID(int eventId) noexcept { m_eventId = eventId; }
    /// Seconds; from when is for the application to say. 0 at first.
    double Time() const noexcept { return m_time; }
    void SetTime(double seconds) noexcept { m_time = seconds; }
    /// An object kept for as long as the event.
    VObject* Object() const noexcept { return m_object.Get(); }
    void SetObject(VObject* object) { m_object.Exchange(object); }

    /// Never null; "unknown" for an id without a name.
    virtual char const* EventIDToText(int eventId) const;
    /// -1 for a text that is no name.
    virtual int TextToEventID(char const* text) const;

    /// What the base version returns.
    bool SerializeAsXML(VXMLFile& file) override;

  private:
    std::int32_t m_eventId;
    VObjectRef<VObject> m_object;
    double m_time = 0.0;
};

} // namespace VFoundation
