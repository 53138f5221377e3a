#pragma once

#include "foundation/persistence/FileTypes.h"

namespace VFoundation {

class VObject;

/// A chunked binary file as classes see it that write and read themselves in `VObject::Serialize`. `VAIFile`
/// is the one in the library.
///
///     bool VPoint::Serialize(IAIFile& file) {
///         if (file.IsLoading()) { file >> x >> y; } else { file << x << y; }
///         return true;
///     }
///
/// Widths in the file: `char` and `bool` 8 bits, `short` 16, `int` and `long` 32 (a `long` loses its high half
/// on writing and is extended on reading), `long long` 64, `float` and `double` as their IEEE patterns. Note
/// that `std::int64_t` is `long` on 64-bit Linux and goes in 32 bits: write 64-bit numbers as `long long`.
///
/// How a stream operator reads: a chunk-safe file that has not the whole value left in its innermost chunk
/// gives 0 and stays where it is. A value that the file itself does not have is left as it was, and `Eof()`
/// says so.
/// DELIBERATE: a signed 16-bit value is not read outside chunks; it is 0 there in every mode, while an
/// unsigned one reads.
/// DELIBERATE: 64-bit integers do not ask whether the chunk still holds them; they read into what follows it.
///
/// Ownership: objects given to it are borrowed.
/// Threads: one thread at a time.
class IAIFile {
  public:
    virtual ~IAIFile() = default;

    // Single values in the file's byte order; the result is the number of items moved, 0 or 1. Reading does
    // not count for `ChunkRemaining`.
    virtual unsigned long Write8Bit(void const* value) = 0;
    virtual unsigned long Write16Bit(void const* value) = 0;
    virtual unsigned long Write32Bit(void const* value) = 0;
    virtual unsigned long Write64Bit(void const* value) = 0;
    virtual unsigned long Read8Bit(void* value) = 0;
    virtual unsigned long Read16Bit(void* value) = 0;
    virtual unsigned long Read32Bit(void* value) = 0;
    virtual unsigned long Read64Bit(void* value) = 0;
    /// 32 bits, most significant byte first whatever the file's order.
    virtual unsigned long Write32BitBE(void const* value) = 0;
    virtual unsigned long Read32BitBE(void* value) = 0;

    /// `mode` is the sum of the flags that `VAIFile` lists.
    virtual bool Open(char const* path, long mode) = 0;
    virtual bool Close() = 0;

    virtual bool IsStoring() = 0;
    virtual bool IsLoading() = 0;
    virtual bool IsChunkSafe() = 0;
    virtual bool IsLE() = 0;
    virtual void SetLE(bool littleEndian) = 0;

    /// Origins: 0 current position, 1 start, 2 end; any other does nothing.
    virtual bool Seek(long offset, long origin) = 0;
    virtual long GetPos() = 0;
    /// Bytes as they are. `Read` zero-fills what a chunk-safe file cannot give.
    virtual bool Write(void const* bytes, unsigned long length) = 0;
    virtual bool Read(void* bytes, unsigned long length) = 0;
    virtual bool Eof() = 0;
    virtual unsigned long GetFileLength() = 0;
    virtual unsigned long GetFileRemaining() = 0;

    virtual bool OpenChunk(char const* id) = 0;
    virtual bool OpenChunk(unsigned long id) = 0;
    virtual bool CloseChunk() = 0;
    virtual bool ReadChunkHeader(unsigned long* id, unsigned long* length) = 0;
    virtual void UnreadHeader() = 0;
    /// Bytes of the innermost open chunk that were not read yet; 0 outside any chunk.
    virtual unsigned long ChunkRemaining() = 0;
    virtual unsigned long GetChunkLength() = 0;

    /// Ask before memory is set aside for a length that was read. False when the file cannot be trusted with
    /// it: it claims more than chunk and file still hold, and all such excess since `Open` is beyond a limit.
    virtual bool AcceptLength(unsigned long length) = 0;

    /// Writes a value of one of the types listed at `FileValue`.
    template <FileValue T>
    IAIFile& operator<<(T value) {
        WriteBits(FileBitsOf(value));
        return *this;
    }
    /// Reads one; see the class comment for what becomes of `value` when it is not there.
    template <FileValue T>
    IAIFile& operator>>(T& value) {
        FileBits<T> bits{};
        if (ReadValue(&bits, sizeof bits, kReadRule<T>)) {
            value = FileValueOf<T>(bits);
        }
        return *this;
    }

    /// A string with its 16-bit length in front; null writes an empty one, and text beyond 65 534 bytes is
    /// cut.
    virtual IAIFile& operator<<(char const* text) = 0;
    /// Frees the string that `*text` holds (array new) and gives a new one, owned by the caller; null only
    /// when memory runs out.
    virtual IAIFile& operator>>(char** text) = 0;

    /// Lets the object write or read itself.
    IAIFile& operator<<(VObject& object);
    IAIFile& operator>>(VObject& object);

  protected:
    /// Reads a value of `size` bytes (1, 2, 4 or 8) into `bits`, in the machine's order, and counts it. False,
    /// with `bits` left alone, when the file ends before.
    virtual bool ReadValue(void* bits, unsigned long size, eReadRule rule) = 0;

  private:
    void WriteBits(std::uint8_t bits) { Write8Bit(&bits); }
    void WriteBits(std::uint16_t bits) { Write16Bit(&bits); }
    void WriteBits(std::uint32_t bits) { Write32Bit(&bits); }
    void WriteBits(std::uint64_t bits) { Write64Bit(&bits); }
};

} // namespace VFoundation
