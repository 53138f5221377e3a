#include "foundation/host/VFile.h"

#include "foundation/host/internal/HostServices.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <system_error>

namespace VFoundation {

VClass* VFile::ms_theClass = nullptr;

VFile::VFile(VClass* cls) : Registered(cls) {
}

VFile::~VFile() {
    if (m_stream && std::fclose(m_stream) == 0) {
        m_stream = nullptr;
    }
}

bool VFile::OpenForReading(VString const& path) {
    if (m_stream) {
        return false;
    }
    m_readError = 0;
    m_stream = OpenRegularFile(path.CString());
    m_openError = m_stream ? 0 : errno;
    try {
        m_path = path.CString();
    } catch (std::bad_alloc const&) {
        m_path.clear();
    }
    return m_stream != nullptr;
}

unsigned long VFile::ReadBytes(void* buffer, unsigned long count) {
    if (!m_stream || !buffer) {
        return 0;
    }
    errno = 0;
    unsigned long const read = std::fread(buffer, 1, count, m_stream);
    if (read < count && std::ferror(m_stream) != 0 && m_readError == 0) {
        m_readError = errno ? errno : EIO;
        m_errorOffset = std::ftell(m_stream);
    }
    return read;
}

std::string VFile::OpenErrorText() const {
    return m_openError == ENOTSUP ? "not a regular file" : std::system_category().message(m_openError);
}

VString VFile::ErrorDescription() const {
    std::string text;
    if (m_openError != 0) {
        text = "cannot open " + m_path + ": " + OpenErrorText();
    } else if (m_readError != 0) {
        text = "cannot read " + m_path + " at offset " + std::to_string(m_errorOffset) + ": " +
               std::system_category().message(m_readError);
    }
    return VString(text.c_str());
}

long VFile::GetLength() {
    if (!m_stream) {
        return 0;
    }
    long const saved = GetPosition();
    FileSeek(0, kFromEnd);
    long const length = GetPosition();
    FileSeek(saved, kFromStart);
    return length;
}

long VFile::GetPosition() {
    return m_stream ? std::max(std::ftell(m_stream), 0L) : 0;
}

long VFile::GetLengthRemaining() {
    return m_stream ? GetLength() - GetPosition() : 0;
}

bool VFile::IsEndOfFile() {
    return !m_stream || std::feof(m_stream) != 0;
}

bool VFile::FileSeek(long offset, long origin) {
    constexpr int kOrigins[] = {SEEK_CUR, SEEK_SET, SEEK_END};
    if (m_stream && origin >= kFromCurrent && origin <= kFromEnd) {
        std::fseek(m_stream, offset, kOrigins[origin]);
    }
    return true;
}

std::FILE* VFile::vfc_fopen(char const* path, char const* mode) {
    return path && mode ? HostServices::OpenStream(path, mode) : nullptr;
}

std::FILE* VFile::vfc_fopen(VString const& path, char const* mode) {
    return vfc_fopen(path.CString(), mode);
}

std::FILE* VFile::OpenRegularFile(char const* path) {
    return path ? HostServices::OpenRegularFile(path) : nullptr;
}

} // namespace VFoundation
