#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/internal/NumberText.h"
#include "foundation/strings/values/SPoint.h"
#include "foundation/strings/values/SRect.h"

#include <type_traits>

namespace VFoundation {

namespace {

// The text form of each type.

template <class T>
NumberText ToText(T number) {
    if constexpr (std::is_floating_point_v<T>) {
        return NumberText(number);
    } else {
        return NumberText(static_cast<long long>(number));
    }
}

template <class T>
bool FromText(char const* text, T& value) {
    if constexpr (std::is_floating_point_v<T>) {
        value = narrow_cast<T>(DoubleFromText(text));
    } else {
        value = narrow_cast<T>(Int32FromText(text));
    }
    return true;
}

template <class T>
bool WriteTyped(VXMLFile& file, char const* name, T value) {
    return file.IsValid() && name && file.WriteAttribute(name, ToText(value).CString());
}

template <>
bool WriteTyped(VXMLFile& file, char const* name, bool value) {
    return file.IsValid() && name && file.WriteAttribute(name, value ? "true" : "false");
}

template <>
bool FromText(char const* text, bool& value) {
    value = VString::stricmp(text, "true") == 0 || VString::stricmp(text, "yes") == 0;
    return true;
}

template <>
bool FromText(char const* text, long long& value) {
    return Int64FromText(text, value);
}

template <>
bool FromText(char const* text, VString& value) {
    value = text;
    return true;
}

/// The attribute's text; false when it is absent or empty.
bool ReadFilled(VXMLFile& file, char const* name, char const*& text) {
    return file.IsValid() && name && file.ReadAttribute(name, text) && *text;
}

template <class T>
bool ReadTyped(VXMLFile& file, char const* name, T& value) {
    char const* text = nullptr;
    return ReadFilled(file, name, text) && FromText(text, value);
}

} // namespace

// The three operations of each number type.
// NOLINTBEGIN(bugprone-macro-parentheses): a type cannot stand in parentheses
#define VFOUNDATION_ATTRIBUTE_OPERATIONS(Type)                                                               \
    bool VXMLFile::WriteAttribute(char const* name, Type value) {                                            \
        return WriteTyped(*this, name, value);                                                               \
    }                                                                                                        \
    bool VXMLFile::ReadAttribute(char const* name, Type& value) {                                            \
        return ReadTyped(*this, name, value);                                                                \
    }                                                                                                        \
    bool VXMLFile::SerializeAttribute(char const* name, Type& value) {                                       \
        return IsSaving() ? WriteAttribute(name, value) : ReadAttribute(name, value);                        \
    }
// NOLINTEND(bugprone-macro-parentheses)

VFOUNDATION_ATTRIBUTE_OPERATIONS(long)
VFOUNDATION_ATTRIBUTE_OPERATIONS(int)
VFOUNDATION_ATTRIBUTE_OPERATIONS(unsigned short)
VFOUNDATION_ATTRIBUTE_OPERATIONS(short)
VFOUNDATION_ATTRIBUTE_OPERATIONS(char)
VFOUNDATION_ATTRIBUTE_OPERATIONS(unsigned char)
VFOUNDATION_ATTRIBUTE_OPERATIONS(float)
VFOUNDATION_ATTRIBUTE_OPERATIONS(double)
VFOUNDATION_ATTRIBUTE_OPERATIONS(bool)
VFOUNDATION_ATTRIBUTE_OPERATIONS(long long)

#undef VFOUNDATION_ATTRIBUTE_OPERATIONS

// Strings

bool VXMLFile::WriteAttribute(char const* name, VString const& value) {
    return IsValid() && name && WriteAttribute(name, value.CString());
}

bool VXMLFile::ReadAttribute(char const* name, VString& value) {
    return ReadTyped(*this, name, value);
}

bool VXMLFile::SerializeAttribute(char const* name, VString& value, VString const& defaultValue) {
    if (IsSaving()) {
        return value == defaultValue || WriteAttribute(name, value);
    }
    if (!ReadAttribute(name, value)) {
        value = defaultValue;
    }
    return true;
}

// Bits

bool VXMLFile::ReadBoolFlagAttribute(char const* name, unsigned long& flags, unsigned long mask,
                                     bool defaultValue) {
    bool isSet = defaultValue;
    bool const wasThere = ReadAttribute(name, isSet);
    flags = isSet ? flags | mask : flags & ~mask;
    return wasThere;
}

bool VXMLFile::WriteBoolFlagAttribute(char const* name, unsigned long const& flags, unsigned long mask,
                                      bool defaultValue) {
    bool const isSet = (flags & mask) != 0;
    return isSet == defaultValue || WriteAttribute(name, isSet);
}

bool VXMLFile::SerializeBoolFlagAttribute(char const* name, unsigned long& flags, unsigned long mask,
                                          bool defaultValue) {
    return IsSaving() ? WriteBoolFlagAttribute(name, flags, mask, defaultValue)
                      : ReadBoolFlagAttribute(name, flags, mask, defaultValue);
}

bool VXMLFile::SerializeBoolAttribute(char const* name, bool& value, bool defaultValue) {
    unsigned long flags = value ? 1 : 0;
    bool const result = SerializeBoolFlagAttribute(name, flags, 1, defaultValue);
    value = flags != 0;
    return result;
}

// Geometry

bool VXMLFile::ReadRectAttribute(char const* name, SRect& rect) {
    char const* text = nullptr;
    return ReadFilled(*this, name, text) && rect.RectFromString(text);
}

bool VXMLFile::WriteRectAttribute(char const* name, SRect& rect) {
    char text[SPoint::kTextSize];
    rect.RectToString(text, sizeof text);
    return IsValid() && name && WriteAttribute(name, text);
}

bool VXMLFile::SerializeRectAttribute(char const* name, SRect& rect) {
    return IsSaving() ? WriteRectAttribute(name, rect) : ReadRectAttribute(name, rect);
}

bool VXMLFile::ReadPointAttribute(char const* name, SPoint& point) {
    char const* text = nullptr;
    return ReadFilled(*this, name, text) && point.PointFromString(text);
}

bool VXMLFile::WritePointAttribute(char const* name, SPoint& point) {
    char text[SPoint::kTextSize];
    point.PointToString(text, sizeof text);
    return IsValid() && name && WriteAttribute(name, text);
}

bool VXMLFile::SerializePointAttribute(char const* name, SPoint& point) {
    return IsSaving() ? WritePointAttribute(name, point) : ReadPointAttribute(name, point);
}

// Enumerations

bool VXMLFile::SerializeEnumAttribute(char const* name, int& value, int count, char const* const* names) {
    return IsSaving() ? WriteEnumAttribute(name, value, count, names)
                      : ReadEnumAttribute(name, value, count, names);
}

bool VXMLFile::SerializeEnumAttribute(char const* name, int& value, int count, char const* const* names,
                                      int defaultValue) {
    if (IsSaving()) {
        return value == defaultValue || WriteEnumAttribute(name, value, count, names);
    }
    char const* text = nullptr;
    if (ReadFilled(*this, name, text)) {
        return ReadEnumAttribute(name, value, count, names);
    }
    value = defaultValue;
    return true;
}

bool VXMLFile::ReadEnumAttribute(char const* name, int& value, int count, char const* const* names) {
    char const* text = nullptr;
    if (!names || !ReadFilled(*this, name, text)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        if (names[i] && VString::stricmp(text, names[i]) == 0) {
            value = i;
            return true;
        }
    }
    return false;
}

bool VXMLFile::WriteEnumAttribute(char const* name, int value, int count, char const* const* names) {
    return IsValid() && name && names && value >= 0 && value < count && WriteAttribute(name, names[value]);
}

} // namespace VFoundation
