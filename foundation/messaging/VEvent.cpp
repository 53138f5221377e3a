#include "foundation/messaging/VEvent.h"

#include "foundation/persistence/VXMLFile.h"

namespace VFoundation {

VClass* VEvent::ms_theClass = nullptr;

namespace {

constexpr char const* kUnknown = "unknown";
constexpr char const* kTimeAttribute = "time";
constexpr char const* kEventIDAttribute = "evID";

} // namespace

VEvent::VEvent(VClass* cls, int eventID) : Registered(cls), m_eventID(eventID) {
}

VEvent::~VEvent() = default;

VEvent* VEvent::New() {
    return new VEvent();
}

char const* VEvent::EventIDToText(int /*eventID*/) const {
    return kUnknown;
}

int VEvent::TextToEventID(char const* /*text*/) const {
    return kNoEventID;
}

bool VEvent::SerializeAsXML(VXMLFile& file) {
    bool const result = VObject::SerializeAsXML(file);
    if (file.IsSaving()) {
        char const* const text = EventIDToText(m_eventID);
        file.WriteAttribute(kTimeAttribute, m_time);
        file.WriteAttribute(kEventIDAttribute, text ? text : kUnknown);
    } else if (file.IsLoading()) {
        char const* text = nullptr;
        file.ReadAttribute(kTimeAttribute, m_time);
        m_eventID = file.ReadAttribute(kEventIDAttribute, text) ? TextToEventID(text) : kNoEventID;
    }
    return result;
}

} // namespace VFoundation
