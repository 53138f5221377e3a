#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstdint>

namespace VFoundation {

/// Something that happened: which kind of event, and when. Derive from it and translate the ids of your
/// events, which stand in XML by name:
///
///     char const* EventIDToText(int id) const override { return id == kSaved ? "saved" : "unknown"; }
///     int TextToEventID(char const* text) const override;
///
/// In XML an event is the attributes "time" and "evID"; the source is not written.
///
/// DELIBERATE: ids are never written as numbers; an id without a name, and every id of a plain `VEvent`, is
/// written as "unknown" and reads back as -1.
///
/// Ownership: retains the source.
/// Threads: one thread at a time.
class VFOUNDATION_API VEvent : public Registered<VEvent, VObject> {
  public:
    static constexpr char const* kClassName = "VEvent";
    static VClass* ms_theClass;
    static constexpr int kNoEventID = -1;

    explicit VEvent(VClass* cls = nullptr, int eventID = 0);
    VEvent(VEvent const&) = delete;
    VEvent& operator=(VEvent const&) = delete;
    ~VEvent() override;
    [[nodiscard]] static VEvent* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    int GetEventID() const noexcept { return m_eventID; }
    /// The same as `GetEventID`.
    int EventID() const noexcept { return m_eventID; }
    void SetEventID(int eventID) noexcept { m_eventID = eventID; }

    /// Seconds since a moment that the application chooses; 0 at first.
    double Time() const noexcept { return m_time; }
    void SetTime(double seconds) noexcept { m_time = seconds; }

    /// The object that the event comes from, or null.
    VObject* Source() const noexcept { return m_source.Get(); }
    void SetSource(VObject* source) { m_source.Exchange(source); }

    /// The name of an id, "unknown" for one without a name; the id of a name, -1 for one that is none.
    virtual char const* EventIDToText(int eventID) const;
    virtual int TextToEventID(char const* text) const;

    /// An absent "time" leaves the time alone, an absent "evID" reads as -1. True when loading.
    bool SerializeAsXML(VXMLFile& file) override;

  private:
    std::int32_t m_eventID;
    VObjectRef<VObject> m_source;
    double m_time = 0.0;
};

} // namespace VFoundation
