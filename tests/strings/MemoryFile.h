#pragma once

#include "foundation/persistence/IAIFile.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace testing_support {

/// A file in memory for classes that write themselves: strings, flags, 64-bit numbers and plain bytes, in the
/// machine's byte order and without chunks. Everything else does nothing.
class MemoryFile final : public VFoundation::IAIFile {
  public:
    explicit MemoryFile(std::string bytes = {}, bool loading = false)
        : m_bytes(std::move(bytes)), m_loading(loading) {}

    /// What was written, and the same file turned round to be read.
    std::string const& Bytes() const { return m_bytes; }
    void Rewind() {
        m_loading = true;
        m_position = 0;
    }

    bool Write(void const* bytes, unsigned long length) override {
        m_bytes.append(static_cast<char const*>(bytes), length);
        return true;
    }
    bool Read(void* bytes, unsigned long length) override {
        unsigned long const given = std::min(length, GetFileRemaining());
        if (given) {
            std::memcpy(bytes, m_bytes.data() + m_position, given);
        }
        m_position += given;
        return given == length;
    }
    bool IsStoring() override { return !m_loading; }
    bool IsLoading() override { return m_loading; }
    unsigned long GetFileLength() override { return m_bytes.size(); }
    unsigned long GetFileRemaining() override { return m_bytes.size() - m_position; }
    IAIFile& operator<<(bool const& value) override { return Put(value); }
    IAIFile& operator<<(long long const& value) override { return Put(value); }
    IAIFile& operator<<(char const* text) override {
        Write(text, std::strlen(text) + 1);
        return *this;
    }
    IAIFile& operator>>(bool& value) override { return Get(value); }
    IAIFile& operator>>(long long& value) override { return Get(value); }
    IAIFile& operator>>(char** text) override {
        delete[] * text;
        std::string const read = m_bytes.c_str() + m_position;
        m_position += read.size() + 1;
        *text = std::strcpy(new char[read.size() + 1], read.c_str());
        return *this;
    }

    unsigned long Write8Bit(void const*) override { return 0; }
    unsigned long Write16Bit(void const*) override { return 0; }
    unsigned long Write32Bit(void const*) override { return 0; }
    unsigned long Write64Bit(void const*) override { return 0; }
    unsigned long Read8Bit(void*) override { return 0; }
    unsigned long Read16Bit(void*) override { return 0; }
    unsigned long Read32Bit(void*) override { return 0; }
    unsigned long Read64Bit(void*) override { return 0; }
    unsigned long Write32BitBE(void const*) override { return 0; }
    unsigned long Read32BitBE(void*) override { return 0; }
    bool Open(char const*, long) override { return false; }
    bool Close() override { return false; }
    bool OpenChunk(char const*) override { return false; }
    bool OpenChunk(unsigned long) override { return false; }
    bool CloseChunk() override { return false; }
    bool ReadChunkHeader(unsigned long*, unsigned long*) override { return false; }
    void UnreadHeader() override {}
    unsigned long ChunkRemaining() override { return 0; }
    unsigned long GetChunkLength() override { return 0; }
    bool IsChunkSafe() override { return false; }
    bool IsLE() override { return false; }
    void SetLE(bool) override {}
    bool Seek(long, long) override { return false; }
    long GetPos() override { return 0; }
    bool Eof() override { return false; }
    IAIFile& operator<<(char) override { return *this; }
    IAIFile& operator<<(unsigned char) override { return *this; }
    IAIFile& operator<<(short) override { return *this; }
    IAIFile& operator<<(unsigned short) override { return *this; }
    IAIFile& operator<<(int) override { return *this; }
    IAIFile& operator<<(unsigned int) override { return *this; }
    IAIFile& operator<<(long) override { return *this; }
    IAIFile& operator<<(unsigned long) override { return *this; }
    IAIFile& operator<<(unsigned long long const&) override { return *this; }
    IAIFile& operator<<(float) override { return *this; }
    IAIFile& operator<<(double) override { return *this; }
    IAIFile& operator<<(VFoundation::VObject&) override { return *this; }
    IAIFile& operator>>(char&) override { return *this; }
    IAIFile& operator>>(unsigned char&) override { return *this; }
    IAIFile& operator>>(short&) override { return *this; }
    IAIFile& operator>>(unsigned short&) override { return *this; }
    IAIFile& operator>>(int&) override { return *this; }
    IAIFile& operator>>(unsigned int&) override { return *this; }
    IAIFile& operator>>(long&) override { return *this; }
    IAIFile& operator>>(unsigned long&) override { return *this; }
    IAIFile& operator>>(unsigned long long&) override { return *this; }
    IAIFile& operator>>(float&) override { return *this; }
    IAIFile& operator>>(double&) override { return *this; }
    IAIFile& operator>>(VFoundation::VObject&) override { return *this; }

  private:
    template <class T>
    IAIFile& Put(T const& value) {
        Write(&value, sizeof value);
        return *this;
    }
    template <class T>
    IAIFile& Get(T& value) {
        value = T{};
        Read(&value, sizeof value);
        return *this;
    }

    std::string m_bytes;
    unsigned long m_position = 0;
    bool m_loading;
};

} // namespace testing_support
