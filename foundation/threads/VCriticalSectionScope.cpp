#include "foundation/threads/VCriticalSectionScope.h"

#include "foundation/threads/VCriticalSection.h"

namespace VFoundation {

void VCriticalSectionScope::Change(VCriticalSection* section) {
    if (section) {
        section->Retain(); // before the release below: it may be the same section, with no other reference
    }
    LeaveAndRelease();
    m_section = section;
    if (section) {
        section->EnterCriticalSection();
    }
}

bool VCriticalSectionScope::TryEnter(VCriticalSection* section, long milliseconds) {
    if (section) {
        section->Retain();
    }
    LeaveAndRelease();
    if (section && !section->TryCriticalSection(milliseconds)) {
        section->Release();
        return false;
    }
    m_section = section;
    m_entered = true;
    return true;
}

void VCriticalSectionScope::LeaveAndRelease() {
    VCriticalSection* const section = m_section;
    m_section = nullptr;
    bool const entered = m_entered;
    m_entered = false;
    if (section) {
        if (entered) {
            section->LeaveCriticalSection();
        }
        section->Release();
    }
}

} // namespace VFoundation
