#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VData.h"

#include <atomic>
#include <cstdio>

namespace VFoundation {

class VString;

/// Tests paths and reads whole files. One manager serves the process: `DefaultManager()`.
///
/// Ownership: the default manager is the class's; callers borrow it.
/// Threads: any thread; `DeleteDefaultManager` while no other thread uses the manager.
class VFOUNDATION_API VFileManager : public Registered<VFileManager, VObject> {
  public:
    static constexpr char const* kClassName = "VFileManager";
    static VClass* ms_theClass;

    explicit VFileManager(VClass* cls = nullptr);
    VFileManager(VFileManager const&) = delete;
    VFileManager& operator=(VFileManager const&) = delete;
    ~VFileManager() override;

    static VFileManager* New();
    static void InitializeClass();
    static void UninitializeClass();

    /// Made on first use. Without memory `std::bad_alloc`.
    static VFileManager* DefaultManager();
    static void DeleteDefaultManager();

    /// True when `path` leads to anything, symbolic links followed. `isDirectory` may be null; it is set to
    /// false first.
    /// DELIBERATE: one bit of the mode tells a directory, which sockets and block devices have
    /// too; they are reported as directories.
    bool FileExistsAtPath(VString const& path, bool* isDirectory) const;

    /// The bytes of a regular file; empty (a null reference) when it cannot be opened, and when reading it fails.
    /// Bytes that are cut off while it is read are zero. A file of 4 GiB or more, or one that memory
    /// cannot hold, throws a `VException` with id 1; without memory for the buffer object itself `std::bad_alloc`.
    VObjectRef<VData> ContentsAtPath(char const* path) const;

    /// '/'.
    static char HostFileSystemPathComponentSeparator() noexcept { return '/'; }
    /// Makes every backslash a '/' in place; null is ignored.
    static void MakePathUseHostSeparator(char* path) noexcept;

    /// `VFile::vfc_fopen`.
    static std::FILE* vfc_fopen(char const* path, char const* mode);
    static std::FILE* vfc_fopen(VString const& path, char const* mode);

    static std::atomic<VFileManager*> ms_defaultManager;

  private:
    VObjectRef<VObject> m_owned; // never set by this class
};

} // namespace VFoundation
