#include "foundation/strings/internal/FormatText.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace VFoundation {

namespace {

/// Where text goes as long as it fits.
class Writer {
  public:
    Writer(char* out, std::size_t size) noexcept : m_at(out), m_end(out + size) {}

    char* At() const noexcept { return m_at; }

    // False when there is no room left for a terminator.
    bool Put(char character) noexcept {
        if (m_end - m_at < 2) {
            return false;
        }
        *m_at++ = character;
        return true;
    }
    bool Put(char const* text, std::size_t length) noexcept {
        if (static_cast<std::size_t>(m_end - m_at) <= length) {
            return false;
        }
        std::memcpy(m_at, text, length);
        m_at += length;
        return true;
    }
    template <class Number>
    bool PutNumber(Number number) noexcept {
        auto const written = std::to_chars(m_at, m_end, number);
        m_at = written.ptr;
        return written.ec == std::errc() && m_at != m_end;
    }

  private:
    char* m_at;
    char* const m_end;
};

/// A conversion's letters as one number: 'l' before the letter adds this.
constexpr int kLong = 256;

/// False when the text does not fit or the C library has to decide; what was written so far does not count then.
[[gnu::format(printf, 2, 0)]] bool WritePlain(Writer& out, char const* format,
                                              std::va_list& arguments) noexcept {
    for (;;) {
        char const* const plain = format;
        while (*format != '%' && *format != '\0') {
            ++format;
        }
        if (!out.Put(plain, static_cast<std::size_t>(format - plain))) {
            return false;
        }
        if (*format++ == '\0') {
            return true;
        }
        int const length = *format == 'l' ? kLong : 0;
        format += length != 0;
        bool isWritten = false;
        switch (length + *format) {
        case '%':
            isWritten = out.Put('%');
            break;
        case 'c':
            isWritten = out.Put(static_cast<char>(va_arg(arguments, int)));
            break;
        case 's':
            if (char const* const text = va_arg(arguments, char const*)) {
                isWritten = out.Put(text, std::strlen(text));
            }
            break;
        case 'd':
        case 'i':
            isWritten = out.PutNumber(va_arg(arguments, int));
            break;
        case 'u':
            isWritten = out.PutNumber(va_arg(arguments, unsigned));
            break;
        case kLong + 'd':
        case kLong + 'i':
            isWritten = out.PutNumber(va_arg(arguments, long));
            break;
        case kLong + 'u':
            isWritten = out.PutNumber(va_arg(arguments, unsigned long));
            break;
        default:
            break;
        }
        if (!isWritten) {
            return false;
        }
        ++format;
    }
}

} // namespace

int FormatText(char* out, std::size_t size, char const* format, std::va_list arguments) noexcept {
    Writer writer(out, size);
    std::va_list again;
    va_copy(again, arguments);
    bool const isWritten = WritePlain(writer, format, again);
    va_end(again);
    if (!isWritten) {
        return std::vsnprintf(out, size, format, arguments);
    }
    *writer.At() = '\0';
    return static_cast<int>(writer.At() - out);
}

} // namespace VFoundation
