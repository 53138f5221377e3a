#include "foundation/threads/VJob.h"

#include "foundation/strings/VString.h"

namespace VFoundation {

VClass* VJob::ms_theClass = nullptr;

VJob::VJob(VObject* description, IVJobDelegate* delegate, VClass* cls)
    : Registered(cls), m_delegate(delegate), m_description(description) {
}

VJob::~VJob() = default;

void VJob::Init(VObject* description, IVJobDelegate* delegate, int priority) {
    m_userValue = 0;
    m_active.store(false, std::memory_order_relaxed);
    m_queued.store(false, std::memory_order_relaxed);
    SetUserFlag(false);
    SetDescription(description);
    SetDelegate(delegate);
    m_priority = priority;
}

void VJob::StartedJob() {
    m_active.store(true, std::memory_order_relaxed);
    SetUserFlag(false);
}

void VJob::FinishedJob() {
    m_active.store(false, std::memory_order_relaxed);
    m_queued.store(false, std::memory_order_relaxed);
}

void VJob::GetDescription(VString& out) const {
    VObject::GetDescription(out);
    VObject const* const description = m_description.Get();
    if (!description) {
        return;
    }
    out << ' ';
    if (description->IsKindOfClass(VString::TheClass())) {
        out << static_cast<VString const*>(description)->CString();
    } else {
        out << description->Description().CString();
    }
}

} // namespace VFoundation
