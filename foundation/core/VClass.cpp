#include "foundation/core/VClass.h"

#include "foundation/containers/VPtrArray.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VException.h"
#include "foundation/core/VMemoryProfiler.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/VThread.h"

#include <cstring>
#include <map>
#include <string>
#include <utility>

namespace VFoundation {

namespace {

VClass* s_classVClass = nullptr;
std::map<std::string, VClass*>* s_substitutions = nullptr;

std::map<std::string, VClass*>& Substitutions() {
    if (!s_substitutions) {
        s_substitutions = new std::map<std::string, VClass*>;
    }
    return *s_substitutions;
}

} // namespace

VClass::VClass(char const* name, VClass* superClass, Factory factory, long version, Hook initialize,
               Hook uninitialize, unsigned long size, VClass** backPointer)
    : m_name(name ? VString::strdup(name) : nullptr), m_version(narrow_cast<std::int32_t>(version)),
      m_superClass(superClass), m_backPointer(backPointer), m_factory(factory), m_initialize(initialize),
      m_uninitialize(uninitialize), m_size(narrow_cast<std::uint32_t>(size)) {
    // The slot first: entering the record makes objects, whose classes may derive from this one.
    if (m_backPointer) {
        std::atomic_ref<VClass*>(*m_backPointer).store(this, std::memory_order_release);
    }
    try {
        ClassRegistry::Register(this);
    } catch (...) {
        ClassRegistry::Unregister(this);
        if (m_backPointer) {
            std::atomic_ref<VClass*>(*m_backPointer).store(nullptr, std::memory_order_release);
        }
        delete[] m_name;
        throw;
    }
    if (s_classVClass) {
        s_classVClass->InstanceBorn();
    }
}

// NOLINTNEXTLINE(bugprone-exception-escape): a hook that fails here is reported, not swallowed
VClass::~VClass() noexcept(false) {
    if (s_classVClass) {
        s_classVClass->InstanceGone();
        if (s_classVClass->Existing() == 1 && s_classVClass != this) {
            delete std::exchange(s_classVClass, nullptr);
        }
    }
    ClassRegistry::Unregister(this);
    char errorText[256];
    if (m_name) {
        VString::snprintf(errorText, sizeof errorText, "~VClass: %s", m_name);
    } else {
        VString::snprintf(errorText, sizeof errorText, "<unknown>\n");
    }
    delete[] std::exchange(m_name, nullptr);
    if (VClass** const slot = std::exchange(m_backPointer, nullptr); slot && *slot == this) {
        std::atomic_ref<VClass*>(*slot).store(nullptr, std::memory_order_release);
    }
    try {
        UninitializeClass();
        delete std::exchange(m_pool, nullptr);
    } catch (VException const& exception) {
        throw VException(exception);
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        throw VException(VException::eUnrecognized, nullptr, errorText, -1);
    }
}

VObject* VClass::NewInstance() const {
    if (m_pool) {
        return m_pool->NewInstance();
    }
    return m_factory ? m_factory() : nullptr;
}

void VClass::InitializeClass() {
    if (m_pool) {
        m_pool->InitializeClass();
    } else if (m_initialize) {
        m_initialize();
    }
}

void VClass::UninitializeClass() {
    if (m_pool) {
        m_pool->UninitializeClass();
    } else if (m_uninitialize) {
        m_uninitialize();
    }
}

void VClass::InitializeClassAgain() {
    if (std::exchange(m_initializeAgain, false)) {
        InitializeClass();
    }
}

bool VClass::IsSubClassOfClass(VClass const* other) const noexcept {
    for (VClass const* cls = this; cls; cls = cls->m_superClass) {
        if (cls == other) {
            return true;
        }
    }
    return false;
}

void VClass::SetPool(IVInstancePool* pool) {
    if (pool != m_pool) {
        delete std::exchange(m_pool, pool);
    }
}

VClass* VClass::ClassForClassName(char const* name) {
    return name ? ClassRegistry::Find(name) : nullptr;
}

VClass* VClass::FindRegistered(char const* name) {
    return name && ClassRegistry::Exists() ? ClassRegistry::FindExactly(name) : nullptr;
}

VClass* VClass::GetClassSubstitution(char const* oldName) {
    std::lock_guard const lock(ClassCreationLock());
    if (!oldName) {
        return nullptr;
    }
    auto const& map = Substitutions();
    auto const found = map.find(oldName);
    return found == map.end() ? nullptr : found->second;
}

void VClass::SetClassSubstitution(char const* oldName, VClass* cls) {
    std::lock_guard const lock(ClassCreationLock());
    if (!oldName) {
        return;
    }
    if (cls) {
        Substitutions()[oldName] = cls;
    } else {
        Substitutions().erase(oldName);
    }
}

VPtrArray* VClass::SubClassesArray() {
    auto* const result = new VPtrArray(false);
    if (ClassRegistry::Exists()) {
        VCriticalSectionScope scope;
        scope.SetAndEnter(ClassRegistry::Lock());
        for (long i = 0; i < ClassRegistry::Count(); ++i) {
            VClass* const record = ClassRegistry::RecordAt(i);
            if (record->IsSubClassOfClass(this)) {
                result->AddPtr(record);
            }
        }
    }
    return result;
}

void VClass::SortClassArray() {
    if (ClassRegistry::Exists()) {
        ClassRegistry::Sort();
    }
}

int VClass::SortFn_Name(void const** a, void const** b) {
    auto const* const first = static_cast<VClass const*>(*a);
    auto const* const second = static_cast<VClass const*>(*b);
    if (first == second) {
        return 0;
    }
    if (!first) {
        return 1;
    }
    return second ? std::strcmp(first->Name(), second->Name()) : -1;
}

bool VClass::DestroyClassRegistry() {
    if (!ClassRegistry::Exists()) {
        return false;
    }
    ClassRegistry::Destroy(LoadClassSlot(VCriticalSection::ms_theClass), LoadClassSlot(VObject::ms_theClass),
                           LoadClassSlot(VMemoryProfiler::ms_theClass));
    delete std::exchange(s_substitutions, nullptr);
    delete std::exchange(s_classVClass, nullptr);
    return true;
}

VClass* VClass::TheClass() {
    std::lock_guard const lock(ClassCreationLock());
    ClassRegistry::MakeIfAbsent(); // asks for this record itself
    if (!s_classVClass) {
        s_classVClass = new VClass("VClass", nullptr, nullptr, 1, nullptr, nullptr, sizeof(VClass), nullptr);
    }
    return s_classVClass;
}

void VClass::Reattach(VClass* superClass) {
    m_superClass = superClass;
    ClassRegistry::Reattach(this);
}

void VClass::MarkAllForInitialization() {
    ClassRegistry::MarkAllForInitialization();
}

void VClass::Retire(VClass* record) {
    ClassRegistry::Retire(record);
}

} // namespace VFoundation
