#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace VFoundation {

/// Writes the next version of a file without ever losing the present one: the new version goes into a temporary file
/// in the same directory, which replaces the file when it is complete and on the disk.
///
///     FileReplacer replacer(path);
///     saved = replacer.Stream() && Print(replacer.Stream()) && replacer.Commit();
///
/// The file keeps its permissions and, if the process may set it, its owner. Symbolic links are followed; other names
/// of the file (hard links) keep the old version. A file that may not be written is not replaced.
///
/// A directory may not let the temporary file be created. The new version is then collected in memory and written over
/// the old one by `Commit`, once there is room for it on the disk; only a crash or an error of the disk at that moment
/// loses the old version. The same way serves pipes and devices.
///
/// Without `Commit()` the temporary file is removed. A process that is killed leaves it, as ".vfoundation-<process>-
/// <number>.tmp".
///
/// Ownership: owns its stream.
/// Threads: one thread at a time. Of several writers of one file the last to commit wins.
class FileReplacer {
  public:
    /// Throws `std::bad_alloc` only, with no file touched.
    explicit FileReplacer(char const* path);
    FileReplacer(FileReplacer const&) = delete;
    FileReplacer& operator=(FileReplacer const&) = delete;
    ~FileReplacer();

    /// Where to write (borrowed; do not close); null when `path` cannot be written.
    std::FILE* Stream() const noexcept { return m_stream; }
    /// Closes the stream and replaces the file. False when a byte may not have reached the disk; the file is as it was
    /// then, but for the case of a write over the old version described above.
    bool Commit() noexcept;
    /// The system's error number when there is no stream or `Commit` failed; 0 when the system gave none.
    int Error() const noexcept { return m_error; }

  private:
    void Open(char const* folder) noexcept;
    void OpenTemporary(unsigned mode) noexcept;
    void OpenInPlace() noexcept;
    void OpenStream(int descriptor) noexcept;
    bool FlushStream() noexcept;
    bool CommitInPlace() noexcept;
    bool CommitTemporary() noexcept;
    void Discard() noexcept;

    std::string m_target;      // symbolic links followed
    char const* m_name = "";   // its last component
    int m_directory = -1;      // where it is
    char m_temporary[64] = ""; // in that directory; empty when writing in place
    int m_inPlace = -1;        // the target when writing in place
    int m_error = 0;
    std::unique_ptr<char[]> m_buffer; // of the stream, which is closed before
    std::FILE* m_stream = nullptr;    // on the temporary file, or on the one in memory
};

} // namespace VFoundation
