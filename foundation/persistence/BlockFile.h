#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

namespace VFoundation {

/// A binary file, open for reading or for writing, that moves through one block of memory. Not for clients;
/// `VAIFile` is.
///
/// Single values are taken out of the block and put into it by pointer (`Take`, `Put`): one compare each.
/// What `Take` may give is called the window. It ends with the block, and earlier where `OpenWindow` says so;
/// `TakenFromWindow` tells how much was taken since. Every other operation works with any amount, whatever
/// the window, and leaves it to be opened anew.
///
/// A write that fails marks the file for good (`HasFailed`): from then on only `Overwrite` writes, and the
/// position is that of the end of what really was written.
///
/// Ownership: owns its stream and its block.
/// Threads: one thread at a time.
class BlockFile {
  public:
    static constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
    /// Bytes that a written file may have: positions in chunks are 32 bits.
    static constexpr long kMaxLength = 0xFFFFFFFFL;

    BlockFile() noexcept = default;
    BlockFile(BlockFile const&) = delete;
    BlockFile& operator=(BlockFile const&) = delete;
    ~BlockFile() { Close(); }

    /// A regular file; false for anything else.
    bool OpenForReading(char const* path);
    /// A new file, or what else `path` leads to.
    bool OpenForWriting(char const* path);
    bool IsOpen() const noexcept { return m_stream != nullptr; }
    /// Closes what is open. False when bytes were lost in writing.
    bool Close();

    /// The next `size` bytes, which count as read; null when the window has less.
    unsigned char const* Take(std::size_t size) noexcept {
        if (m_windowEnd - m_cursor < static_cast<std::ptrdiff_t>(size)) {
            return nullptr;
        }
        return Advance(size);
    }
    /// Room for `size` bytes, which count as written; null when the block has less.
    unsigned char* Put(std::size_t size) noexcept {
        if (m_roomEnd - m_cursor < static_cast<std::ptrdiff_t>(size)) {
            return nullptr;
        }
        return Advance(size);
    }
    /// Bytes of the file that the block holds from here on; 0 when writing.
    std::size_t Buffered() const noexcept {
        return m_dataEnd > m_cursor ? static_cast<std::size_t>(m_dataEnd - m_cursor) : 0;
    }
    /// Lets `Take` give at most `limit` bytes from here.
    void OpenWindow(std::size_t limit) noexcept;
    std::size_t TakenFromWindow() const noexcept {
        return static_cast<std::size_t>(m_cursor - m_windowStart);
    }

    /// The bytes read; fewer than `size` only at the end of the file.
    std::size_t Read(void* bytes, std::size_t size);
    bool Write(void const* bytes, std::size_t size);
    /// Writes the block out.
    bool Flush();
    /// Replaces bytes that were written before; the position stays.
    bool Overwrite(long position, void const* bytes, std::size_t size);

    long Position() const noexcept { return m_blockPosition + (m_cursor - m_block.get()); }
    /// An origin of `SEEK_SET`, `SEEK_CUR` or `SEEK_END`; a place before the start changes nothing.
    bool Seek(long offset, int origin);
    long Length();
    /// True once a read met the end, until the next move; true when no file is open.
    bool IsAtEnd() const noexcept { return !m_stream || m_atEnd; }
    /// True once bytes were lost in writing.
    bool HasFailed() const noexcept { return m_failed; }

  private:
    bool Open(std::FILE* stream, bool forWriting);
    unsigned char* Advance(std::size_t size) noexcept {
        unsigned char* const bytes = m_cursor;
        m_cursor += size;
        return bytes;
    }
    bool SeekTo(long position);
    std::size_t FillBlock();
    bool WriteOut(void const* bytes, std::size_t size);
    void StartBlock(long position) noexcept;
    bool Fail() noexcept;

    std::FILE* m_stream = nullptr;
    std::unique_ptr<unsigned char[]> m_block;
    unsigned char* m_cursor = nullptr;
    unsigned char* m_windowStart = nullptr;
    unsigned char* m_windowEnd = nullptr;
    unsigned char* m_dataEnd = nullptr; // reading: end of what the block holds
    unsigned char* m_roomEnd = nullptr; // writing: end of what it may take; its start when reading
    long m_blockPosition = 0;           // in the file, of the block's first byte
    bool m_forWriting = false;
    bool m_atEnd = false;
    bool m_failed = false;
};

} // namespace VFoundation
