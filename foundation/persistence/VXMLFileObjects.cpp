#include "foundation/log/VLog.h"
#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <cstring>
#include <new>

namespace VFoundation {

char const* VXMLFile::ObjectClassName() {
    char const* className = nullptr;
    return ReadAttribute("class", className) ? className : GetNodeName();
}

VClass* VXMLFile::ObjectClassNamed(char const* className) {
    VClass* const cls = VClass::ClassForClassName(className);
    return cls ? cls : VClass::GetClassSubstitution(className);
}

namespace {

/// Null also without memory.
VObject* NewInstanceOf(VClass const& cls) {
    try {
        return cls.NewInstance();
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

} // namespace

VObject* VXMLFile::CreateObjectHere(char const* reporter) {
    char const* const className = ObjectClassName();
    VClass const* const cls = ObjectClassNamed(className);
    if (!cls) {
        VLog::Trace("%s - No class for className '%s'\n", reporter, className);
        NoteLoss(LoadReport::kUnknownClass, className);
        return nullptr;
    }
    auto object = VObjectRef<VObject>::Adopt(NewInstanceOf(*cls));
    if (!object) {
        VLog::Trace("%s - Error allocating new object of class: %s\n", reporter, className);
        NoteLoss(LoadReport::kNotMade, className);
        return nullptr;
    }
    ReadInto(*object);
    return object.Detach();
}

/// Moves to the first child of that name (null matches any) whose class name `fits`. False, with the cursor where it
/// was, while saving and when there is none.
template <class Fits>
bool VXMLFile::OpenFittingChild(char const* name, Fits fits) {
    if (!IsLoading()) {
        m_nError = IsSaving() ? std::int32_t{kBadMode} : m_nError;
        return false;
    }
    if (!OpenFirstChildElement(nullptr)) {
        return false;
    }
    do {
        if (HasName(name) && fits(ObjectClassName())) {
            return true;
        }
    } while (OpenNextSiblingElement(nullptr));
    CloseChild();
    return false;
}

namespace {

/// Whether `cls` is the substitute for `className`.
bool IsSubstitutedBy(char const* className, VClass const& cls) {
    VClass const* const substitute = VClass::GetClassSubstitution(className);
    return substitute && VString::stricmp(substitute->Name(), cls.Name()) == 0;
}

} // namespace

bool VXMLFile::ReadObject(char const* name, VObject* object) {
    auto const isBase = [object](char const* className) {
        VClass const& own = *object->Class();
        VClass const* const named = VClass::ClassForClassName(className);
        // The registry does not find the class that sorts last, so the object's own name is compared first.
        return std::strcmp(className, own.Name()) == 0 || (named && own.IsSubClassOfClass(named)) ||
               IsSubstitutedBy(className, own);
    };
    if (!object || !OpenFittingChild(name, isBase)) {
        return false;
    }
    ReadInto(*object);
    CloseChild();
    return true;
}

bool VXMLFile::CanReadObject(char const* name, VClass* cls) {
    auto const isSame = [cls](char const* className) {
        return VString::stricmp(className, cls->Name()) == 0 || IsSubstitutedBy(className, *cls);
    };
    if (!cls || !OpenFittingChild(name, isSame)) {
        return false;
    }
    CloseChild();
    return true;
}

VObject* VXMLFile::ReadAndCreateObject(char const* name, VClass* base) {
    auto const isDerived = [base](char const* className) {
        VClass const* const cls = ObjectClassNamed(className);
        return cls && (!base || cls->IsSubClassOfClass(base));
    };
    if (!OpenFittingChild(name, isDerived)) {
        return nullptr;
    }
    VObject* const object = CreateObjectHere("VXMLFile::ReadAndCreateObject");
    CloseChild();
    return object;
}

bool VXMLFile::WriteObject(char const* name, VObject const* object) {
    if (!object || !IsSaving() || !OpenFirstChildElement(object->ClassName())) {
        return false;
    }
    if (name && *name) {
        WriteAttribute("name", name);
    }
    if (long const version = object->Class()->Version(); version > 1) {
        WriteAttribute("version", version);
    }
    try {
        const_cast<VObject*>(object)->SerializeAsXML(*this); // only reads the object while saving
    } catch (...) {
        m_pIO->Clear(); // half an object must not replace a whole document
        throw;
    }
    CloseChild();
    return true;
}

bool VXMLFile::SaveObject(char const* path, char const* rootName, VObject const& object) {
    if (!OpenFileForWrite(path, rootName)) {
        return false;
    }
    WriteObject(nullptr, object);
    return CloseFile();
}

bool VXMLFile::LoadObject(char const* path, char const* rootName, VObject& object) {
    bool isRead = OpenFileForRead(path, rootName);
    if (isRead && (!ReadObject(nullptr, object) || !m_report.IsEmpty())) {
        isRead = false;
        m_failedAction = kLoadAllAction;
    }
    m_pIO->Clear();
    return isRead;
}

bool VXMLFile::SerializeObject(char const* name, VObject* object) {
    return IsSaving() ? WriteObject(name, object) : IsValid() && ReadObject(name, object);
}

bool VXMLFile::ReadObject(char const* name, VObject& object) {
    return ReadObject(name, &object);
}

bool VXMLFile::WriteObject(char const* name, VObject const& object) {
    return WriteObject(name, &object);
}

bool VXMLFile::SerializeObject(char const* name, VObject& object) {
    return SerializeObject(name, &object);
}

} // namespace VFoundation
