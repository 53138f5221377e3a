#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>
#include <vector>

/// What the library needs of the operating system beyond the C library: what a port to another system replaces.
namespace VFoundation::HostServices {

/// `fopen`, with a descriptor that is closed on exec.
std::FILE* OpenStream(char const* path, char const* mode) noexcept;

/// Opens a regular file for reading, with a descriptor that is closed on exec. Null for anything else that `path` may
/// lead to, with `errno`: EISDIR for a folder, ENOTSUP for what is neither. Never waits for the other end of a pipe.
std::FILE* OpenRegularFile(char const* path) noexcept;

/// The file type and permission bits of what `path` leads to. False when it leads to nothing.
bool ModeOfPath(char const* path, unsigned long& mode) noexcept;

/// What stands at a path itself: links are not followed.
struct PathStatus {
    enum class Type { kFile, kFolder, kLink, kOther };
    Type type = Type::kOther;
    std::uint64_t size = 0;    // in bytes
    std::int64_t modified = 0; // in seconds since 1970
};
std::error_code StatusOfPath(char const* path, PathStatus& status) noexcept;

/// Gives what is at `from` the path `to`. Unless it `replaces`, what is at `to` stays, and the error is
/// `std::errc::file_exists`.
std::error_code Rename(char const* from, char const* to, bool replaces) noexcept;

/// A descriptor for the system's calls that take a folder and a name in it; it is closed on exec, and the folder need
/// not be readable. -1 with `errno`.
int OpenFolder(char const* path) noexcept;

/// A descriptor of an empty file without a name, for reading and writing, in memory where the system has such files; it
/// is closed on exec. -1 with `errno`.
int OpenUnnamedFile() noexcept;

/// What the paths of temporary files and folders end in; six characters of it are filled in.
inline constexpr char const* kTemporaryPattern = "/vfoundation-XXXXXX";
/// Makes the file or folder of a path with that end, filled in, for the user alone. Null or false with `errno`; then the
/// path stays as it was. The stream reads and writes and is closed on exec.
std::FILE* MakeTemporaryFile(char* path) noexcept;
bool MakeTemporaryFolder(char* path) noexcept;

/// A number of this process for the names of its temporary files.
long ProcessNumber() noexcept;

/// The home folder of the user who started the process by the system's table; empty when there is none. Without memory
/// `std::bad_alloc`.
std::string HomeFolder();

/// The short name of the user who started the process; empty when there is none. Without memory `std::bad_alloc`.
std::string UserName();

/// The processor's feature bits as the system tells them; the result is 0 or the system's error number.
long ProcessorFeatures(unsigned long& features) noexcept;

struct MountedVolume {
    std::string name;
    std::string mountPath;
    /// In bytes; 0 where asking might block.
    std::uint64_t totalBytes = 0;
    std::uint64_t freeBytes = 0;
};

/// The mounted volumes that `VDiskInfo` lists, in the order of the system's table. Without memory `std::bad_alloc`.
std::vector<MountedVolume> MountedVolumes();

} // namespace VFoundation::HostServices
