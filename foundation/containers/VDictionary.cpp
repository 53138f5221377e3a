#include "foundation/containers/VDictionary.h"

#include "foundation/containers/VDictionaryPair.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/ClassString.h"
#include "foundation/containers/internal/ContainerAccess.h"
#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/containers/internal/VObjectCast.h"
#include "foundation/core/VException.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <string>
#include <utility>

namespace VFoundation {

VClass* VDictionary::ms_theClass = nullptr;
VString* VDictionary::ms_memberName_keyArray = nullptr;
VString* VDictionary::ms_memberName_valueArray = nullptr;

namespace {

constexpr char const* kKeyArray = "keyArray";
constexpr char const* kValueArray = "valueArray";

/// The copies of dictionaries that run inside each other on this thread, which the stack limits.
class CopyNesting {
  public:
    CopyNesting() {
        if (s_depth == VDictionary::kMaxCopiedNesting) {
            throw VException(VException::eObjectCreation, nullptr,
                             "Dictionaries nested too deep to be copied", -1);
        }
        ++s_depth;
    }
    CopyNesting(CopyNesting const&) = delete;
    CopyNesting& operator=(CopyNesting const&) = delete;
    ~CopyNesting() { --s_depth; }

  private:
    static inline constinit thread_local int s_depth = 0;
};

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

/// Both arrays are there until both are empty: the destructors of keys and values may use the dictionary. An array that
/// has another holder keeps what it holds.
VDictionary::~VDictionary() {
    auto const empties = [](VObjectArray& array) noexcept {
        if (array.RetainCount() > 1 || array.Count() == 0) {
            return false;
        }
        try {
            array.RemoveAllObjects();
        } catch (...) { // an element's; all are released
        }
        return true;
    };
    while (empties(*m_pValues) || empties(*m_pKeys)) {
    }
}

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
    if (long const index = m_pKeys->IndexOfEquivalentObject(key); index >= 0) {
        SetObjectAt(value, index);
    } else {
        AppendEntry(value, VObjectRef<VObject>::Adopt(key->Copy()));
    }
}

void VDictionary::SetObjectForKey(VObject* value, std::string_view key) {
    VObjectRef<VObject> const held(value);
    if (long const index = IndexOfKey(key); index >= 0) {
        SetObjectAt(value, index);
    } else {
        AppendEntry(value, VObjectRef<VObject>::Adopt(
                               VString::NewString(std::string(key.data(), key.size()).c_str())));
    }
}

void VDictionary::SetObjectAt(VObject* value, long index) {
    // Released at the end: its destructor finds the new value in place.
    VObjectRef<VObject> const former(m_pValues->ObjectAtIndex(index));
    m_pValues->ReplaceObjectAtIndex(value, index);
}

void VDictionary::AppendEntry(VObject* value, VObjectRef<VObject> const& key) {
    if (!key || !m_pValues->AddObject(value)) {
        return;
    }
    bool isAdded = false;
    try {
        isAdded = m_pKeys->AddObject(key.Get());
    } catch (...) {
        m_pValues->RemoveObjectAtIndex(m_pValues->Count() - 1);
        throw;
    }
    if (!isAdded) {
        m_pValues->RemoveObjectAtIndex(m_pValues->Count() - 1);
    }
}

VObject* VDictionary::ObjectForKey(VObject const* key) const {
    return m_pValues->ObjectAtIndex(m_pKeys->IndexOfEquivalentObject(key));
}

VObject* VDictionary::ObjectForKey(std::string_view key) const {
    return m_pValues->ObjectAtIndex(IndexOfKey(key));
}

bool VDictionary::ContainsKey(VObject const* key) const {
    return m_pKeys->IndexOfEquivalentObject(key) >= 0;
}

bool VDictionary::ContainsKey(std::string_view key) const {
    return IndexOfKey(key) >= 0;
}

VDictionary::Entry VDictionary::EntryAtIndex(long index) const {
    return {m_pKeys->ObjectAtIndex(index), m_pValues->ObjectAtIndex(index)};
}

/// The first string with this text; -1 when there is none.
long VDictionary::IndexOfKey(std::string_view key) const {
    std::string_view const text = key.substr(0, key.find('\0'));
    for (long i = 0; i < m_pKeys->Count(); ++i) {
        auto const* const string = VObjectCast<VString>(m_pKeys->ObjectAtIndex(i));
        if (string && text == string->CString()) {
            return i;
        }
    }
    return -1;
}

bool VDictionary::RemoveObjectForKey(VObject const* key) {
    return RemoveAt(m_pKeys->IndexOfEquivalentObject(key));
}

bool VDictionary::RemoveObjectForKey(std::string_view key) {
    return RemoveAt(IndexOfKey(key));
}

bool VDictionary::RemoveAt(long index) {
    if (index < 0) {
        return false;
    }
    // Released at the end: their destructors find both gone.
    VObjectRef<VObject> const formerKey(m_pKeys->ObjectAtIndex(index));
    VObjectRef<VObject> const formerValue(m_pValues->ObjectAtIndex(index));
    return m_pKeys->RemoveObjectAtIndex(index) && m_pValues->RemoveObjectAtIndex(index);
}

/// Takes the entries of two other arrays, cut to the shorter, and leaves them what it held.
void VDictionary::SwapEntries(VObjectArray& keys, VObjectArray& values) {
    long const count = std::min(keys.Count(), values.Count());
    for (VObjectArray* const array : {&keys, &values}) {
        while (array->Count() > count) {
            array->RemoveObjectAtIndex(array->Count() - 1);
        }
    }
    detail::ContainerAccess::Swap(*m_pKeys, keys);
    detail::ContainerAccess::Swap(*m_pValues, values);
}

void VDictionary::DeepCopyContents(VDictionary const& other) {
    if (Count() == 0 && other.Count() == 0 && m_pValues->Count() == 0) {
        return; // most of a graph's nodes have no properties
    }
    CopyNesting const nesting;
    auto const keys = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    auto const values = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    auto const alive = KeepAlive(*this);
    keys->DeepCopyContents(*other.m_pKeys);
    values->DeepCopyContents(*other.m_pValues);
    SwapEntries(*keys, *values);
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
    return isWhole && file.IsComplete();
}

/// Two arrays that may have been read from a damaged document: an entry needs both its halves.
void VDictionary::LoadOlderForm(VXMLFile& file) {
    auto const keys = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    auto const values = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    bool const hasKeys = file.SerializeObject(kKeyArray, keys.Get());
    if (file.SerializeObject(kValueArray, values.Get()) || hasKeys) {
        file.NoteCount(keys->Count(), values->Count());
        SwapEntries(*keys, *values);
    }
}

void VDictionary::LoadPairs(VXMLFile& file) {
    long count = 0;
    file.SerializeAttribute("count", count);
    if (count < 1) {
        if (file.OpenFirstChildElement(nullptr)) {
            file.CloseChild();
            file.NoteLoss(LoadReport::kCountDiffers, "none, found some");
        }
        return;
    }
    long loaded = 0;
    if (!file.OpenFirstChildElement(nullptr)) {
        file.NoteCount(count, loaded);
        VLog::Trace("VObjectArray::SerializeAsXML - Error opening first child element\n");
        return;
    }
    do {
        char const* const className = file.ObjectClassName();
        if (VXMLFile::ObjectClassNamed(className) != VDictionaryPair::TheClass()) {
            VLog::Trace("VObjectArray::SerializeAsXML - Inappropriate class element in VDictionary '%s'\n",
                        className);
            file.NoteLoss(LoadReport::kWrongKind, className);
            continue;
        }
        VDictionaryPair pair;
        pair.SerializeAsXML(file);
        if (pair.Key() && pair.Value()) {
            SetObjectForKey(pair.Value(), pair.Key());
            ++loaded;
        }
    } while (file.OpenNextSiblingElement(nullptr));
    file.CloseChild();
    file.NoteCount(count, loaded);
}

} // namespace VFoundation
