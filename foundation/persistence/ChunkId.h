#pragma once

namespace VFoundation {

/// The number of a four-character chunk id: `ChunkId("ARAY")`. The first character is the most significant
/// byte.
constexpr unsigned long ChunkId(char const (&text)[5]) noexcept {
    unsigned long id = 0;
    for (int i = 0; i < 4; ++i) {
        id = id << 8 | static_cast<unsigned char>(text[i]);
    }
    return id;
}

} // namespace VFoundation
