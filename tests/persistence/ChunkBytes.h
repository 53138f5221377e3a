#pragma once

#include "foundation/persistence/ChunkId.h"
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

/// Goes through the contents of a file in the same way for writing and for checking.
struct Mover {
    enum eHow { eWrite, eCheck };

    VFoundation::VAIFile& file;
    eHow how;

    template <VFoundation::FileType... Ts>
    void Values(Ts... values) {
        (Value(values), ...);
    }
    template <class T>
    void Value(T value) {
        T moved = how == eWrite ? value : T{};
        how == eWrite ? file << moved : file >> moved;
        Check(moved, value);
    }
    void Text(std::string const& text) {
        Check(how == eWrite ? (file << text.c_str(), text) : ReadString(file), text);
    }
    void Bytes(std::string const& bytes) {
        std::string moved = bytes;
        how == eWrite ? file.Write(moved.data(), moved.size()) : file.Read(moved.data(), moved.size());
        Check(moved, bytes);
    }
    /// `blank` is what an object is loaded into.
    template <class T>
    void Object(T& object, T blank) {
        how == eWrite ? file << object : file >> blank;
        Check(how == eWrite || blank.IsEqual(object), true);
    }
    template <class Body>
    void Chunk(char const (&id)[5], Body body) {
        unsigned long read = 0;
        if (how == eWrite ? !file.OpenChunk(id) : !file.ReadChunkHeader(&read, nullptr)) {
            return Check(false, true);
        }
        Check(how == eWrite || read == VFoundation::ChunkId(id), true);
        body();
        Check(file.ChunkRemaining(), 0UL);
        Check(file.CloseChunk(), true);
    }

  private:
    template <class T>
    void Check(T const& found, T const& expected) const {
        EXPECT_EQ(found, expected);
    }
};

} // namespace testing_support
