#pragma once

namespace VFoundation {

/// A four-character chunk id as a number, the first character in the most significant byte: `ChunkId("ARAY")`.
constexpr unsigned long ChunkId(char const (&text)[5]) noexcept {
    unsigned long id = 0;
    for (int i = 0; i < 4; ++i) {
        id = id << 8 | static_cast<unsigned char>(text[i]);
    }
    return id;
}

} // namespace VFoundation
