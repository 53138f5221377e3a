#include "foundation/containers/VDictionaryPair.h"

#include "foundation/log/VLog.h"
#include "foundation/persistence/VXMLFile.h"

namespace VFoundation {

VClass* VDictionaryPair::ms_theClass = nullptr;

VDictionaryPair::VDictionaryPair(VClass* cls) : Registered(cls) {
}

VDictionaryPair::~VDictionaryPair() = default;

bool VDictionaryPair::SerializeAsXML(VXMLFile& file) {
    constexpr char const* kReporter = "VDictionaryPair::SerializeAsXML";
    VObject::SerializeAsXML(file);
    if (file.IsSaving()) {
        bool const hasKey = file.SerializeObject(nullptr, m_key.Get());
        return file.SerializeObject(nullptr, m_value.Get()) && hasKey && file.IsComplete();
    }
    if (!file.OpenFirstChildElement(nullptr)) {
        VLog::Trace("%s - Error opening first child element\n", kReporter);
        file.NoteLoss(LoadReport::kNotMade, "key and value");
        return true;
    }
    m_key = VObjectRef<VObject>::Adopt(file.CreateObjectHere(kReporter));
    bool const hasValue = file.OpenNextSiblingElement(nullptr);
    if (hasValue) {
        m_value = VObjectRef<VObject>::Adopt(file.CreateObjectHere(kReporter));
    } else {
        VLog::Trace("%s - Error opening second child element\n", kReporter);
    }
    file.CloseChild();
    if (!hasValue) {
        file.NoteLoss(LoadReport::kNotMade, "value");
    }
    return true;
}

} // namespace VFoundation
