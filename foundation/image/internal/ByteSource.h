#pragma once

#include "foundation/host/VFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace VFoundation {

/// The bytes of a picture's file from first to last, wherever they are.
class ByteSource {
  public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t Size() const = 0;
    /// How many of the next `count` bytes there were; fewer at the end, and when reading fails.
    virtual std::size_t Read(void* buffer, std::size_t count) = 0;
    /// True once bytes could not be read although they are there.
    virtual bool HasFailed() const { return false; }
};

/// An open file (borrowed).
class FileByteSource final : public ByteSource {
  public:
    explicit FileByteSource(VFile& file)
        : m_file(file), m_size(static_cast<std::uint64_t>(std::max(file.GetLength(), 0L))) {}
    std::uint64_t Size() const override { return m_size; }
    std::size_t Read(void* buffer, std::size_t count) override { return m_file.ReadBytes(buffer, count); }
    bool HasFailed() const override { return m_file.ReadError() != 0; }

  private:
    VFile& m_file;
    std::uint64_t m_size;
};

/// Bytes in memory (borrowed).
class MemoryByteSource final : public ByteSource {
  public:
    MemoryByteSource(void const* bytes, std::size_t size)
        : m_next(static_cast<unsigned char const*>(bytes)), m_left(size), m_size(size) {}
    std::uint64_t Size() const override { return m_size; }
    std::size_t Read(void* buffer, std::size_t count) override {
        std::size_t const read = std::min(count, m_left);
        if (read > 0) {
            std::memcpy(buffer, m_next, read);
        }
        m_next += read;
        m_left -= read;
        return read;
    }

  private:
    unsigned char const* m_next;
    std::size_t m_left;
    std::size_t m_size;
};

} // namespace VFoundation
