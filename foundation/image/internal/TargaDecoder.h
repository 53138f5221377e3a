#pragma once

#include "foundation/strings/VData.h"

#include <cstddef>
#include <cstdint>

namespace VFoundation {

struct DecodeReport;
class VFile;
class VImage;

/// The bytes of a Targa file, wherever they are.
class TargaSource {
  public:
    virtual ~TargaSource() = default;
    virtual std::uint64_t Size() const = 0;
    /// `count` bytes from `offset` on (borrowed until the next call); both lie within the size.
    virtual unsigned char const* Bytes(std::uint64_t offset, std::size_t count) = 0;
    /// True once bytes could not be read although they are there.
    virtual bool HasFailed() const { return false; }
};

/// A file held in memory (borrowed).
class TargaMemorySource final : public TargaSource {
  public:
    TargaMemorySource(void const* bytes, std::size_t size) noexcept
        : m_bytes(static_cast<unsigned char const*>(bytes)), m_size(size) {}
    std::uint64_t Size() const override { return m_size; }
    unsigned char const* Bytes(std::uint64_t offset, std::size_t) override { return m_bytes + offset; }

  private:
    unsigned char const* m_bytes;
    std::size_t m_size;
};

/// An open file (borrowed), of which only the bytes asked for are in memory. Bytes that the file lost since it
/// was measured are zero. Throws a `VException` of id 1 when there is no memory.
class TargaFileSource final : public TargaSource {
  public:
    explicit TargaFileSource(VFile& file);
    std::uint64_t Size() const override { return m_size; }
    unsigned char const* Bytes(std::uint64_t offset, std::size_t count) override;
    bool HasFailed() const override;

  private:
    VFile& m_file;
    std::uint64_t m_size;
    std::uint64_t m_position = 0;
    VData m_block;
};

/// Decodes the file into `image`: bitmap, size and alpha flag. False, with the image as it was and the reason in the
/// report, for a file that `VImageIOTarga` does not promise to read, one beyond the pixel budget, a failed read, and
/// without memory for the pixels.
bool DecodeTarga(TargaSource& source, VImage& image, DecodeReport& report);

} // namespace VFoundation
