#pragma once

#include "foundation/core/Export.h"
#include "foundation/host/VFileSystem.h"

#include <cstdio>
#include <string>

namespace VFoundation {

/// An empty file of this program's own, open for reading and writing, for as long as the object lives.
///
///     VTemporaryFile file;
///     if (file.Stream()) { std::fputs("draft", file.Stream()); }
///
/// Only the user may open it, and it is closed on exec. The destructor closes and removes it, unless it was moved away.
/// A program that is killed leaves it.
///
/// Ownership: owns the stream and the file.
/// Threads: one thread at a time.
/// Memory: without it `std::bad_alloc`.
class VFOUNDATION_API VTemporaryFile {
  public:
    /// In `folder`; by default in `VSpecialFolders::Path(kTemporary)`.
    explicit VTemporaryFile(std::string const& folder = {});
    VTemporaryFile(VTemporaryFile const&) = delete;
    VTemporaryFile& operator=(VTemporaryFile const&) = delete;
    ~VTemporaryFile();

    /// Where to read and write (borrowed; do not close); null when the file could not be made, and once it was kept.
    std::FILE* Stream() const noexcept { return m_stream; }
    /// Empty when there is none.
    std::string const& Path() const noexcept { return m_path; }
    /// Why there is no file.
    VFileSystem::Result const& Made() const noexcept { return m_made; }

    /// Closes the file and gives it a path in the same file system, where it stays. On failure, writing included, it is
    /// removed.
    VFileSystem::Result Keep(std::string const& path,
                             VFileSystem::Existing existing = VFileSystem::Existing::kKeep);

  private:
    std::string m_path;
    std::FILE* m_stream = nullptr;
    VFileSystem::Result m_made;
};

} // namespace VFoundation
