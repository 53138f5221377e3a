#pragma once

#include "foundation/strings/VString.h"

#include <utility>

namespace VFoundation {

/// A string that a class owns from its `InitializeClass` to its `UninitializeClass`. Not for clients.
inline void MakeSharedKey(VString*& key, char const* text) {
    if (!key) {
        key = VString::NewString(text);
    }
}

inline void ReleaseSharedKey(VString*& key) {
    if (VString* const released = std::exchange(key, nullptr)) {
        released->Release();
    }
}

} // namespace VFoundation
