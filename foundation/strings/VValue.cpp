#include "foundation/strings/VValue.h"

#include "foundation/persistence/IAIFile.h"

namespace VFoundation {

VClass* VValue::ms_theClass = nullptr;

VValue::TypeName const VValue::ms_typeNameMap[kTypeCount] = {
    {SValue::kUnknown, "unknown"}, {SValue::kBool, "bool"},     {SValue::kChar, "char"},
    {SValue::kInt, "int"},         {SValue::kFloat, "float"},   {SValue::kDouble, "double"},
    {SValue::kString, "string"},   {SValue::kObject, "object"}, {SValue::kPVoid, "pvoid"},
};

VValue::VValue(SValue const& value) : Registered(nullptr) {
    *this = value;
}

VValue::VValue(VValue const& other) : Registered(nullptr) {
    *this = other;
}

VValue& VValue::operator=(SValue const& value) {
    m_value = value;
    return *this;
}

VValue& VValue::operator=(VValue const& other) {
    return *this = other.m_value;
}

VObject* VValue::Copy() const {
    auto* const copy = static_cast<VValue*>(VObject::Copy());
    if (copy) {
        *copy = *this;
    }
    return copy;
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
    return true;
}

} // namespace VFoundation
