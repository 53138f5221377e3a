#pragma once

#include "foundation/core/Export.h"

#include <cstdint>

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
        if (m_type == kString || m_type == kObject) {
            SetValueToUnknown();
        }
    }
    /// Nothing happens when `other` has a type that this library does not know.
    SValue& operator=(SValue const& other);
    /// The same, but takes the value; `other` is unknown then.
    SValue& operator=(SValue&& other) noexcept;

    /// One of `eType`, or another number read from a file.
    std::int32_t Type() const noexcept { return m_type; }

    void SetValueToUnknown();
    void SetValueToBool(bool value);
    void SetValueToChar(char value);
    /// Keeps the low 32 bits.
    void SetValueToInt(long value);
    void SetValueToFloat(float value);
    void SetValueToDouble(double value);
    /// A string that is held already takes the new text; its address stays.
    void SetValueToString(VString const& value);
    /// Null is held as null.
    void SetValueToObject(VObject* value);
    void SetValueToVoidPointer(void* value);

    bool GetBool() const noexcept;
    char GetChar() const noexcept;
    long GetInt() const noexcept;
    float GetFloat() const noexcept;
    double GetDouble() const noexcept;
    /// Copies the text to `out`; false, with `out` empty, when no string is held.
    bool GetString(VString& out) const;
    VObject* GetObject() const noexcept;
    void* GetVoidPointer() const noexcept;

    /// Same type and same content: numbers by value (a NaN equals nothing), strings and objects by `IsEqual`.
    bool operator==(SValue const& other) const;

  private:
    friend class VValue; // reads tag and payload from files

    VObject* HeldObject() const noexcept;
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
