#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/Snapshot.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/VXMLFile.h"

namespace VFoundation {

bool VObjectArray::SerializeAsXML(VXMLFile& file) {
    VObject::SerializeAsXML(file);
    long count = Count();
    if (file.IsSaving()) {
        bool isWhole = file.WriteAttribute("count", count);
        for (VObject* const element : Snapshot(*this)) {
            isWhole = (!element || file.SerializeObject(nullptr, element)) && isWhole;
        }
        return isWhole && file.IsComplete();
    }
    RemoveAllObjects();
    bool const hasCount = file.ReadAttribute("count", count);
    if (!hasCount) {
        VLog::Trace("VObjectArray::SerializeAsXML - Attribute 'count' not found\n");
    }
    if (file.OpenFirstChildElement(nullptr)) {
        do {
            auto const object =
                VObjectRef<VObject>::Adopt(file.CreateObjectHere("VObjectArray::SerializeAsXML"));
            if (object) {
                AddObject(object.Get());
            }
        } while (file.OpenNextSiblingElement(nullptr));
        file.CloseChild();
    }
    if (hasCount) {
        file.NoteCount(count, Count());
    }
    return true;
}

} // namespace VFoundation
