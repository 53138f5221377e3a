#include "foundation/core/VObject.h"

#include "foundation/core/Registered.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VThread.h"

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

std::recursive_mutex& ClassCreationLock() noexcept {
    static constinit std::recursive_mutex lock;
    return lock;
}

VObject::VObject(VClass* cls) : m_class(cls ? cls : TheClass()) {
    m_class->InstanceBorn();
    VObject__CheckIsNotForbiddenThreadID_Release();
}

VObject::~VObject() {
    VObject__CheckIsNotForbiddenThreadID_Release();
    if (!ms_finalShutdown.load(std::memory_order_relaxed)) {
        m_class->InstanceGone();
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
    if (cls && !cls->IsDetached()) {
        return cls;
    }
    std::lock_guard const lock(ClassCreationLock());
    cls = LoadClassSlot(ms_theClass);
    if (cls) {
        if (cls->IsDetached()) {
            cls->Reattach(nullptr);
        }
        return cls;
    }
    // Entering the record in the registry makes objects, which come back here; they find the slot filled.
    cls = new VClass(kClassName, nullptr, nullptr, 1, nullptr, nullptr, sizeof(VObject), &ms_theClass);
    ms_finalShutdown = false;
    return cls;
}

void VObject::InitializeVObject() {
    ms_finalShutdown = false;
}

void VObject::UninitializeVObject() {
    ms_finalShutdown = true;
    VClass::Retire(LoadClassSlot(ms_theClass));
}

} // namespace VFoundation
