#include "foundation/log/internal/LineFile.h"

#include "foundation/host/VFileManager.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace VFoundation {

bool LineFile::Open(char const* path) {
    Close();
    if (!m_buffer) {
        m_buffer.reset(new (std::nothrow) Buffer);
    }
    if (!m_buffer) {
        return false;
    }
    Begin(VFileManager::vfc_fopen(path, "w"));
    return IsOpen();
}

bool LineFile::Replace(char const* path) {
    std::FILE* const stream = VFileManager::vfc_fopen(path, "w");
    if (!stream) {
        return false;
    }
    Close();
    Begin(stream);
    return true;
}

void LineFile::Begin(std::FILE* stream) noexcept {
    m_stream = stream;
    m_start = 0;
    if (stream) {
        std::setvbuf(stream, m_buffer->bytes, _IOFBF, sizeof m_buffer->bytes);
    }
}

void LineFile::Put(char const* line) {
    std::size_t const length = std::strlen(line);
    // The stream never has to write by itself, except a line that is longer than its buffer.
    if (m_lines == kLines || length > kBytes - m_bytes) {
        Flush();
    }
    m_failed = std::fputs(line, m_stream) == EOF;
    m_bytes += length;
    m_buffer->lineEnds[m_lines++] = m_bytes;
    if (m_failed || m_bytes >= kBytes) {
        Flush();
    }
}

void LineFile::Flush() {
    m_failed = std::fflush(m_stream) != 0 || m_failed;
    if (m_failed) {
        TakeStock();
    } else {
        m_start += static_cast<long long>(m_bytes);
    }
    m_lines = 0;
    m_bytes = 0;
    m_failed = false;
}

/// After a failure: what the system has taken, as far as it can tell.
void LineFile::TakeStock() {
    long long const place = DropUnwritten(m_stream);
    auto const taken =
        static_cast<std::size_t>(std::clamp(place - m_start, 0LL, static_cast<long long>(m_bytes)));
    auto const* const ends = m_buffer->lineEnds.data();
    auto const whole = static_cast<std::size_t>(std::upper_bound(ends, ends + m_lines, taken) - ends);
    Lose(m_lines - whole);
    long long const wholeEnd = m_start + static_cast<long long>(whole > 0 ? ends[whole - 1] : 0);
    if (place > wholeEnd && taken > 0) {
        CutBack(m_stream, place, wholeEnd);
    }
    m_start = wholeEnd;
}

void LineFile::Close() {
    if (!m_stream) {
        return;
    }
    Flush();
    if (std::fclose(std::exchange(m_stream, nullptr)) != 0) {
        Lose(1); // at least, of those that the system seemed to have taken
    }
}

void LineFile::Abandon() {
    if (m_stream) {
        DropUnwritten(m_stream);
        m_lines = 0;
        m_bytes = 0;
        std::fclose(std::exchange(m_stream, nullptr));
    }
}

} // namespace VFoundation
