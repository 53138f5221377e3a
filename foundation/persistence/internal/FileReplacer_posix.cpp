#include "foundation/persistence/internal/FileReplacer.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace VFoundation {

namespace {

constexpr unsigned kPermissionBits = 07777;
constexpr std::size_t kStreamBuffer = 1 << 16;

/// The path with its symbolic links followed; as it stands when there is no such file.
std::string Resolved(char const* path) {
    struct Free {
        void operator()(char* text) const noexcept { std::free(text); }
    };
    std::unique_ptr<char, Free> const resolved(::realpath(path, nullptr));
    return resolved ? resolved.get() : path;
}

std::string DirectoryOf(std::string const& path) {
    std::size_t const slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// A name that no other thread or process is using, most likely.
std::string TemporaryName(std::string const& target) {
    static std::atomic<unsigned> s_serial{0};
    return target + '.' + std::to_string(::getpid()) + '-' + std::to_string(s_serial++) + ".tmp";
}

std::FILE* StreamOn(int descriptor) noexcept {
    std::FILE* const stream = descriptor < 0 ? nullptr : ::fdopen(descriptor, "wb");
    if (stream) {
        std::setvbuf(stream, nullptr, _IOFBF, kStreamBuffer);
    } else if (descriptor >= 0) {
        ::close(descriptor);
    }
    return stream;
}

/// True also for what has no disk behind it.
bool Sync(int descriptor) noexcept {
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// Gives an open file the owner, if the process may do that, and the permissions in `status`.
bool TakeOver(int descriptor, struct stat const& status) noexcept {
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<::uid_t>(-1), status.st_gid) != 0) {
        errno = 0; // the writer's own owner and group have to do
    }
    return ::fchmod(descriptor, status.st_mode & kPermissionBits) == 0;
}

void SyncDirectory(std::string const& path) noexcept {
    int const descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        Sync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

FileReplacer::FileReplacer(char const* path) : m_target(Resolved(path)) {
    struct stat status {};
    if (::lstat(m_target.c_str(), &status) != 0) {
        OpenTemporary(0666);
        return;
    }
    if (!S_ISREG(status.st_mode)) {
        OpenInPlace();
        return;
    }
    if (::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0) {
        return;
    }
    OpenTemporary(0600);
    if (m_stream && !m_temporary.empty() && !TakeOver(::fileno(m_stream), status)) {
        CloseStream();
        ::unlink(m_temporary.c_str());
    }
}

FileReplacer::~FileReplacer() {
    if (m_stream) {
        std::fclose(m_stream);
        if (!m_temporary.empty()) {
            ::unlink(m_temporary.c_str());
        }
    }
}

void FileReplacer::OpenTemporary(unsigned mode) {
    int descriptor = -1;
    do {
        m_temporary = TemporaryName(m_target);
        descriptor = ::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor < 0 && errno == EEXIST);
    bool const isRefused = descriptor < 0 && (errno == EACCES || errno == EPERM || errno == ENAMETOOLONG);
    m_stream = StreamOn(descriptor);
    if (descriptor >= 0 && !m_stream) {
        ::unlink(m_temporary.c_str());
    }
    if (isRefused) {
        m_temporary.clear();
        OpenInPlace();
    }
}

/// Does not wait for the reader of a pipe; there has to be one.
void FileReplacer::OpenInPlace() noexcept {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    int const descriptor = ::open(m_target.c_str(), kFlags, 0666);
    if (descriptor >= 0) {
        ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    }
    m_stream = StreamOn(descriptor);
}

bool FileReplacer::CloseStream() noexcept {
    std::FILE* const stream = std::exchange(m_stream, nullptr);
    bool const written = std::fflush(stream) == 0 && std::ferror(stream) == 0 && Sync(::fileno(stream));
    return std::fclose(stream) == 0 && written;
}

bool FileReplacer::Commit() {
    if (!m_stream) {
        return false;
    }
    bool const written = CloseStream();
    if (m_temporary.empty()) {
        return written;
    }
    if (!written || ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        ::unlink(m_temporary.c_str());
        return false;
    }
    SyncDirectory(DirectoryOf(m_target));
    return true;
}

} // namespace VFoundation
