#include "foundation/threads/VCriticalSection.h"

namespace VFoundation {

VClass* VCriticalSection::ms_theClass = nullptr;

VCriticalSection* VCriticalSection::New() {
    return new VCriticalSection();
}

bool VCriticalSection::TryCriticalSection(long milliseconds) const {
    if (EnterIfFree()) {
        return true;
    }
    if (milliseconds == -1) {
        return EnterCriticalSection() == 0;
    }
    return milliseconds > 0 && EnterWithin(milliseconds);
}

} // namespace VFoundation
