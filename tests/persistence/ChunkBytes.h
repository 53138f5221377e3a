#pragma once

#include "foundation/persistence/VAIFile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace testing_support {

/// Four bytes, most significant first.
inline std::string BE32(std::uint32_t number) {
    return {static_cast<char>(number >> 24), static_cast<char>(number >> 16), static_cast<char>(number >> 8),
            static_cast<char>(number)};
}

/// A chunk with the length it has, or the one it claims.
inline std::string ChunkClaiming(char const* id, std::uint32_t length, std::string const& body) {
    return id + BE32(length) + body;
}
inline std::string Chunk(char const* id, std::string const& body) {
    return ChunkClaiming(id, static_cast<std::uint32_t>(body.size()), body);
}

/// The string that comes next.
inline std::string ReadString(VFoundation::IAIFile& file) {
    char* text = nullptr;
    file >> &text;
    std::string const read = text ? text : "(null)";
    delete[] text;
    return read;
}

} // namespace testing_support
