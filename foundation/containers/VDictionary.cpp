#include "foundation/containers/VDictionary.h"

#include "foundation/containers/VDictionaryPair.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/ClassString.h"
#include "foundation/core/VException.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <utility>

namespace VFoundation {

VClass* VDictionary::ms_theClass = nullptr;
VString* VDictionary::ms_memberName_keyArray = nullptr;
VString* VDictionary::ms_memberName_valueArray = nullptr;

namespace {

constexpr char const* kKeyArray = "keyArray";
constexpr char const* kValueArray = "valueArray";

void Describe(VString& out, VString const* title, char const* fallback, VObjectArray const* array) {
    out << (title ? title->CString() : fallback) << ":\n";
    if (array) {
        out << *array;
    } else {
        out << "NULL";
    }
}

} // namespace

VDictionary::VDictionary(VClass* cls)
    : Registered(cls), m_pKeys(VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray())),
      m_pValues(VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray())) {
}

VDictionary::~VDictionary() = default;

void VDictionary::InitializeClass() {
    MakeClassString(ms_memberName_keyArray, kKeyArray);
    MakeClassString(ms_memberName_valueArray, kValueArray);
}

void VDictionary::UninitializeClass() {
    detail::ReleaseAndClear(ms_memberName_keyArray);
    detail::ReleaseAndClear(ms_memberName_valueArray);
}

VDictionary* VDictionary::Copy() const {
    auto copy = VObjectRef<VDictionary>::Adopt(New());
    copy->DeepCopyContents(*this);
    return copy.Detach();
}

void VDictionary::GetDescription(VString& out) const {
    out.Format("[%s]\n items: %i\n", ClassName(), narrow_cast<int>(Count()));
    Describe(out, ms_memberName_keyArray, kKeyArray, m_pKeys.Get());
    out << "\n";
    Describe(out, ms_memberName_valueArray, kValueArray, m_pValues.Get());
}

// Entries

long VDictionary::Count() const {
    return m_pKeys->Count();
}

void VDictionary::SetObjectForKey(VObject* value, VObject const* key) {
    if (!key) {
        return;
    }
    VObjectRef<VObject> const held(value); // it may be the value it replaces, or live through that only
    long const index = m_pKeys->IndexOfEquivalentObject(key);
    if (index >= 0) {
        m_pValues->ReplaceObjectAtIndex(value, index);
        return;
    }
    auto const copy = VObjectRef<VObject>::Adopt(key->Copy());
    if (!copy) {
        return;
    }
    m_pValues->AddObject(value);
    try {
        m_pKeys->AddObject(copy.Get());
    } catch (VException const&) {
        m_pValues->RemoveObjectAtIndex(m_pValues->Count() - 1);
        throw;
    }
}

VObject* VDictionary::ObjectForKey(VObject const* key) const {
    return m_pValues->ObjectAtIndex(m_pKeys->IndexOfEquivalentObject(key));
}

bool VDictionary::RemoveObjectForKey(VObject const* key) {
    long const index = m_pKeys->IndexOfEquivalentObject(key);
    return index >= 0 && m_pKeys->RemoveObjectAtIndex(index) && m_pValues->RemoveObjectAtIndex(index);
}

void VDictionary::DeepCopyContents(VDictionary const& other) {
    m_pKeys->DeepCopyContents(*other.m_pKeys);
    m_pValues->DeepCopyContents(*other.m_pValues);
}

// XML

bool VDictionary::SerializeAsXML(VXMLFile& file) {
    VObject::SerializeAsXML(file);
    if (file.IsSaving()) {
        return Save(file);
    }
    long version = 0;
    file.SerializeAttribute("version", version);
    if (version == kVersion) {
        LoadPairs(file);
    } else {
        LoadOlderForm(file);
    }
    return true;
}

bool VDictionary::Save(VXMLFile& file) {
    long version = kVersion;
    long count = Count();
    bool isWhole = file.SerializeAttribute("version", version) && file.SerializeAttribute("count", count);
    VDictionaryPair pair;
    for (long i = 0; i < count; ++i) {
        pair.SetKey(m_pKeys->ObjectAtIndex(i));
        pair.SetValue(m_pValues->ObjectAtIndex(i));
        isWhole = file.SerializeObject(nullptr, pair) && isWhole;
    }
    return isWhole;
}

/// Two arrays that may have been read from a damaged document: an entry needs both its halves.
void VDictionary::LoadOlderForm(VXMLFile& file) {
    bool const hasKeys = file.SerializeObject(kKeyArray, m_pKeys.Get());
    bool const hasValues = file.SerializeObject(kValueArray, m_pValues.Get());
    long const count = hasKeys == hasValues ? std::min(m_pKeys->Count(), m_pValues->Count()) : 0;
    for (VObjectArray* const array : {m_pKeys.Get(), m_pValues.Get()}) {
        while (array->Count() > count) {
            array->RemoveObjectAtIndex(array->Count() - 1);
        }
    }
}

void VDictionary::LoadPairs(VXMLFile& file) {
    long count = 0;
    file.SerializeAttribute("count", count);
    if (count < 1) {
        return;
    }
    if (!file.OpenFirstChildElement(nullptr)) {
        VLog::Trace("VObjectArray::SerializeAsXML - Error opening first child element\n");
        return;
    }
    do {
        char const* const className = file.ObjectClassName();
        if (VXMLFile::ObjectClassNamed(className) != VDictionaryPair::TheClass()) {
            VLog::Trace("VObjectArray::SerializeAsXML - Inappropriate class element in VDictionary '%s'\n",
                        className);
            continue;
        }
        VDictionaryPair pair;
        pair.SerializeAsXML(file);
        if (pair.Key() && pair.Value()) {
            SetObjectForKey(pair.Value(), pair.Key());
        }
    } while (file.OpenNextSiblingElement(nullptr));
    file.CloseChild();
}

} // namespace VFoundation
