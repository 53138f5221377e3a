#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vfinspect {

/// The bytes of a file, or of a block of memory, read in pieces: what is held of a file is one window of 64 KiB, however
/// long the file is. Nothing here trusts an offset or a length; bytes that are not there read as missing.
///
/// Ownership: owns the file it opened; memory is borrowed.
/// Threads: one thread at a time.
class ByteSource {
  public:
    explicit ByteSource(std::string_view memory) : m_memory(memory), m_size(memory.size()) {}
    ByteSource(ByteSource const&) = delete;
    ByteSource& operator=(ByteSource const&) = delete;
    ~ByteSource();

    /// Null, with the reason in `error`, when there is no such file, it cannot be read or is not a regular file.
    static std::unique_ptr<ByteSource> Open(char const* path, std::string& error);

    std::uint64_t Size() const noexcept { return m_size; }

    /// Copies `count` bytes from `offset`; returns how many there were.
    std::size_t Read(std::uint64_t offset, void* to, std::size_t count);
    /// The same as a text.
    std::string Text(std::uint64_t offset, std::uint64_t count);
    /// Where `byte` is next, from `offset` on; the size of the file when nowhere.
    std::uint64_t Find(std::uint8_t byte, std::uint64_t offset);
    /// Where another byte than `byte` is next.
    std::uint64_t FindOther(std::uint8_t byte, std::uint64_t offset);
    /// One byte; 0 where none is.
    std::uint8_t Byte(std::uint64_t offset);
    /// A number of `bytes` bytes, up to 8; missing bytes count as 0.
    std::uint64_t Number(std::uint64_t offset, unsigned bytes, bool littleEndian);
    /// The CRC-32 of `length` bytes, or of as many as there are.
    std::uint32_t Checksum(std::uint64_t offset, std::uint64_t length);

  private:
    static constexpr std::size_t kWindowSize = 64UL * 1024;

    explicit ByteSource(int file, std::uint64_t size) : m_file(file), m_size(size) {}
    std::string_view Window(std::uint64_t offset);

    int m_file = -1;
    std::string_view m_memory;
    std::uint64_t m_size;
    std::vector<char> m_window;
    std::uint64_t m_windowStart = 0;
};

} // namespace vfinspect
