#pragma once

#include "foundation/strings/VString.h"

#include <utility>

namespace VFoundation {

/// A string that a class owns from its `InitializeClass` to its `UninitializeClass`, such as the key of a property.
/// Either may be called again.
inline void MakeClassString(VString*& string, char const* text) {
    if (!string) {
        string = VString::NewString(text);
    }
}

inline void ReleaseClassString(VString*& string) {
    if (VString* const released = std::exchange(string, nullptr)) {
        released->Release();
    }
}

} // namespace VFoundation
