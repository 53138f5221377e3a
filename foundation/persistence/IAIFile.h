#pragma once

#include "foundation/core/Export.h"
#include "foundation/persistence/FileTypes.h"
#include "foundation/persistence/LoadReport.h"

namespace VFoundation {

class VObject;
class VString;

/// The interface through which `VObject::Serialize` reads and writes a chunked binary file. `VAIFile` implements
/// it.
///
///     bool VPoint::Serialize(IAIFile& file) {
///         if (file.IsLoading()) { file >> x >> y; } else { file << x << y; }
///         return true;
///     }
///
/// Widths in the file: `char` and `bool` 8 bits, `short` 16, `int` and `long` 32 (writing a `long` drops its high
/// half, reading extends its sign), `long long` 64, `float` and `double` as their IEEE 754 patterns. On 64-bit
/// Linux `std::int64_t` is `long` and takes 32 bits: write 64-bit numbers as `long long`.
///
/// Reading: when the innermost chunk of a chunk-safe file has fewer bytes left than the value takes, the value is 0
/// and nothing is read. When the file ends, the variable keeps its value and `Eof()` is true.
/// DELIBERATE: a signed 16-bit value is not read outside chunks; it is 0 there in every mode, while an
/// unsigned one reads.
/// DELIBERATE: 64-bit integers do not ask whether the chunk still holds them; they read into what follows it.
///
/// Ownership: objects given to it are borrowed.
/// Threads: one thread at a time.
class VFOUNDATION_API IAIFile {
  public:
    virtual ~IAIFile() = default;

    // One value in the file's byte order; returns the number of values written or read, 0 or 1. What these read
    // does not count for `ChunkRemaining`.
    virtual unsigned long Write8Bit(void const* value) = 0;
    virtual unsigned long Write16Bit(void const* value) = 0;
    virtual unsigned long Write32Bit(void const* value) = 0;
    virtual unsigned long Write64Bit(void const* value) = 0;
    virtual unsigned long Read8Bit(void* value) = 0;
    virtual unsigned long Read16Bit(void* value) = 0;
    virtual unsigned long Read32Bit(void* value) = 0;
    virtual unsigned long Read64Bit(void* value) = 0;
    // 32 bits, most significant byte first in either order of the file.
    virtual unsigned long Write32BitBE(void const* value) = 0;
    virtual unsigned long Read32BitBE(void* value) = 0;

    /// `mode` is a sum of the flags that `VAIFile` lists.
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
    /// Raw bytes. In a chunk-safe file `Read` fills the bytes that are missing with zero.
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
    /// Bytes of the innermost open chunk that are not read yet; 0 outside any chunk.
    virtual unsigned long ChunkRemaining() = 0;
    virtual unsigned long GetChunkLength() = 0;

    /// Call this before allocating a length that was read from the file. False when the length exceeds what chunk
    /// and file still hold and the sum of all such excess since `Open` passes a limit.
    virtual bool AcceptLength(unsigned long length) = 0;

    /// Writes a value of one of the types of `FileType`.
    template <FileType T>
    IAIFile& operator<<(T value) {
        WriteBits(FileBitsOf(value));
        return *this;
    }
    /// Reads one; the class comment says what `value` is when it is missing.
    template <FileType T>
    IAIFile& operator>>(T& value) {
        FileBits<T> bits{};
        if (ReadValue(&bits, sizeof bits, kReadRule<T>)) {
            value = ValueOfFileBits<T>(bits);
        }
        return *this;
    }

    /// `count` values one after another, exactly as by `<<` and `>>` for each, but by whole blocks.
    template <FileType T>
    IAIFile& WriteValues(T const* values, unsigned long count) {
        for (unsigned long done = 0; done < count; ++done) {
            if constexpr (kIsStoredAsIs<T>) {
                done += WriteBlock(values + done, count - done, sizeof(T));
            }
            if (done < count) {
                *this << values[done];
            }
        }
        return *this;
    }
    template <FileType T>
    IAIFile& ReadValues(T* values, unsigned long count) {
        for (unsigned long done = 0; done < count; ++done) {
            if constexpr (kIsStoredAsIs<T>) {
                done += ReadBlock(values + done, count - done, sizeof(T), kReadRule<T>);
            }
            if (done < count) {
                *this >> values[done];
            }
        }
        return *this;
    }

    /// A string after its 16-bit length. Null writes an empty string; text is cut after 65 534 bytes.
    virtual IAIFile& operator<<(char const* text) = 0;
    /// Deletes the string in `*text` (with `delete[]`) and puts a new one there, owned by the caller; null only
    /// when memory runs out. The file is then positioned after the string all the same.
    virtual IAIFile& operator>>(char** text) = 0;

    /// Why the last operation that sets an error failed; empty when none did, and from files that do not know.
    virtual VString ErrorDescription() const;
    /// For classes that save: true once bytes written since `Open` are known to be lost; `Serialize` then returns false.
    virtual bool HasLostBytes() const noexcept { return false; }
    /// What was passed over in loading since the file was opened; null from files that keep no report.
    virtual LoadReport const* Report() const { return nullptr; }
    /// For classes that load objects: adds a loss at the position. `detail` is the class, or null.
    virtual void NoteLoss(LoadReport::eLoss, char const* /*detail*/) noexcept {}
    /// Adds one of a chunk with this id.
    void NoteChunk(LoadReport::eLoss loss, unsigned long id) noexcept;
    /// Adds one when `found` elements are not as many as the file says.
    void NoteCount(long expected, long found) noexcept;

    // Calls the object's `Serialize`; a false result is noted in the report of a file that is loading.
    IAIFile& operator<<(VObject& object);
    IAIFile& operator>>(VObject& object);

  protected:
    /// Reads a value of `size` bytes (1, 2, 4 or 8) into `bits`, in the machine's byte order, and counts it. False,
    /// with `bits` unchanged, when the file ends first.
    virtual bool ReadValue(void* bits, unsigned long size, eReadRule rule) = 0;
    /// Moves the values of `size` bytes that can be moved without looking at the file again, at most `count`; returns
    /// their number.
    virtual unsigned long WriteBlock(void const* /*values*/, unsigned long /*count*/,
                                     unsigned long /*size*/) {
        return 0;
    }
    virtual unsigned long ReadBlock(void* /*values*/, unsigned long /*count*/, unsigned long /*size*/,
                                    eReadRule) {
        return 0;
    }

  private:
    void WriteBits(std::uint8_t bits) { Write8Bit(&bits); }
    void WriteBits(std::uint16_t bits) { Write16Bit(&bits); }
    void WriteBits(std::uint32_t bits) { Write32Bit(&bits); }
    void WriteBits(std::uint64_t bits) { Write64Bit(&bits); }
};

} // namespace VFoundation
