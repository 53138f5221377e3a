#include "tools/vfinspect/ByteSource.h"

#include "foundation/persistence/internal/Crc32.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfinspect {

ByteSource::~ByteSource() {
    if (m_file >= 0) {
        ::close(m_file);
    }
}

std::unique_ptr<ByteSource> ByteSource::Open(char const* path, std::string& error) {
    int const file =
        ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK); // does not wait for the writer of a FIFO
    struct stat state {};
    if (file < 0 || ::fstat(file, &state) != 0) {
        error = std::strerror(errno);
        if (file >= 0) {
            ::close(file);
        }
        return nullptr;
    }
    std::unique_ptr<ByteSource> source(new ByteSource(file, static_cast<std::uint64_t>(state.st_size)));
    if (!S_ISREG(state.st_mode)) {
        error = "not a regular file";
        return nullptr;
    }
    return source;
}

/// The bytes at hand from `offset` on; empty past the end, and where the file cannot be read.
std::string_view ByteSource::Window(std::uint64_t offset) {
    if (offset >= m_size) {
        return {};
    }
    if (m_file < 0) {
        return m_memory.substr(offset);
    }
    if (offset < m_windowStart || offset - m_windowStart >= m_window.size()) {
        m_window.resize(kWindowSize);
        m_windowStart = offset;
        ::ssize_t const count =
            ::pread(m_file, m_window.data(), m_window.size(), static_cast<::off_t>(offset));
        m_window.resize(static_cast<std::size_t>(std::max<::ssize_t>(count, 0)));
    }
    std::size_t const start = offset - m_windowStart;
    return std::string_view(m_window.data(), m_window.size()).substr(std::min(start, m_window.size()));
}

std::size_t ByteSource::Read(std::uint64_t offset, void* to, std::size_t count) {
    std::size_t read = 0;
    while (read < count) {
        std::string_view const window = Window(offset + read).substr(0, count - read);
        if (window.empty()) {
            break;
        }
        std::memcpy(static_cast<char*>(to) + read, window.data(), window.size());
        read += window.size();
    }
    return read;
}

std::uint64_t ByteSource::Find(std::uint8_t byte, std::uint64_t offset) {
    for (std::string_view window = Window(offset); !window.empty(); window = Window(offset)) {
        std::size_t const found = window.find(static_cast<char>(byte));
        if (found != std::string_view::npos) {
            return offset + found;
        }
        offset += window.size();
    }
    return m_size;
}

std::uint64_t ByteSource::FindOther(std::uint8_t byte, std::uint64_t offset) {
    for (std::string_view window = Window(offset); !window.empty(); window = Window(offset)) {
        std::size_t const found = window.find_first_not_of(static_cast<char>(byte));
        if (found != std::string_view::npos) {
            return offset + found;
        }
        offset += window.size();
    }
    return m_size;
}

std::string ByteSource::Text(std::uint64_t offset, std::uint64_t count) {
    std::string text(offset < m_size ? std::min(count, m_size - offset) : 0, '\0');
    text.resize(Read(offset, text.data(), text.size()));
    return text;
}

std::uint8_t ByteSource::Byte(std::uint64_t offset) {
    std::uint8_t byte = 0;
    Read(offset, &byte, 1);
    return byte;
}

std::uint64_t ByteSource::Number(std::uint64_t offset, unsigned bytes, bool littleEndian) {
    std::uint8_t read[8] = {};
    Read(offset, read, std::min(bytes, 8U));
    std::uint64_t number = 0;
    for (unsigned i = 0; i < bytes; ++i) {
        number = number << 8 | read[littleEndian ? bytes - 1 - i : i];
    }
    return number;
}

std::uint32_t ByteSource::Checksum(std::uint64_t offset, std::uint64_t length) {
    VFoundation::Crc32 sum;
    unsigned char block[4096];
    while (length > 0) {
        std::size_t const count = Read(offset, block, std::min<std::uint64_t>(length, sizeof block));
        if (count == 0) {
            break; // the file became shorter
        }
        sum.Add(block, count);
        offset += count;
        length -= count;
    }
    return sum.Value();
}

} // namespace vfinspect
