#include "tools/vfinspect/Text.h"

#include <algorithm>

namespace vfinspect {

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

constexpr unsigned Byte(char c) noexcept {
    return static_cast<unsigned char>(c);
}

/// The character at the start of `text` and its length; length 0 when the bytes are not UTF-8.
std::size_t DecodeUtf8(std::string_view text, std::uint32_t& character) noexcept {
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    unsigned const first = Byte(text.front());
    std::size_t const length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length == 0 || first > 0xF4 || text.size() < length) {
        return 0;
    }
    character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((Byte(text[i]) & 0xC0) != 0x80) {
            return 0;
        }
        character = character << 6 | (Byte(text[i]) & 0x3F);
    }
    bool const isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < kLeast[length] || character > 0x10FFFF || isSurrogate ? 0 : length;
}

/// Whether a terminal shows the character as it is, on its place.
bool IsPlain(std::uint32_t character) noexcept {
    bool const isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    bool const isDirection = (character >= 0x200B && character <= 0x200F) ||
                             (character >= 0x2028 && character <= 0x202E) ||
                             (character >= 0x2066 && character <= 0x2069);
    return !isControl && !isDirection && character != 0xFEFF && (character & 0xFFFE) != 0xFFFE;
}

std::string Escaped(std::string_view text, std::size_t most, std::string_view escaped) {
    std::string result;
    while (!text.empty()) {
        if (result.size() >= most) {
            return result + "...";
        }
        std::uint32_t character = 0;
        std::size_t const length = DecodeUtf8(text, character);
        if (length > 0 && IsPlain(character)) {
            if (escaped.find(text.front()) != std::string_view::npos) {
                result += '\\';
            }
            result += text.substr(0, length);
        } else {
            for (char const c : text.substr(0, std::max<std::size_t>(length, 1))) {
                result += {'\\', 'x', kDigits[Byte(c) >> 4], kDigits[Byte(c) & 15]};
            }
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

} // namespace

std::string Printable(std::string_view text, std::size_t most) {
    return Escaped(text, most, "");
}

std::string Quoted(std::string_view text, std::size_t most) {
    return '"' + Escaped(text, most, "\"\\") + '"';
}

std::string Hexadecimal(std::string_view bytes) {
    constexpr std::size_t kMost = 16;
    std::string result;
    for (char const c : bytes.substr(0, kMost)) {
        result += result.empty() ? "" : " ";
        result += {kDigits[Byte(c) >> 4], kDigits[Byte(c) & 15]};
    }
    return bytes.size() > kMost ? result + " ..." : result;
}

std::string Counted(std::uint64_t count, std::string_view thing) {
    return std::to_string(count).append(" ").append(thing).append(count == 1 ? "" : "s");
}

} // namespace vfinspect
