#include "foundation/host/internal/HostServices.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace VFoundation::HostServices {

std::FILE* OpenStream(char const* path, char const* mode) noexcept {
    // 'e' closes on exec. It stands second, as the C library looks at the first few characters only.
    char modeClosedOnExec[64] = {};
    std::size_t const length = std::strlen(mode);
    if (length == 0 || length + 1 >= sizeof modeClosedOnExec) {
        std::FILE* const stream = std::fopen(path, mode);
        if (stream) {
            ::fcntl(::fileno(stream), F_SETFD, FD_CLOEXEC);
        }
        return stream;
    }
    modeClosedOnExec[0] = mode[0];
    modeClosedOnExec[1] = 'e';
    std::copy_n(mode + 1, length - 1, modeClosedOnExec + 2);
    return std::fopen(path, modeClosedOnExec);
}

std::FILE* OpenRegularFile(char const* path) noexcept {
    int const descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    struct stat status {};
    if (::fstat(descriptor, &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            errno = S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP;
        } else if (std::FILE* const stream = ::fdopen(descriptor, "rb")) {
            return stream;
        }
    }
    int const error = errno;
    ::close(descriptor);
    errno = error;
    return nullptr;
}

bool ModeOfPath(char const* path, unsigned long& mode) noexcept {
    struct stat status {};
    if (::stat(path, &status) != 0) {
        return false;
    }
    mode = status.st_mode;
    return true;
}

std::error_code StatusOfPath(char const* path, PathStatus& result) noexcept {
    struct stat status {};
    if (::lstat(path, &status) != 0) {
        return {errno, std::system_category()};
    }
    using Type = PathStatus::Type;
    result.type = S_ISREG(status.st_mode)   ? Type::kFile
                  : S_ISDIR(status.st_mode) ? Type::kFolder
                  : S_ISLNK(status.st_mode) ? Type::kLink
                                            : Type::kOther;
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.modified = status.st_mtime;
    return {};
}

bool MakeTemporaryFolder(char* path) noexcept {
    return ::mkdtemp(path) != nullptr;
}

long ProcessNumber() noexcept {
    return ::getpid();
}

namespace {

/// A text of the user's entry in the system's table; empty when there is none.
std::string UserEntry(char* passwd::*text) {
    constexpr std::size_t kLargestEntry = 1 << 20;
    std::string buffer(1024, '\0');
    struct passwd entry {};
    struct passwd* found = nullptr;
    while (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE &&
           buffer.size() < kLargestEntry) {
        buffer.resize(buffer.size() * 2);
    }
    return found && found->*text ? found->*text : "";
}

} // namespace

std::string HomeFolder() {
    return UserEntry(&passwd::pw_dir);
}

std::string UserName() {
    char login[256] = {};
    if (::getuid() == 0 && ::getlogin_r(login, sizeof login) == 0 && *login) {
        return login;
    }
    return UserEntry(&passwd::pw_name);
}

} // namespace VFoundation::HostServices
