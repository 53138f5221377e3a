#pragma once

#include "foundation/strings/VString.h"

namespace VFoundation {

/// A string that a class owns from its `InitializeClass` to its `UninitializeClass`. Not for clients.
inline void MakeSharedKey(VString*& key, char const* text) {
    if (!key) {
        key = VString::NewString(text);
    }
}

} // namespace VFoundation
