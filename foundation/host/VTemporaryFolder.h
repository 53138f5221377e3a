#pragma once

#include "foundation/core/Export.h"
#include "foundation/host/VFileSystem.h"

#include <string>

namespace VFoundation {

/// An empty folder of this program's own, for as long as the object lives.
///
///     VTemporaryFolder const folder;
///     if (folder.Made()) { ... folder.Path() + "/part-1" ... }
///
/// Only the user may open it. The destructor removes it with all that is in it. A program that is killed leaves it.
///
/// Ownership: owns the folder.
/// Threads: one thread at a time; any number may ask for the path.
/// Memory: without it `std::bad_alloc`.
class VFOUNDATION_API VTemporaryFolder {
  public:
    /// In `folder`; by default in `VSpecialFolders::Path(kTemporary)`.
    explicit VTemporaryFolder(std::string const& folder = {});
    VTemporaryFolder(VTemporaryFolder const&) = delete;
    VTemporaryFolder& operator=(VTemporaryFolder const&) = delete;
    ~VTemporaryFolder();

    /// Empty when there is none.
    std::string const& Path() const noexcept { return m_path; }
    /// Whether the folder could be made, else why not.
    VFileSystem::Result const& Made() const noexcept { return m_made; }

  private:
    std::string m_path;
    VFileSystem::Result m_made;
};

} // namespace VFoundation
