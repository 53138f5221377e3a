#include "foundation/persistence/BlockFile.h"

#include "foundation/host/VFile.h"
#include "foundation/persistence/internal/Crc32.h"
#include "foundation/persistence/internal/FileReplacer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <unistd.h>

namespace VFoundation {

BlockFile::BlockFile() noexcept = default;

BlockFile::~BlockFile() {
    CloseUnreplaced();
}

bool BlockFile::OpenForReading(char const* path) {
    errno = 0;
    return Open(VFile::OpenRegularFile(path), false);
}

bool BlockFile::OpenForWriting(char const* path) {
    errno = 0;
    return Open(VFile::vfc_fopen(path, "wb"), true);
}

bool BlockFile::OpenForChecksum(char const* path) {
    errno = 0;
    return Open(VFile::vfc_fopen(path, "w+b"), true);
}

bool BlockFile::OpenForReplacing(char const* path) {
    CloseUnreplaced();
    try {
        m_replacer = std::make_unique<FileReplacer>(path);
    } catch (std::bad_alloc const&) {
        m_error = ENOMEM;
        return false;
    }
    errno = m_replacer->Error();
    if (!Open(m_replacer->Stream(), true)) {
        m_replacer.reset();
        return false;
    }
    return true;
}

int BlockFile::Descriptor() const noexcept {
    return ::fileno(m_stream);
}

bool BlockFile::Refuse(int error) noexcept {
    errno = error;
    return Open(nullptr, false);
}

bool BlockFile::Open(std::FILE* stream, bool forWriting) {
    int const error = stream ? ENOMEM : errno; // without memory for the block
    if (m_stream) {
        Close();
    }
    m_failed = false;
    m_readError = 0;
    m_errorPosition = 0;
    m_error = error;
    m_block.reset(stream ? new (std::nothrow) unsigned char[kBlockSize] : nullptr);
    if (!m_block) {
        if (stream && !m_replacer) {
            std::fclose(stream);
        }
        return false;
    }
    m_stream = stream;
    std::setvbuf(stream, nullptr, _IONBF, 0); // the block is the buffer
    m_error = 0;
    m_forWriting = forWriting;
    m_atEnd = false;
    StartBlock(0);
    return true;
}

bool BlockFile::Close() {
    if (m_stream) {
        Flush();
        if (m_replacer) {
            if (!m_failed && !m_replacer->Commit()) {
                Fail(m_replacer->Error());
            }
        } else if (std::fclose(m_stream) != 0 && m_forWriting) {
            Fail(errno);
        }
        m_replacer.reset();
        m_stream = nullptr;
        m_forWriting = false;
        m_block.reset();
        StartBlock(0);
    }
    return !m_failed;
}

bool BlockFile::CloseUnreplaced() {
    if (m_replacer) {
        m_failed = true; // Close commits nothing that failed
    }
    return Close();
}

bool BlockFile::Checksum(std::uint32_t& checksum) {
    if (!m_stream || !m_forWriting || !Flush()) {
        return false;
    }
    Crc32 sum;
    for (long position = 0; position < m_blockPosition;) { // the block is empty and serves as the buffer
        auto const size = static_cast<std::size_t>(std::min(m_blockPosition - position, long{kBlockSize}));
        errno = 0;
        auto const got = ::pread(Descriptor(), m_block.get(), size, position);
        if (got <= 0) {
            return Fail(errno);
        }
        sum.Add(m_block.get(), static_cast<std::size_t>(got));
        position += got;
    }
    checksum = sum.Value();
    return true;
}

void BlockFile::StartBlock(long position) noexcept {
    m_cursor = m_windowStart = m_windowEnd = m_dataEnd = m_roomEnd = m_block.get();
    m_blockPosition = position;
    if (m_forWriting && !m_failed) {
        m_roomEnd += std::clamp(kMaxLength - position, 0L, static_cast<long>(kBlockSize));
    }
}

void BlockFile::OpenWindow(std::size_t limit) noexcept {
    m_windowStart = m_cursor;
    m_windowEnd = m_cursor + std::min(limit, Buffered());
}

/// Returns false. Only the first error counts.
bool BlockFile::Fail(int error) noexcept {
    if (m_error == 0) {
        m_error = error ? error : EIO;
        m_errorPosition = Position();
    }
    m_failed = true;
    m_roomEnd = m_block.get();
    return false;
}

std::size_t BlockFile::Read(void* bytes, std::size_t size) {
    auto* const out = static_cast<unsigned char*>(bytes);
    std::size_t done = 0;
    while (done < size) {
        std::size_t const wanted = size - done;
        if (Buffered() == 0 && wanted >= kBlockSize && m_stream && !m_forWriting) {
            StartBlock(m_blockPosition + (m_dataEnd - m_block.get()));
            std::size_t const got = ReadStream(out + done, wanted);
            m_blockPosition += static_cast<long>(got);
            done += got;
            break;
        }
        if (Buffered() == 0 && FillBlock() == 0) {
            break;
        }
        std::size_t const given = std::min(wanted, Buffered());
        std::memcpy(out + done, Advance(given), given);
        done += given;
    }
    m_atEnd = m_atEnd || done < size;
    return done;
}

std::size_t BlockFile::ReadStream(unsigned char* bytes, std::size_t size) {
    errno = 0;
    std::size_t const got = std::fread(bytes, 1, size, m_stream);
    if (got < size && m_readError == 0 && std::ferror(m_stream) != 0) {
        m_readError = errno ? errno : EIO;
        m_errorPosition = Position() + static_cast<long>(got);
    }
    return got;
}

std::size_t BlockFile::FillBlock() {
    if (!m_stream || m_forWriting) {
        return 0;
    }
    StartBlock(m_blockPosition + (m_dataEnd - m_block.get()));
    std::size_t const got = ReadStream(m_block.get(), kBlockSize);
    m_dataEnd += got;
    return got;
}

bool BlockFile::Write(void const* bytes, std::size_t size) {
    if (size == 0) {
        return true;
    }
    if (!m_forWriting || m_failed || Position() > kMaxLength ||
        size > static_cast<std::size_t>(kMaxLength - Position())) {
        return Fail(m_forWriting ? EFBIG : EBADF);
    }
    unsigned char* room = Put(size);
    if (!room) {
        if (!Flush()) {
            return false;
        }
        if (size >= kBlockSize) {
            return WriteOut(bytes, size);
        }
        room = Put(size);
    }
    std::memcpy(room, bytes, size);
    return true;
}

bool BlockFile::Flush() {
    return m_cursor == m_block.get() || !m_forWriting ||
           WriteOut(m_block.get(), static_cast<std::size_t>(m_cursor - m_block.get()));
}

bool BlockFile::WriteOut(void const* bytes, std::size_t size) {
    errno = 0;
    std::size_t const written = std::fwrite(bytes, 1, size, m_stream);
    int const error = errno;
    m_failed = m_failed || written != size;
    StartBlock(m_blockPosition + static_cast<long>(written));
    return written == size ? !m_failed : Fail(error);
}

bool BlockFile::Overwrite(long position, void const* bytes, std::size_t size) {
    if (!m_forWriting) {
        return Fail(EBADF);
    }
    if (position + static_cast<long>(size) > m_blockPosition) {
        Flush();
    }
    errno = 0;
    // The stream has no buffer, and its position stays at the start of the block.
    auto const written = ::pwrite(Descriptor(), bytes, size, position);
    return written == static_cast<::ssize_t>(size) ? !m_failed : Fail(errno);
}

bool BlockFile::Seek(long offset, int origin) {
    long const from = origin == SEEK_CUR ? Position() : origin == SEEK_END ? Length() : 0;
    long position = 0;
    return m_stream && !__builtin_add_overflow(from, offset, &position) && position >= 0 && SeekTo(position);
}

bool BlockFile::SeekTo(long position) {
    m_atEnd = false;
    if (m_forWriting) {
        Flush();
    } else if (position >= m_blockPosition && position <= m_blockPosition + (m_dataEnd - m_block.get())) {
        m_cursor = m_block.get() + (position - m_blockPosition);
        return true;
    }
    if (std::fseek(m_stream, position, SEEK_SET) != 0) {
        return m_forWriting ? Fail(errno) : false;
    }
    StartBlock(position);
    return true;
}

long BlockFile::Length() {
    if (!m_stream) {
        return 0;
    }
    long const streamPosition = m_blockPosition + (m_dataEnd - m_block.get());
    std::fseek(m_stream, 0, SEEK_END);
    long const length = std::ftell(m_stream);
    std::fseek(m_stream, streamPosition, SEEK_SET);
    return std::max({length, m_forWriting ? Position() : 0L, 0L});
}

} // namespace VFoundation
