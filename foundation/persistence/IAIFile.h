#pragma once

namespace VFoundation {

class VObject;

/// A chunked binary file as classes see it that write and read themselves in `VObject::Serialize`.
///
/// Widths in the file: `short` 16 bits; `int` and `long` 32 bits (a `long` loses its high half on writing and is
/// extended on reading); `long long` 64 bits. Note that `std::int64_t` is `long` on 64-bit Linux: write 64-bit
/// numbers as `long long`.
///
/// Threads: one thread at a time.
class IAIFile {
  public:
    virtual ~IAIFile() = default;

    // Single values in the file's byte order; the result is the number of items moved, 0 or 1.
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

    virtual bool OpenChunk(char const* id) = 0;
    virtual bool OpenChunk(unsigned long id) = 0;
    virtual bool CloseChunk() = 0;
    virtual bool ReadChunkHeader(unsigned long* id, unsigned long* length) = 0;
    virtual void UnreadHeader() = 0;
    /// Bytes of the innermost open chunk that were not read yet; 0 outside any chunk.
    virtual unsigned long ChunkRemaining() = 0;
    virtual unsigned long GetChunkLength() = 0;

    /// Bytes as they are. `Read` zero-fills what a chunk-safe file cannot give.
    virtual bool Write(void const* bytes, unsigned long length) = 0;
    virtual bool Read(void* bytes, unsigned long length) = 0;

    virtual bool IsStoring() = 0;
    virtual bool IsLoading() = 0;
    virtual bool IsChunkSafe() = 0;
    virtual bool IsLE() = 0;
    virtual void SetLE(bool littleEndian) = 0;

    /// Origins: 0 current position, 1 start, 2 end; any other does nothing.
    virtual bool Seek(long offset, long origin) = 0;
    virtual long GetPos() = 0;
    virtual bool Eof() = 0;
    virtual unsigned long GetFileLength() = 0;
    virtual unsigned long GetFileRemaining() = 0;

    virtual IAIFile& operator<<(char value) = 0;
    virtual IAIFile& operator<<(unsigned char value) = 0;
    virtual IAIFile& operator<<(bool const& value) = 0;
    virtual IAIFile& operator<<(short value) = 0;
    virtual IAIFile& operator<<(unsigned short value) = 0;
    virtual IAIFile& operator<<(int value) = 0;
    virtual IAIFile& operator<<(unsigned int value) = 0;
    virtual IAIFile& operator<<(long value) = 0;
    virtual IAIFile& operator<<(unsigned long value) = 0;
    virtual IAIFile& operator<<(long long const& value) = 0;
    virtual IAIFile& operator<<(unsigned long long const& value) = 0;
    virtual IAIFile& operator<<(float value) = 0;
    virtual IAIFile& operator<<(double value) = 0;
    /// A string with its 16-bit length in front; null writes an empty one.
    virtual IAIFile& operator<<(char const* text) = 0;
    /// Lets the object write itself.
    virtual IAIFile& operator<<(VObject& object) = 0;

    virtual IAIFile& operator>>(char& value) = 0;
    virtual IAIFile& operator>>(unsigned char& value) = 0;
    virtual IAIFile& operator>>(bool& value) = 0;
    virtual IAIFile& operator>>(short& value) = 0;
    virtual IAIFile& operator>>(unsigned short& value) = 0;
    virtual IAIFile& operator>>(int& value) = 0;
    virtual IAIFile& operator>>(unsigned int& value) = 0;
    virtual IAIFile& operator>>(long& value) = 0;
    virtual IAIFile& operator>>(unsigned long& value) = 0;
    virtual IAIFile& operator>>(long long& value) = 0;
    virtual IAIFile& operator>>(unsigned long long& value) = 0;
    virtual IAIFile& operator>>(float& value) = 0;
    virtual IAIFile& operator>>(double& value) = 0;
    /// Frees the string that `*text` holds (array new) and gives a new one, owned by the caller.
    virtual IAIFile& operator>>(char** text) = 0;
    /// Lets the object read itself.
    virtual IAIFile& operator>>(VObject& object) = 0;
};

} // namespace VFoundation
