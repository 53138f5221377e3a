#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <cstdio>
#include <string>

namespace VFoundation {

class VString;

/// A file that is open for reading.
///
///     VFile file;
///     if (file.OpenForReading("/etc/hosts")) { got = file.ReadBytes(buffer, sizeof buffer); }
///
/// Only regular files open, also through symbolic links: directories, devices and pipes are refused, and a pipe without
/// a writer does not block. On a file that is not open every query gives zero.
///
/// Ownership: owns its stream, which the destructor closes.
/// Threads: one thread at a time.
class VFOUNDATION_API VFile : public Registered<VFile, VObject> {
  public:
    static constexpr char const* kClassName = "VFile";
    static VClass* ms_theClass;

    // Where `FileSeek` counts from. These are not the C library's numbers.
    static constexpr long kFromCurrent = 0;
    static constexpr long kFromStart = 1;
    static constexpr long kFromEnd = 2;

    explicit VFile(VClass* cls = nullptr);
    VFile(VFile const&) = delete;
    VFile& operator=(VFile const&) = delete;
    ~VFile() override;

    /// DELIBERATE: a file cannot be made by name; always null.
    static VObject* New() { return nullptr; }
    static void InitializeClass() {}

    /// False when the file cannot be opened (see `ErrorDescription`), or when one is open already, which stays.
    bool OpenForReading(VString const& path);
    /// The bytes read, fewer than `count` at the end of the file and when reading fails (see `ReadError`).
    unsigned long ReadBytes(void* buffer, unsigned long count);

    /// The length in bytes; the position stays.
    virtual long GetLength();
    /// Bytes from the start.
    virtual long GetPosition();
    /// Length less position; negative past the end.
    virtual long GetLengthRemaining();
    /// True once a read reached the end, and when no file is open.
    virtual bool IsEndOfFile();
    /// Moves the position by `offset` bytes from one of the origins above; any other origin does nothing.
    /// DELIBERATE: always true, also when nothing moved.
    virtual bool FileSeek(long offset, long origin);
    /// The system's error number of the first read that failed since the file was opened; 0 when none did. The end of
    /// the file is no error.
    virtual int ReadError() const noexcept { return m_readError; }
    /// Why the last `OpenForReading` failed, else the first `ReadBytes` that failed since, with the path, the offset and
    /// the system's reason, as in "cannot open a/b: No such file or directory"; empty when nothing failed. Without
    /// memory `std::bad_alloc`.
    virtual VString ErrorDescription() const;
    /// The system's reason alone why the last `OpenForReading` failed. Without memory `std::bad_alloc`.
    std::string OpenErrorText() const;

    /// The one place where the library opens files by mode: `fopen`, closed on exec. Null when that fails, and for null.
    static std::FILE* vfc_fopen(char const* path, char const* mode);
    static std::FILE* vfc_fopen(VString const& path, char const* mode);
    /// Opens a regular file for reading in binary mode, closed on exec. Null for anything else that `path` leads to;
    /// never waits for the other end of a pipe. Links are followed.
    static std::FILE* OpenRegularFile(char const* path);

  private:
    std::FILE* m_stream = nullptr;
    int m_readError = 0;
    int m_openError = 0;
    long m_errorOffset = 0;
    std::string m_path; // of the last file; empty when memory ran out
};

} // namespace VFoundation
