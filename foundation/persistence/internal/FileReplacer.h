#pragma once

#include <cstdio>
#include <string>

namespace VFoundation {

/// Writes the next version of a file so that the present one is lost at no moment: into a temporary file beside
/// it, which takes the file's place when it is complete and on the disk.
///
///     FileReplacer replacer(path);
///     saved = replacer.Stream() && Print(replacer.Stream()) && replacer.Commit();
///
/// The permissions and, as far as the system allows, the owner of the file stay; symbolic links are followed;
/// other names of the file (hard links) keep the old version. A file that may not be written is not replaced. Where the directory
/// refuses the temporary file, and for what is not a regular file, the bytes go where they are meant to be at
/// once.
///
/// Without `Commit()` the temporary file is removed. A process that is killed leaves it behind, under the
/// file's name with a number and ".tmp" appended.
///
/// Ownership: owns its stream.
/// Threads: one thread at a time. Of several writers of one file the last to commit wins.
class FileReplacer {
  public:
    explicit FileReplacer(char const* path);
    FileReplacer(FileReplacer const&) = delete;
    FileReplacer& operator=(FileReplacer const&) = delete;
    ~FileReplacer();

    /// Where to write (borrowed; do not close); null when `path` cannot be written.
    std::FILE* Stream() const noexcept { return m_stream; }
    /// Closes the stream and puts the file into place. False when a byte did not arrive on the disk; the file
    /// is as it was then, unless it had to be written in place.
    bool Commit();

  private:
    void OpenTemporary(unsigned mode);
    void OpenInPlace() noexcept;
    bool CloseStream() noexcept;

    std::string m_target;    // symbolic links resolved
    std::string m_temporary; // empty when writing in place
    std::FILE* m_stream = nullptr;
};

} // namespace VFoundation
