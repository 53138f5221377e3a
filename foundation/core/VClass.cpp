#include "foundation/core/VClass.h"

#include "foundation/containers/VPtrArray.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/VThread.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace VFoundation {

VClass::VClass(char const* name, VClass* superClass, Factory factory, long version, Hook initialize,
               Hook uninitialize, unsigned long size, VClass** backPointer)
    : m_name(VString::strdup(name)), m_version(narrow_cast<std::int32_t>(version)), m_superClass(superClass),
      m_backPointer(backPointer), m_factory(factory), m_initialize(initialize), m_uninitialize(uninitialize),
      m_size(narrow_cast<std::uint32_t>(size)) {
    if (name && !m_name) {
        throw std::bad_alloc();
    }
    ClassRegistry::CreationScope const creation;
    // The slot first: entering the record makes objects, whose classes may derive from this one.
    if (m_backPointer) {
        // release: hands over the record (`LoadClassSlot`)
        std::atomic_ref<VClass*>(*m_backPointer).store(this, std::memory_order_release);
    }
    try {
        ClassRegistry::Register(this);
    } catch (...) {
        ClassRegistry::ClearSlot(this);
        throw;
    }
    m_state.store(m_initialize ? State::eUnstarted : State::eReady, std::memory_order_release);
}

// NOLINTNEXTLINE(bugprone-exception-escape): a hook that fails here is reported, not swallowed
VClass::~VClass() noexcept(false) {
    if (!m_isSetAside) {
        ClassRegistry::Unregister(this);
    }
    char errorText[256];
    VString::snprintf(errorText, sizeof errorText, "~VClass: %s", m_name ? m_name.get() : "<unknown>\n");
    m_name.reset();
    ClassRegistry::ClearSlot(this);
    try {
        std::unique_ptr<IVInstancePool> const pool(m_pool); // goes with the record, whatever the hook does
        UninitializeClass();
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
    State expected = State::eUnstarted; // of a record made by hand
    m_state.compare_exchange_strong(expected, State::eReady);
}

void VClass::UninitializeClass() {
    if (m_pool) {
        m_pool->UninitializeClass();
    } else if (m_uninitialize) {
        m_uninitialize();
    }
}

bool VClass::IsSubClassOfClass(VClass const* other) const noexcept {
    for (VClass const* cls = this; cls; cls = cls->SuperClass()) {
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

VClass* VClass::GetClassSubstitution(char const* oldName) {
    if (!oldName) {
        return nullptr;
    }
    ClassRegistry::CreationScope const creation;
    auto const& map = ClassRegistry::Substitutions();
    auto const found = map.find(oldName);
    return found == map.end() ? nullptr : found->second;
}

void VClass::SetClassSubstitution(char const* oldName, VClass* cls) {
    if (!oldName) {
        return;
    }
    ClassRegistry::CreationScope const creation;
    if (cls) {
        ClassRegistry::Substitutions()[oldName] = cls;
    } else {
        ClassRegistry::Substitutions().erase(oldName);
    }
}

VPtrArray* VClass::SubClassesArray() {
    auto result = VObjectRef<VPtrArray>::Adopt(new VPtrArray(false));
    ClassRegistry::CreationScope const creation;
    VCriticalSectionScope const scope(ClassRegistry::Lock());
    for (long i = 0; i < ClassRegistry::Count(); ++i) {
        VClass* const record = ClassRegistry::RecordAt(i);
        if (record->IsSubClassOfClass(this) && !result->AddPtr(record)) {
            throw std::bad_alloc();
        }
    }
    return result.Detach();
}

void VClass::SortClassArray() {
    ClassRegistry::Sort();
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
    ClassRegistry::Destroy();
    return true;
}

VClass* VClass::TheClass() {
    return ClassRegistry::OwnRecord();
}

VClass* detail::ReportLastByName(std::initializer_list<VClass*> classes) {
    VClass const* const last = ClassRegistry::LastByName();
    auto const found = std::find(classes.begin(), classes.end(), last);
    if (found == classes.end()) {
        return nullptr;
    }
    VLog::Trace("RegisterClasses - class '%s' sorts last and is not found by name\n", last->Name());
    return *found;
}

} // namespace VFoundation
