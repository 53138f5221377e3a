#pragma once

#include "foundation/core/Export.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace VFoundation {

class FileReplacer;

/// A binary file that is read or written through one block of memory: the buffer of `VAIFile`, which holds one by
/// value so that single values cost no indirect call. Installed for that reason only; clients use `VAIFile`.
///
/// `Take` and `Put` give a pointer into the block, after one comparison. The bytes that `Take` may return are the
/// window: it ends with the block, or earlier if `OpenWindow` set a limit. `TakenFromWindow` says how many bytes
/// were taken since. All other operations ignore the window and close it; call `OpenWindow` again after them.
///
/// After a failed write (`HasFailed`) the file stays failed until it is opened again: only `Overwrite` still
/// writes, and the position is the end of the bytes that were written.
///
/// Ownership: owns its stream and its block.
/// Threads: one thread at a time.
class VFOUNDATION_API BlockFile {
  public:
    static constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
    /// Bytes that a written file may have: positions in chunks are 32 bits.
    static constexpr long kMaxLength = 0xFFFFFFFFL;

    BlockFile() noexcept;
    BlockFile(BlockFile const&) = delete;
    BlockFile& operator=(BlockFile const&) = delete;
    /// Closes the file, but replaces none.
    ~BlockFile();

    /// Opens a regular file; false for anything else, and without memory for the block.
    bool OpenForReading(char const* path);
    /// Creates the file or empties the one that is there.
    bool OpenForWriting(char const* path);
    /// The same for a file whose `Checksum` will be asked for.
    bool OpenForChecksum(char const* path);
    /// Writes a new file, which `Close` puts into the place of the one that is there.
    bool OpenForReplacing(char const* path);
    /// Opens nothing, for this reason; false.
    bool Refuse(int error) noexcept;
    bool IsOpen() const noexcept { return m_stream != nullptr; }
    /// False when bytes were lost in writing since the file was opened; no file is replaced then.
    bool Close();
    /// Closes the file and replaces none. Without `OpenForReplacing` the same as `Close`.
    bool CloseUnreplaced();

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
    /// Bytes after the position that are in the block; 0 when writing.
    std::size_t Buffered() const noexcept {
        return m_dataEnd > m_cursor ? static_cast<std::size_t>(m_dataEnd - m_cursor) : 0;
    }
    /// Bytes that `Take` may still give.
    std::size_t WindowLeft() const noexcept {
        return m_windowEnd > m_cursor ? static_cast<std::size_t>(m_windowEnd - m_cursor) : 0;
    }
    /// Bytes that `Put` may still take.
    std::size_t RoomLeft() const noexcept {
        return m_roomEnd > m_cursor ? static_cast<std::size_t>(m_roomEnd - m_cursor) : 0;
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
    /// Replaces bytes written earlier; the position stays.
    bool Overwrite(long position, void const* bytes, std::size_t size);

    long Position() const noexcept { return m_blockPosition + (m_cursor - m_block.get()); }
    /// `origin` is `SEEK_SET`, `SEEK_CUR` or `SEEK_END`. False, with nothing changed, before the start.
    bool Seek(long offset, int origin);
    long Length();
    /// The CRC-32 of all that was written. False when it cannot be read back.
    bool Checksum(std::uint32_t& checksum);
    /// True after a read met the end, until the next seek; true when no file is open.
    bool IsAtEnd() const noexcept { return !m_stream || m_atEnd; }
    /// True once bytes were lost in writing.
    bool HasFailed() const noexcept { return m_failed; }
    /// The system's error number of the first read that failed since the file was opened; 0 when none did. The file
    /// ends for the reader where reading fails.
    int ReadError() const noexcept { return m_readError; }
    /// The same of opening and writing.
    int Error() const noexcept { return m_error; }
    /// Where reading or writing failed first.
    long ErrorPosition() const noexcept { return m_errorPosition; }

  private:
    bool Open(std::FILE* stream, bool forWriting);
    int Descriptor() const noexcept;
    unsigned char* Advance(std::size_t size) noexcept {
        unsigned char* const bytes = m_cursor;
        m_cursor += size;
        return bytes;
    }
    bool SeekTo(long position);
    std::size_t ReadStream(unsigned char* bytes, std::size_t size);
    std::size_t FillBlock();
    bool WriteOut(void const* bytes, std::size_t size);
    void StartBlock(long position) noexcept;
    bool Fail(int error) noexcept;

    std::FILE* m_stream = nullptr;
    std::unique_ptr<FileReplacer> m_replacer; // owns the stream of a file that replaces another
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
    int m_readError = 0;
    int m_error = 0;
    long m_errorPosition = 0;
};

} // namespace VFoundation
