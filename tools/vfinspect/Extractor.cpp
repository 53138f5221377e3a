#include "tools/vfinspect/Extractor.h"

#include "tools/vfinspect/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <ostream>
#include <sys/stat.h>
#include <unistd.h>

namespace vfinspect {

namespace {

/// The last component of `name` in characters that every file system and every shell takes.
std::string SafeName(std::string const& name) {
    constexpr std::size_t kMost = 100;
    std::size_t const slash = name.find_last_of("/\\");
    std::string safe = name.substr(slash == std::string::npos ? 0 : slash + 1, kMost);
    std::replace_if(
        safe.begin(), safe.end(),
        [](char c) {
            bool const isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
            return !isLetter && !(c >= '0' && c <= '9') && c != '.' && c != '-' && c != '_' &&
                   (c & 0x80) == 0;
        },
        '_');
    return safe.empty() ? "part" : safe;
}

bool CopyBytes(ByteSource& source, Report::Part const& part, int file) {
    std::array<char, 64UL * 1024> block;
    for (std::uint64_t done = 0; done < part.length;) {
        std::size_t const wanted = std::min<std::uint64_t>(block.size(), part.length - done);
        std::size_t const count = source.Read(part.offset + done, block.data(), wanted);
        errno = EIO; // for a file that became shorter
        if (count == 0 || ::write(file, block.data(), count) != static_cast<::ssize_t>(count)) {
            return false;
        }
        done += count;
    }
    return true;
}

bool WritePart(ByteSource& source, Report::Part const& part, std::string const& path) {
    int const file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0) {
        return false;
    }
    bool const isWritten = CopyBytes(source, part, file);
    int const error = errno;
    bool const isClosed = ::close(file) == 0;
    errno = isWritten ? errno : error;
    if (!isWritten || !isClosed) {
        int const kept = errno;
        ::unlink(path.c_str());
        errno = kept;
        return false;
    }
    return true;
}

} // namespace

bool Extract(ByteSource& source, Report const& report, std::string const& folder, std::ostream& out,
             std::string& error) {
    if (report.Parts().empty()) {
        error = "nothing in it to extract";
        return false;
    }
    if (::mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
        error = Printable(folder) + ": " + std::strerror(errno);
        return false;
    }
    for (std::size_t i = 0; i < report.Parts().size(); ++i) {
        Report::Part const& part = report.Parts()[i];
        std::string const path = folder + '/' + std::to_string(i + 1) + '-' + SafeName(part.name);
        if (!WritePart(source, part, path)) {
            error = Printable(path, 500) + ": " + std::strerror(errno);
            return false;
        }
        out << Printable(path, 500) << '\n';
    }
    return true;
}

} // namespace vfinspect
