#pragma once

#include "foundation/strings/VString.h"

namespace VFoundation {

/// A string that a class owns from its `InitializeClass`, which may be called again, to its `UninitializeClass`, such
/// as the key of a property.
inline void MakeClassString(VString*& string, char const* text) {
    if (!string) {
        string = VString::NewString(text);
    }
}

} // namespace VFoundation
