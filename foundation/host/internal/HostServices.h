#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

/// What the library needs of the operating system beyond the C library: what a port to another system replaces.
namespace VFoundation::HostServices {

/// `fopen`, with a descriptor that is closed on exec.
std::FILE* OpenStream(char const* path, char const* mode) noexcept;

/// Opens a regular file for reading, with a descriptor that is closed on exec; null for anything else that `path` may
/// lead to. Never waits for the other end of a pipe.
std::FILE* OpenRegularFile(char const* path) noexcept;

/// The file type and permission bits of what `path` leads to. False when it leads to nothing.
bool ModeOfPath(char const* path, unsigned long& mode) noexcept;

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
