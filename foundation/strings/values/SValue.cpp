#include "foundation/strings/values/SValue.h"

#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"

#include <cstring>
#include <utility>

namespace VFoundation {

static_assert(sizeof(SValue) == 16);

SValue& SValue::operator=(SValue const& other) {
    if (this == &other) {
        return *this;
    }
    switch (other.m_type) {
    case kUnknown:
        SetValueToUnknown();
        break;
    case kBool:
        SetValueToBool(other.m_bool);
        break;
    case kChar:
        SetValueToChar(static_cast<char>(other.m_char));
        break;
    case kInt:
        SetValueToInt(other.m_int);
        break;
    case kFloat:
        SetValueToFloat(other.m_float);
        break;
    case kDouble:
        SetValueToDouble(other.m_double);
        break;
    case kString:
        SetValueToString(other.m_string ? *other.m_string : *VString::EmptyString());
        break;
    case kObject:
        SetValueToObject(other.m_object);
        break;
    case kPVoid:
        SetValueToVoidPointer(other.m_pointer);
        break;
    default:
        break;
    }
    return *this;
}

SValue& SValue::operator=(SValue&& other) noexcept {
    if (this == &other || other.m_type < kUnknown || other.m_type > kPVoid) {
        return *this;
    }
    if (m_type == kString && m_string && other.m_type == kString && other.m_string) {
        *m_string = std::move(*other.m_string);
        other.SetValueToUnknown();
        return *this;
    }
    // What is let go may hold `other`.
    SValue taken(std::move(other));
    auto const held = Become(kUnknown);
    Take(taken);
    return *this;
}

/// The value must hold nothing.
void SValue::Take(SValue& other) noexcept {
    std::memcpy(&m_pointer, &other.m_pointer, sizeof(void*)); // whichever member it is
    m_type = std::exchange(other.m_type, kUnknown);
    other.m_pointer = nullptr;
}

VObject* SValue::HeldObject() const noexcept {
    switch (m_type) {
    case kString:
        return m_string;
    case kObject:
        return m_object;
    default:
        return nullptr;
    }
}

/// Sets the type and makes the payload all zero bits. Returns what was held, for the caller to let go when the new
/// payload stands: its destructor may use this value.
VObjectRef<VObject> SValue::Become(eType type) noexcept {
    auto held = VObjectRef<VObject>::Adopt(HeldObject());
    m_type = type;
    m_pointer = nullptr;
    return held;
}

void SValue::LetGo() noexcept {
    Become(kUnknown);
}

void SValue::SetValueToString(VString const& value) {
    if (m_type == kString && m_string) {
        *m_string = value;
        return;
    }
    auto string = VObjectRef<VString>::Adopt(VString::New());
    *string = value; // first, for the text may belong to the object held until now
    auto const held = Become(kString);
    m_string = string.Detach();
}

void SValue::SetValueToObject(VObject* value) {
    if (m_type == kObject && m_object == value) {
        return;
    }
    VObjectRef<VObject> retained(value); // first, for only the object held until now may keep it alive
    auto const held = Become(kObject);
    m_object = retained.Detach();
}

bool SValue::GetString(VString& out) const {
    if (m_type == kString && m_string) {
        out = *m_string;
    } else {
        out = "";
    }
    return m_type == kString;
}

bool SValue::operator==(SValue const& other) const {
    if (m_type != other.m_type) {
        return false;
    }
    switch (m_type) {
    case kBool:
        return m_bool == other.m_bool;
    case kChar:
        return m_char == other.m_char;
    case kInt:
        return m_int == other.m_int;
    case kFloat:
        return m_float == other.m_float;
    case kDouble:
        return m_double == other.m_double;
    case kString:
    case kObject: {
        VObject const* const mine = HeldObject();
        VObject const* const theirs = other.HeldObject();
        return mine && theirs ? mine->IsEqual(*theirs) : mine == theirs;
    }
    case kPVoid:
        return m_pointer == other.m_pointer;
    default:
        return true;
    }
}

} // namespace VFoundation
