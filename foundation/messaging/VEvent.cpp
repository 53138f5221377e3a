#include "foundation/messaging/VEvent.h"

#include "foundation/persistence/VXMLFile.h"

namespace VFoundation {

VClass* VEvent::ms_theClass = nullptr;

VEvent::VEvent(VClass* cls, int eventId) : Registered(cls), m_eventId(eventId) {
}

VEvent::~VEvent() = default;

VEvent* VEvent::New() {
    return new VEvent();
}

char const* VEvent::EventIDToText(int /*eventId*/) const {
    return "unknown";
}

int VEvent::TextToEventID(char const* /*text*/) const {
    return kUnknownID;
}

bool VEvent::SerializeAsXML(VXMLFile& file) {
    bool const result = VObject::SerializeAsXML(file);
    if (file.IsSaving()) {
        file.WriteAttribute("time", m_time);
        file.WriteAttribute("evID", EventIDToText(m_eventId));
    } else if (file.IsLoading()) {
        file.ReadAttribute("time", m_time);
        char const* text = nullptr;
        m_eventId = file.ReadAttribute("evID", text) ? TextToEventID(text) : kUnknownID;
    }
    return result;
}

} // namespace VFoundation
