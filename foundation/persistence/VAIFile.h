#pragma once

#include "foundation/core/Export.h"
#include "foundation/host/VFile.h"
#include "foundation/persistence/BlockFile.h"
#include "foundation/persistence/IAIFile.h"

#include <array>
#include <cstdint>
#include <string>

namespace VFoundation {

/// A binary file of nested chunks. A chunk is a four-character id, a 32-bit length and that many bytes.
///
///     VAIFile file;
///     if (file.Open("scene.bin", VAIFile::kWrite) && file.OpenChunk("SCNE")) {
///         file << 42 << "a name" << object;
///         file.CloseChunk();
///     }
///     bool const saved = file.Close();        // false when any byte was lost
///
/// Open files that your process did not write with `kRead + kChunkSafe`: no read then leaves its chunk. The loop
/// over a chunk's children is
///
///     while (file.ChunkRemaining() && file.ReadChunkHeader(&id, &length)) { ...; file.CloseChunk(); }
///
/// A file has at most 4 GiB. After a failed write (disk full, 4 GiB) only the lengths of the open chunks are still
/// written, so that they match what is there; every result up to and including that of `Close` is false, with error
/// `eWriteFailed`. Values are collected in a block of 64 KiB, which is written when it is full, when a chunk is opened,
/// and by `Close` and the destructor; until then a value may be lost without an error, also after its chunk was closed.
///
/// DELIBERATE: `GetChunkLength()` looks one level below the innermost open chunk; it is the length of the chunk last
/// read at that level, or 0. Use `ChunkRemaining()`.
/// DELIBERATE: without `kChunkSafe` reads are not counted; `CloseChunk` skips the chunk's whole length from the
/// current position.
/// DELIBERATE: a writer pads a body that ends at an odd offset, a reader expects the pad byte after an odd length; a
/// chunk that starts at an odd offset is read one byte off. Keep chunks at even offsets in padded files.
///
/// Ownership: owns its stream, which the destructor closes; only `Close` reports lost bytes.
/// Threads: one thread at a time.
class VFOUNDATION_API VAIFile : public IAIFile, public Registered<VAIFile, VFile> {
  public:
    static constexpr char const* kClassName = "VAIFile";
    static VClass* ms_theClass;

    /// Chunks that may be open inside each other.
    static constexpr unsigned long kMaxDepth = 16;
    /// Bytes that a file may have.
    static constexpr unsigned long kMaxFileLength = BlockFile::kMaxLength;
    /// Bytes of a string's text.
    static constexpr unsigned long kMaxTextLength = 65534;

    // The mode of `Open` is a sum of these.
    static constexpr long kRead = 1;
    static constexpr long kWrite = 2;
    /// Reads stop at the end of the innermost chunk.
    static constexpr long kChunkSafe = 4;
    static constexpr long kLittleEndian = 8;
    /// Chunks end at even offsets.
    static constexpr long kPadChunks = 16;
    /// Writing: `Close` adds a last chunk "CSUM" with a checksum of the file, which readers without this flag pass over.
    /// Reading: `Open` reads the whole file and fails unless it ends with the right one.
    static constexpr long kChecksum = 32;
    /// Writing: the old file stays as it is until `Close` has the new one whole on the disk and puts it into its place.
    /// When anything fails, and when the object ends without `Close`, the old file stays.
    static constexpr long kReplaceOnClose = 64;

    enum eError : long {
        eNone = 0,
        /// The path is empty, the file cannot be opened (only regular files open for reading), or memory ran out.
        eCannotOpen = 1,
        eNotOpen = 6,
        eNoPath = 7,
        /// More than `kMaxDepth` open chunks.
        eTooDeep = 8,
        eNoChunk = 9,
        /// Bytes were lost in writing.
        eWriteFailed = 10,
        /// `Close` with `kChecksum` or `kReplaceOnClose` while a chunk is open.
        eChunkOpen = 11,
        /// A file opened with `kChecksum` has another checksum, or none.
        eDamaged = 12
    };

    explicit VAIFile(VClass* cls = nullptr);
    ~VAIFile() override;
    static VAIFile* New() { return new VAIFile; }

    /// Closes the file that is open. With `kRead` reads `path`; else, with `kWrite`, replaces its contents. After a
    /// failure no file is open and position and lengths are 0.
    bool Open(char const* path, long mode) override;
    /// False when no file is open (`eNotOpen`) or bytes written since `Open` were lost (`eWriteFailed`).
    bool Close() override;
    bool IsOpen() const noexcept { return m_file.IsOpen(); }
    /// One of `eError`, as the last operation that sets it left it.
    long GetLastError() const noexcept { return m_lastError; }

    bool IsLoading() override { return (m_mode & kRead) != 0; }
    bool IsStoring() override { return (m_mode & kWrite) != 0; }
    bool IsChunkSafe() override { return (m_mode & kChunkSafe) != 0; }
    bool IsLE() override { return (m_mode & kLittleEndian) != 0; }
    void SetLE(bool littleEndian) override;

    /// Starts a chunk. The first four bytes of `id` count; a shorter id ends in zero bytes. False, with nothing
    /// written, at `kMaxDepth`.
    bool OpenChunk(char const* id) override;
    /// The same with the id as a number, its first character in the most significant byte.
    bool OpenChunk(unsigned long id) override;
    /// Writing: stores the chunk's length. Reading: skips the rest of it; false while `GetLastError()` is not 0.
    bool CloseChunk() override;
    /// Enters the next chunk. False at the end of the file; false with nothing consumed at `kMaxDepth`, and when the
    /// innermost chunk of a chunk-safe file has no room for a header. `id` and `length` may be null.
    bool ReadChunkHeader(unsigned long* id, unsigned long* length) override;
    /// Undoes the `ReadChunkHeader` just made.
    void UnreadHeader() override;
    unsigned long ChunkRemaining() override;
    unsigned long GetChunkLength() override;

    unsigned long Write8Bit(void const* value) override;
    unsigned long Write16Bit(void const* value) override;
    unsigned long Write32Bit(void const* value) override;
    unsigned long Write64Bit(void const* value) override;
    unsigned long Read8Bit(void* value) override;
    unsigned long Read16Bit(void* value) override;
    unsigned long Read32Bit(void* value) override;
    unsigned long Read64Bit(void* value) override;
    unsigned long Write32BitBE(void const* value) override;
    unsigned long Read32BitBE(void* value) override;
    bool Write(void const* bytes, unsigned long length) override;
    /// False when nothing could be read, or less than the chunk (of a chunk-safe file) has left.
    bool Read(void* bytes, unsigned long length) override;

    using IAIFile::operator<<;
    using IAIFile::operator>>;
    IAIFile& operator<<(char const* text) override;
    IAIFile& operator>>(char** text) override;

    /// Moves the file position; the counts of chunks stay. True, unless bytes were lost in writing.
    bool Seek(long offset, long origin) override;
    /// -1 when no file is open.
    long GetPos() override;
    /// True after a read met the end of the file or failed (see `ReadError`), and when no file is open.
    bool Eof() override;
    unsigned long GetFileLength() override;
    /// Never below 0.
    unsigned long GetFileRemaining() override;
    /// Allows `VData::kMaxUnbackedLength` bytes of excess per file.
    bool AcceptLength(unsigned long length) override;

    // As a `VFile`, on the same stream and position.
    long GetLength() override;
    long GetPosition() override;
    long GetLengthRemaining() override;
    bool IsEndOfFile() override;
    bool FileSeek(long offset, long origin) override;
    int ReadError() const noexcept override { return m_file.ReadError(); }

    /// Why `GetLastError()` is not 0, else why reading failed: the path, the offset and the system's reason, as in "cannot
    /// write scene.bin at offset 65536: No space left on device"; empty when nothing failed. Without memory
    /// `std::bad_alloc`.
    VString ErrorDescription() const override;
    bool HasLostBytes() const noexcept override { return m_file.HasFailed(); }
    /// Kept until the next `Open`.
    LoadReport const* Report() const override { return &m_report; }
    void NoteLoss(LoadReport::eLoss loss, char const* detail) noexcept override;

  protected:
    bool ReadValue(void* bits, unsigned long size, eReadRule rule) override;
    unsigned long WriteBlock(void const* values, unsigned long count, unsigned long size) override;
    unsigned long ReadBlock(void* values, unsigned long count, unsigned long size, eReadRule rule) override;

  private:
    class WindowPause;
    using ChunkWords = std::array<std::uint32_t, kMaxDepth>;

    using VFile::OpenForReading; // would open a second stream
    using VFile::ReadBytes;

    void RememberPath(char const* path) noexcept;
    void UpdateByteOrder() noexcept;
    bool WriteResult() noexcept;
    bool OpenFile(char const* path, long mode);
    bool HasRightChecksum();
    bool AddChecksum();

    bool OpenChunkWithId(unsigned char const* id);
    bool CloseWrittenChunk();
    bool CloseReadChunk();
    unsigned long Remaining() const noexcept;
    std::size_t ReadLimit() const noexcept;
    void AddToBytesRead(unsigned long length) noexcept;
    void CountRead(unsigned long length) noexcept;
    void EndChunkWithFile() noexcept;

    template <class Bits>
    unsigned long WriteItem(void const* value, bool swap);
    template <class Bits>
    unsigned long ReadItem(void* value, bool swap);
    void CopyValue(void* to, void const* from, unsigned long size) const noexcept;
    void CopyValues(void* to, void const* from, unsigned long count, unsigned long size) const noexcept;
    bool ReadValueSlowly(void* bits, unsigned long size, eReadRule rule);

    BlockFile m_file;
    ChunkWords m_chunkLengths{};
    ChunkWords m_chunkBytesRead{};
    std::uint32_t m_mode = 0;
    std::uint32_t m_lastError = eNone;
    ChunkWords m_chunkStarts{};
    std::uint32_t m_depth = 0;
    bool m_swap = false; // the file's byte order is not the machine's
    unsigned long m_unbacked = 0;
    LoadReport m_report;
    std::string m_path; // as given to `Open`; empty when memory ran out
};

} // namespace VFoundation
