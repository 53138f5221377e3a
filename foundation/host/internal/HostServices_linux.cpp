#include "foundation/host/internal/HostServices.h"

#include "foundation/host/internal/MountTable_linux.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace VFoundation::HostServices {

std::vector<MountedVolume> MountedVolumes() {
    return MountTable::Volumes("/proc/self/mountinfo", "/dev/disk/by-label");
}

std::error_code Rename(char const* from, char const* to, bool replaces) noexcept {
    bool isRenamed = false;
    if (!replaces) {
        isRenamed = ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0;
        if (!isRenamed && (errno == EINVAL || errno == ENOSYS)) { // not every file system knows the flag
            struct stat status {};
            errno = EEXIST;
            isRenamed = ::lstat(to, &status) != 0 && ::rename(from, to) == 0;
        }
    } else {
        isRenamed = ::rename(from, to) == 0;
    }
    return isRenamed ? std::error_code() : std::error_code(errno, std::system_category());
}

std::FILE* MakeTemporaryFile(char* path) noexcept {
    int const descriptor = ::mkostemp(path, O_CLOEXEC);
    std::FILE* const stream = descriptor < 0 ? nullptr : ::fdopen(descriptor, "w+b");
    if (!stream && descriptor >= 0) {
        int const error = errno;
        ::close(descriptor);
        ::unlink(path);
        errno = error;
    }
    return stream;
}

int OpenFolder(char const* path) noexcept {
    return ::open(path, O_PATH | O_DIRECTORY | O_CLOEXEC);
}

int OpenUnnamedFile() noexcept {
    return ::memfd_create("vfoundation", MFD_CLOEXEC);
}

long ProcessorFeatures(unsigned long& features) noexcept {
    errno = 0;
    features = ::getauxval(AT_HWCAP);
    return features ? 0 : errno;
}

} // namespace VFoundation::HostServices
