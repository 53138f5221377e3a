#include "foundation/log/internal/UTF8Text.h"

#include <cstddef>
#include <cstdio>

namespace VFoundation {

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD"; // U+FFFD

/// The length of the character of several bytes that begins at `index`; 0 when it is not one of UTF-8.
std::size_t LengthOfCharacter(std::string const& text, std::size_t index) {
    auto const byte = [&](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
    };
    unsigned const lead = byte(index);
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(index + i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    unsigned const second = byte(index + 1);
    bool const isTooLong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    bool const isSurrogate = lead == 0xED && second >= 0xA0;
    bool const isTooLarge = lead == 0xF4 && second >= 0x90;
    bool const isNoCharacter = lead == 0xEF && second == 0xBF && byte(index + 2) >= 0xBE; // U+FFFE, U+FFFF
    return isTooLong || isSurrogate || isTooLarge || isNoCharacter ? 0 : length;
}

/// `escape` appends what an ASCII character becomes.
template <class Escape>
std::string Escaped(std::string const& text, Escape escape) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            escape(result, text[i++]);
        } else if (std::size_t const length = LengthOfCharacter(text, i)) {
            result.append(text, i, length);
            i += length;
        } else {
            result += kReplacement;
            ++i;
        }
    }
    return result;
}

} // namespace

std::string AsJSON(std::string const& text) {
    return Escaped(text, [](std::string& out, char character) {
        if (character == '"' || character == '\\') {
            out += '\\';
            out += character;
        } else if (static_cast<unsigned char>(character) < 0x20) {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(character));
            out += code;
        } else {
            out += character;
        }
    });
}

std::string AsXML(std::string const& text) {
    return Escaped(text, [](std::string& out, char character) {
        switch (character) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '\t':
        case '\n':
        case '\r':
            out += ' ';
            break;
        default:
            if (static_cast<unsigned char>(character) < 0x20) {
                out += kReplacement;
            } else {
                out += character;
            }
        }
    });
}

} // namespace VFoundation
