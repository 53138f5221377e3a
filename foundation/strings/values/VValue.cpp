#include "foundation/strings/values/VValue.h"

#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace VFoundation {

namespace {

constexpr char const* kTypeKey = "type";
constexpr char const* kValueKey = "value";

/// The first row that fits; else the row of the unknown type.
template <class Fits>
VValue::TypeName const& FindType(Fits fits) {
    auto const found =
        std::find_if(std::begin(VValue::ms_typeNameMap), std::end(VValue::ms_typeNameMap), fits);
    return found == std::end(VValue::ms_typeNameMap) ? VValue::ms_typeNameMap[0] : *found;
}

/// Reads the value as a `Stored` into the payload; an absent one leaves it.
template <class Stored, class Payload>
bool ReadPayload(VXMLFile& file, Payload& payload) {
    Stored stored{};
    if (!file.ReadAttribute(kValueKey, stored)) {
        return false;
    }
    payload = narrow_cast<Payload>(stored);
    return true;
}

} // namespace

VClass* VValue::ms_theClass = nullptr;

VValue::TypeName const VValue::ms_typeNameMap[kTypeCount] = {
    {SValue::kUnknown, "unknown"}, {SValue::kBool, "bool"},     {SValue::kChar, "char"},
    {SValue::kInt, "int"},         {SValue::kFloat, "float"},   {SValue::kDouble, "double"},
    {SValue::kString, "string"},   {SValue::kObject, "object"}, {SValue::kPVoid, "pvoid"},
};

// Making the record could throw; it is there, as `other` is.
VValue::VValue(VValue&& other) noexcept
    : Registered(LoadClassSlot(ms_theClass)), m_value(std::move(other.m_value)) {
}

VValue& VValue::operator=(SValue const& value) {
    m_value = value;
    return *this;
}

VValue& VValue::operator=(VValue const& other) {
    return *this = other.m_value;
}

VObject* VValue::Copy() const {
    return detail::CopyByAssignment(*this);
}

bool VValue::IsEqual(VObject const& other) const {
    return other.Class() == Class() && m_value == static_cast<VValue const&>(other).m_value;
}

bool VValue::Serialize(IAIFile& file) {
    if (file.IsLoading()) {
        short type = SValue::kUnknown;
        file >> type;
        if (type != m_value.m_type) {
            m_value.m_pointer = nullptr; // the bits of another type are no value of this one
        }
        m_value.m_type = type;
    } else {
        file << narrow_cast<short>(m_value.m_type);
    }
    auto const move = [&](auto& payload) {
        if (file.IsLoading()) {
            file >> payload;
        } else {
            file << payload;
        }
    };
    switch (m_value.m_type) {
    case SValue::kBool:
        move(m_value.m_bool);
        break;
    case SValue::kChar:
        move(reinterpret_cast<char&>(m_value.m_char));
        break;
    case SValue::kInt:
        move(m_value.m_int);
        break;
    case SValue::kFloat:
        move(m_value.m_float);
        break;
    case SValue::kDouble:
        move(m_value.m_double);
        break;
    default:
        break;
    }
    return !file.HasLostBytes();
}

bool VValue::SerializeAsXML(VXMLFile& file) {
    if (!VObject::SerializeAsXML(file)) {
        auto const& row = FindType([&](TypeName const& known) { return known.type == m_value.m_type; });
        return file.WriteAttribute(kTypeKey, row.name) && SaveValue(file);
    }
    char const* name = nullptr;
    bool const hasType = file.ReadAttribute(kTypeKey, name);
    auto const& row =
        FindType([&](TypeName const& known) { return hasType && std::strcmp(known.name, name) == 0; });
    if (row.type != m_value.m_type) {
        m_value.Become(
            static_cast<SValue::eType>(row.type)); // the bits of another type are no value of this one
    }
    return LoadValue(file) && hasType;
}

bool VValue::SaveValue(VXMLFile& file) const {
    switch (m_value.m_type) {
    case SValue::kBool:
        return file.WriteAttribute(kValueKey, m_value.m_bool);
    case SValue::kChar:
        return file.WriteAttribute(kValueKey, long{m_value.m_char});
    case SValue::kInt:
        return file.WriteAttribute(kValueKey, long{m_value.m_int});
    case SValue::kFloat:
        return file.WriteAttribute(kValueKey, m_value.m_float);
    case SValue::kDouble:
        return file.WriteAttribute(kValueKey, m_value.m_double);
    case SValue::kString:
        return file.WriteAttribute(kValueKey, m_value.m_string ? m_value.m_string->CString() : "");
    case SValue::kObject:
        return !m_value.m_object || file.WriteObject(kValueKey, m_value.m_object);
    default:
        return true;
    }
}

bool VValue::LoadValue(VXMLFile& file) {
    switch (m_value.m_type) {
    case SValue::kBool:
        return ReadPayload<bool>(file, m_value.m_bool);
    case SValue::kChar:
        return ReadPayload<long>(file, m_value.m_char);
    case SValue::kInt:
        return ReadPayload<long>(file, m_value.m_int);
    case SValue::kFloat:
        return ReadPayload<float>(file, m_value.m_float);
    case SValue::kDouble:
        return ReadPayload<double>(file, m_value.m_double);
    case SValue::kString: {
        if (!m_value.m_string) {
            m_value.m_string = VString::New();
        }
        char const* text = nullptr; // as it is, so that an empty one counts
        if (!file.ReadAttribute(kValueKey, text)) {
            return false;
        }
        *m_value.m_string = text;
        return *m_value.m_string == text; // not when memory ran out
    }
    case SValue::kObject:
        m_value.SetValueToObject(
            VObjectRef<VObject>::Adopt(file.ReadAndCreateObject(kValueKey, VObject::TheClass())).Get());
        return true;
    default:
        return true;
    }
}

} // namespace VFoundation
