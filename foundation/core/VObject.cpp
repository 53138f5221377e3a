#include "foundation/core/VObject.h"

#include "foundation/core/Registered.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/core/internal/LeakNotes.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VThread.h"

#include <cstdio>

namespace VFoundation {

VClass* VObject::ms_theClass = nullptr;
std::atomic<bool> VObject::ms_finalShutdown{false};

namespace {

/// The hook at which a build that forbids objects on a given thread would assert; this build only asks the
/// id.
// NOLINTNEXTLINE(readability-identifier-naming)
inline void VObject__CheckIsNotForbiddenThreadID_Release() {
    (void)VThread::GetCurrentThreadID();
}

} // namespace

VObject::VObject(VClass* cls) : m_class(cls ? cls : TheClass()) {
    m_class->InstanceBorn();
    VObject__CheckIsNotForbiddenThreadID_Release();
    if constexpr (LeakNotes::kAreTaken) {
        LeakNotes::NoteBorn(this, m_class);
    }
}

VObject::~VObject() {
    VObject__CheckIsNotForbiddenThreadID_Release();
    if constexpr (LeakNotes::kAreTaken) {
        LeakNotes::NoteGone(this, m_class);
        if (long const count = RetainCount(); count > 1) { // a local or a member has its maker's reference
            std::fprintf(stderr, "[%s] destroyed while %li others hold it\n", ClassName(), count - 1);
        }
    }
    if (ms_finalShutdown.load(std::memory_order_relaxed) ? m_class->InstanceGoneUncounted()
                                                         : m_class->InstanceGone()) {
        ClassRegistry::FreeSetAside(m_class);
    }
}

void VObject::Retain() const {
    VAtomicOp::AddToCount(m_count, 1);
}

void VObject::Release() const {
    if ((VAtomicOp::AddToCount(m_count, -1) & kRetainCountMask) == 0) {
        DeleteInstance();
    }
}

void VObject::DeleteInstance() const {
    delete this;
}

VObject* VObject::Copy() const {
    return m_class->NewInstance();
}

bool VObject::Serialize(IAIFile& file) {
    return file.IsLoading();
}

bool VObject::SerializeAsXML(VXMLFile& file) {
    return file.IsLoading();
}

VString VObject::Description() const {
    VString text;
    GetDescription(text);
    return text;
}

void VObject::GetDescription(VString& out) const {
    out.Format("[%s]", ClassName());
}

unsigned long VObject::Hash() const {
    return reinterpret_cast<unsigned long>(this);
}

bool VObject::IsEqual(VObject const& other) const {
    return Hash() == other.Hash();
}

char const* VObject::ClassName() const {
    return m_class->Name();
}

bool VObject::IsKindOfClass(VClass const* cls) const {
    return m_class ? m_class->IsSubClassOfClass(cls) : cls == nullptr;
}

VClass* VObject::TheClass() {
    VClass* cls = LoadClassSlot(ms_theClass);
    if (cls && cls->IsReady()) {
        return cls;
    }
    bool const isMade = cls == nullptr;
    cls = detail::ReadyClass({kClassName, nullptr, nullptr, nullptr, nullptr, sizeof(VObject), &ms_theClass});
    if (isMade) {
        ms_finalShutdown = false;
    }
    return cls;
}

void VObject::InitializeVObject() {
    ms_finalShutdown = false;
}

void VObject::UninitializeVObject() {
    ms_finalShutdown = true;
    ClassRegistry::Retire(LoadClassSlot(ms_theClass));
}

} // namespace VFoundation
