#include "foundation/persistence/IAIFile.h"

#include "foundation/core/VObject.h"

namespace VFoundation {

IAIFile& IAIFile::operator<<(VObject& object) {
    object.Serialize(*this);
    return *this;
}

IAIFile& IAIFile::operator>>(VObject& object) {
    object.Serialize(*this);
    return *this;
}

} // namespace VFoundation
