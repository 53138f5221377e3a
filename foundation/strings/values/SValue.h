#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/NarrowCast.h"

#include <cstdint>
#include <utility>

namespace VFoundation {

class VObject;
class VString;
template <class T>
class VObjectRef;

/// A tagged value: nothing, or one bool, char, integer, float, double, string, object or raw pointer.
/// Messages, notifications and events carry it. Use `VValue` where the value has to be an object itself.
///
/// A getter for another type than the one held gives zero, null or the empty string; nothing is converted.
///
/// Ownership: a string is copied into the value, an object is retained, a raw pointer is borrowed. Copying a
/// value copies its string and shares its object.
/// Threads: one thread at a time.
struct VFOUNDATION_API SValue {
    /// Files hold these numbers: never renumber.
    enum eType : std::int32_t {
        kUnknown = 0,
        kBool = 1,
        kChar = 2,
        kInt = 3,
        kFloat = 4,
        kDouble = 5,
        kString = 6,
        kObject = 7,
        kPVoid = 8
    };

    SValue() noexcept = default;
    SValue(SValue const& other) { *this = other; }
    /// Takes the value; `other` is unknown then.
    SValue(SValue&& other) noexcept { Take(other); }
    ~SValue() {
        if (HoldsObject()) {
            LetGo();
        }
    }
    /// Nothing happens when `other` has a type that this library does not know.
    SValue& operator=(SValue const& other);
    /// The same, but takes the value; `other` is unknown then.
    SValue& operator=(SValue&& other) noexcept;

    /// One of `eType`, or another number read from a file.
    std::int32_t Type() const noexcept { return m_type; }

    void SetValueToUnknown() { SetPlain<void*>(kUnknown, &SValue::m_pointer, nullptr); }
    void SetValueToBool(bool value) { SetPlain(kBool, &SValue::m_bool, value); }
    void SetValueToChar(char value) { SetPlain(kChar, &SValue::m_char, static_cast<signed char>(value)); }
    /// Keeps the low 32 bits.
    void SetValueToInt(long value) { SetPlain(kInt, &SValue::m_int, narrow_cast<std::int32_t>(value)); }
    void SetValueToFloat(float value) { SetPlain(kFloat, &SValue::m_float, value); }
    void SetValueToDouble(double value) { SetPlain(kDouble, &SValue::m_double, value); }
    /// A string that is held already takes the new text; its address stays.
    void SetValueToString(VString const& value);
    /// Null is held as null.
    void SetValueToObject(VObject* value);
    void SetValueToVoidPointer(void* value) { SetPlain(kPVoid, &SValue::m_pointer, value); }

    bool GetBool() const noexcept { return m_type == kBool && m_bool; }
    char GetChar() const noexcept { return m_type == kChar ? static_cast<char>(m_char) : '\0'; }
    long GetInt() const noexcept { return m_type == kInt ? m_int : 0; }
    float GetFloat() const noexcept { return m_type == kFloat ? m_float : 0.0F; }
    double GetDouble() const noexcept { return m_type == kDouble ? m_double : 0.0; }
    /// Copies the text to `out`; false, with `out` empty, when no string is held.
    bool GetString(VString& out) const;
    VObject* GetObject() const noexcept { return m_type == kObject ? m_object : nullptr; }
    void* GetVoidPointer() const noexcept { return m_type == kPVoid ? m_pointer : nullptr; }

    /// Same type and same content: numbers by value (a NaN equals nothing), strings and objects by `IsEqual`.
    bool operator==(SValue const& other) const;

  private:
    friend class VValue; // reads tag and payload from files

    bool HoldsObject() const noexcept { return m_type == kString || m_type == kObject; }
    template <class Payload>
    void SetPlain(eType type, Payload SValue::*member, Payload value) {
        if (HoldsObject()) {
            SValue const former(
                std::move(*this)); // goes when the new payload stands: its destructor may use this value
            SetPlain(type, member, value);
            return;
        }
        m_type = type;
        m_pointer = nullptr; // all bits zero
        this->*member = value;
    }
    VObject* HeldObject() const noexcept;
    void LetGo() noexcept;
    void Take(SValue& other) noexcept;
    VObjectRef<VObject> Become(eType type) noexcept;

    std::int32_t m_type = kUnknown;
    union {
        void* m_pointer = nullptr; // first, so that a new value is all zero
        VString* m_string;
        VObject* m_object;
        bool m_bool;
        signed char m_char;
        std::int32_t m_int;
        float m_float;
        double m_double;
    };
};

} // namespace VFoundation
