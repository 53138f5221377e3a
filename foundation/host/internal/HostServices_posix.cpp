#include "foundation/host/internal/HostServices.h"

#include <algorithm>
#include <cerrno>
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
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        if (std::FILE* const stream = ::fdopen(descriptor, "rb")) {
            return stream;
        }
    }
    ::close(descriptor);
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

std::string UserName() {
    ::uid_t const user = ::getuid();
    char login[256] = {};
    if (user == 0 && ::getlogin_r(login, sizeof login) == 0 && *login) {
        return login;
    }
    constexpr std::size_t kLargestEntry = 1 << 20;
    std::string buffer(1024, '\0');
    struct passwd entry {};
    struct passwd* found = nullptr;
    while (::getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found) == ERANGE &&
           buffer.size() < kLargestEntry) {
        buffer.resize(buffer.size() * 2);
    }
    return found && found->pw_name ? found->pw_name : "";
}

} // namespace VFoundation::HostServices
