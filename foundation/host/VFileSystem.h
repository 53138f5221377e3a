#pragma once

#include "foundation/core/Export.h"

#include <cstddef>
#include <string>
#include <system_error>

namespace VFoundation {

class VString;

/// Makes, copies, moves and removes files and folders.
///
///     if (auto const copied = VFileSystem::Copy("a.png", "saved/a.png"); !copied) {
///         VLog::Trace("%s\n", copied.ErrorDescription().CString());
///     }
///
/// What a copy or a move makes appears whole or not at all: a copy is written under another name in the target's folder
/// and takes its name when it is complete. A process that is killed meanwhile leaves that name,
/// ".vfoundation-<process>-<number>.tmp". Nothing is synced to the disk. Symbolic links are copied, moved and removed as
/// links.
///
/// Ownership: no instances.
/// Threads: any thread. What other programs do to the same paths meanwhile shows as an error or as their result.
/// Memory: without it `std::bad_alloc`.
class VFOUNDATION_API VFileSystem {
  public:
    VFileSystem() = delete;

    /// What became of an operation: true when it was done, else the reason.
    class [[nodiscard]] Result {
      public:
        /// Done.
        Result() noexcept = default;
        /// `operation` is what failed, as in "cannot read a/b".
        Result(std::string operation, std::error_code error);

        explicit operator bool() const noexcept { return !m_error; }
        std::error_code Error() const noexcept { return m_error; }
        /// "<what failed>: <the system's reason>"; empty when it was done.
        VString ErrorDescription() const;

      private:
        std::string m_operation;
        std::error_code m_error;
    };

    /// What a copy or a move does when there is something at the target.
    enum class Existing {
        kKeep, ///< It fails with `std::errc::file_exists`.
        /// It takes the place of a file, a link or an empty folder. It fails where a folder that is not empty, a pipe, a
        /// socket or a device is.
        kReplace
    };

    /// Makes a folder and those that it lies in. Done as well when the folder is there.
    static Result MakeFolder(std::string const& path);
    /// Copies a file or a link, or a folder with all that is in it. Permissions are kept, times and owners are not.
    /// Fails on pipes, sockets and devices, and for a folder that would be copied into itself.
    static Result Copy(std::string const& from, std::string const& to, Existing existing = Existing::kKeep);
    /// Gives a file or folder another path. To another file system it is copied, then removed at its old path; should
    /// the removal fail, both are there and the result is its error.
    static Result Move(std::string const& from, std::string const& to, Existing existing = Existing::kKeep);
    /// Removes a file, a link or an empty folder. Done as well when there is none.
    static Result Remove(std::string const& path);
    /// Removes a folder with all that is in it; links are removed and not followed. Refuses the empty path, "/", and paths
    /// that end in "." or "..". An error ends it, with part of the folder gone.
    static Result RemoveAll(std::string const& path);
};

} // namespace VFoundation
