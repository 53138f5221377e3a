#include "foundation/persistence/internal/FileReplacer.h"

#include "foundation/host/internal/HostServices.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace VFoundation {

namespace {

constexpr unsigned kPermissionBits = 07777;
constexpr std::size_t kStreamBuffer = 1 << 16;
constexpr int kMostLinks = 40;

/// The part of the path up to its last slash.
std::string DirectoryOf(std::string const& path) {
    std::size_t const slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// Where a link that leads to no file points to in the end; the path itself when it is no link.
std::string EndOfDanglingLink(std::string path) {
    char target[PATH_MAX];
    for (int i = 0; i < kMostLinks; ++i) {
        ::ssize_t const length = ::readlink(path.c_str(), target, sizeof target);
        if (length <= 0 || length == PATH_MAX) {
            break;
        }
        std::string const next(target, static_cast<std::size_t>(length));
        path = next.front() == '/' ? next : DirectoryOf(path) + next;
    }
    return path;
}

/// The path with its symbolic links followed, whether the file exists or not; empty when that fails.
std::string Resolved(char const* path) {
    struct Free {
        void operator()(char* text) const noexcept { std::free(text); }
    };
    std::unique_ptr<char, Free> const resolved(::realpath(path, nullptr));
    if (resolved) {
        return resolved.get();
    }
    if (errno != ENOENT) {
        return "";
    }
    struct stat status {};
    bool const isThere = ::stat(path, &status) == 0; // by a link like /dev/stdout, which leads to no path
    return isThere ? path : EndOfDanglingLink(path);
}

/// True also for what is not on a disk.
bool Sync(int descriptor) noexcept {
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// Gives an open file the owner, if the process may do that, and the permissions in `status`.
bool TakeOver(int descriptor, struct stat const& status) noexcept {
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<::uid_t>(-1), status.st_gid) != 0) {
        errno = 0; // it keeps the writer's owner and group
    }
    return ::fchmod(descriptor, status.st_mode & kPermissionBits) == 0;
}

bool WriteAll(int descriptor, char const* bytes, std::size_t length) noexcept {
    while (length > 0) {
        ::ssize_t const written = ::write(descriptor, bytes, length);
        if (written > 0) {
            bytes += written;
            length -= static_cast<std::size_t>(written);
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool CopyAll(int from, int to, ::off_t length) noexcept {
    char bytes[4096];
    for (::off_t done = 0; done < length;) {
        auto const size = std::min(static_cast<std::size_t>(length - done), sizeof bytes);
        ::ssize_t const got = ::pread(from, bytes, size, done);
        if (got <= 0 || !WriteAll(to, bytes, static_cast<std::size_t>(got))) {
            return false;
        }
        done += got;
    }
    return true;
}

/// Takes room on the disk for `length` bytes. False, with the file as it was, when there is not enough.
bool Reserve(int file, ::off_t length, ::off_t lengthBefore) noexcept {
    int const error = length > 0 ? ::posix_fallocate(file, 0, length) : 0;
    if (error != ENOSPC && error != EDQUOT && error != EFBIG && error != EIO) {
        return true; // also where the file system reserves nothing: writing will tell
    }
    static_cast<void>(!::ftruncate(file, lengthBefore)); // else it stays longer, by zeroes
    return false;
}

} // namespace

FileReplacer::FileReplacer(char const* path) : m_target(Resolved(path)) {
    int const unresolved = m_target.empty() ? errno : 0;
    std::string const folder = DirectoryOf(m_target);
    errno = 0;
    Open(folder.c_str());
    m_error = m_stream ? 0 : unresolved != 0 ? unresolved : errno;
}

void FileReplacer::Open(char const* folder) noexcept {
    m_name = m_target.c_str() + (m_target.rfind('/') + 1);
    m_directory = HostServices::OpenFolder(folder);
    struct stat status {};
    if (m_directory < 0) {
        return;
    }
    if (::fstatat(m_directory, m_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT && *m_name != '\0') {
            OpenTemporary(0666);
        }
    } else if (!S_ISREG(status.st_mode)) {
        OpenInPlace();
    } else if (::faccessat(m_directory, m_name, W_OK, AT_EACCESS) == 0) {
        OpenTemporary(0600);
        if (m_stream && m_inPlace < 0 && !TakeOver(::fileno(m_stream), status)) {
            Discard();
        }
    }
}

FileReplacer::~FileReplacer() {
    Discard();
    if (m_directory >= 0) {
        ::close(m_directory);
    }
}

/// Closes everything and removes the temporary file.
void FileReplacer::Discard() noexcept {
    if (m_stream) {
        std::fclose(std::exchange(m_stream, nullptr));
    }
    if (m_temporary[0] != '\0') {
        ::unlinkat(m_directory, m_temporary, 0);
        m_temporary[0] = '\0';
    }
    if (m_inPlace >= 0) {
        ::close(std::exchange(m_inPlace, -1));
    }
}

void FileReplacer::OpenTemporary(unsigned mode) noexcept {
    static std::atomic<unsigned> s_serial{0}; // relaxed: each gets another number
    int descriptor = -1;
    do {
        std::snprintf(m_temporary, sizeof m_temporary, ".vfoundation-%ld-%u.tmp", long{::getpid()},
                      s_serial.fetch_add(1, std::memory_order_relaxed));
        descriptor = ::openat(m_directory, m_temporary, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor < 0 && errno == EEXIST);
    if (descriptor < 0) {
        m_temporary[0] = '\0';
        if (errno == EACCES || errno == EPERM) {
            OpenInPlace();
        }
        return;
    }
    OpenStream(descriptor);
}

void FileReplacer::OpenStream(int descriptor) noexcept {
    m_stream = descriptor >= 0 ? ::fdopen(descriptor, "wb") : nullptr;
    if (!m_stream) {
        int const error = errno;
        ::close(descriptor);
        errno = error;
        return;
    }
    // The C library takes the size from here only together with the memory.
    m_buffer.reset(new (std::nothrow) char[kStreamBuffer]);
    if (m_buffer) {
        std::setvbuf(m_stream, m_buffer.get(), _IOFBF, kStreamBuffer);
    }
}

/// Does not wait for the reader of a pipe; there has to be one.
void FileReplacer::OpenInPlace() noexcept {
    m_inPlace = ::openat(m_directory, m_name, O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (m_inPlace >= 0) {
        ::fcntl(m_inPlace, F_SETFL, ::fcntl(m_inPlace, F_GETFL) & ~O_NONBLOCK);
        OpenStream(HostServices::OpenUnnamedFile());
    }
}

/// Hands all that was written to the system.
bool FileReplacer::FlushStream() noexcept {
    return std::fflush(m_stream) == 0 && std::ferror(m_stream) == 0;
}

bool FileReplacer::CommitInPlace() noexcept {
    struct stat status {};
    struct stat collected {};
    int const source = ::fileno(m_stream);
    if (!FlushStream() || ::fstat(m_inPlace, &status) != 0 || ::fstat(source, &collected) != 0) {
        return false;
    }
    ::off_t const length = collected.st_size;
    bool const isFile = S_ISREG(status.st_mode);
    return (!isFile || Reserve(m_inPlace, length, status.st_size)) && CopyAll(source, m_inPlace, length) &&
           (!isFile || ::ftruncate(m_inPlace, length) == 0) && Sync(m_inPlace) &&
           ::close(std::exchange(m_inPlace, -1)) == 0;
}

bool FileReplacer::CommitTemporary() noexcept {
    bool const isOnDisk = FlushStream() && Sync(::fileno(m_stream));
    return std::fclose(std::exchange(m_stream, nullptr)) == 0 && isOnDisk &&
           ::renameat(m_directory, m_temporary, m_directory, m_name) == 0;
}

bool FileReplacer::Commit() noexcept {
    if (!m_stream) {
        return false;
    }
    errno = 0;
    bool isDone = false;
    if (m_inPlace >= 0) {
        isDone = CommitInPlace();
    } else {
        isDone = CommitTemporary();
        if (isDone) {
            m_temporary[0] = '\0'; // the rename cannot be undone: what follows is no failure
            int const directory = ::openat(m_directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            if (directory >= 0) {
                Sync(directory);
                ::close(directory);
            }
        }
    }
    m_error = isDone ? 0 : errno;
    Discard();
    return isDone;
}

} // namespace VFoundation
