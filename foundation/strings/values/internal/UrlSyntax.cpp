#include "foundation/strings/values/internal/UrlSyntax.h"

#include <algorithm>
#include <optional>

namespace VFoundation {

namespace {

constexpr long kMaxPort = 65535;
constexpr std::string_view kSubDelimiters = "!$&'()*+,;=";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsHex(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool IsUnreserved(char c) {
    return IsAlpha(c) || IsDigit(c) || std::string_view("-._~").find(c) != std::string_view::npos;
}
bool IsSchemeCharacter(char c) {
    return IsAlpha(c) || IsDigit(c) || c == '+' || c == '-' || c == '.';
}

/// Unreserved characters, sub-delimiters, escapes and what `others` adds.
bool IsText(std::string_view text, std::string_view others) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        if (c == '%') {
            if (text.size() - i < 3 || !IsHex(text[i + 1]) || !IsHex(text[i + 2])) {
                return false;
            }
            i += 2;
        } else if (!IsUnreserved(c) && kSubDelimiters.find(c) == std::string_view::npos &&
                   others.find(c) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

/// Cuts `text` at the first of `delimiters` and returns the rest, which starts with it; empty when there is none.
std::string_view CutAt(std::string_view& text, std::string_view delimiters) {
    std::size_t const end = std::min(text.find_first_of(delimiters), text.size());
    std::string_view const rest = text.substr(end);
    text = text.substr(0, end);
    return rest;
}

bool IsIPv4(std::string_view text) {
    for (int i = 0; i < 4; ++i) {
        std::string_view const rest = CutAt(text, ".");
        bool const isOctet = !text.empty() && text.size() <= 3 &&
                             std::all_of(text.begin(), text.end(), IsDigit) &&
                             (text.size() == 1 || text[0] != '0') && (text.size() < 3 || text <= "255");
        if (!isOctet || rest.empty() != (i == 3)) {
            return false;
        }
        text = rest.substr(rest.empty() ? 0 : 1);
    }
    return true;
}

/// The 16-bit groups of one side of a "::", or of a whole address; an IPv4 address may end it and counts two.
/// Nothing for malformed text.
std::optional<int> CountGroups(std::string_view text, bool mayEndInIPv4) {
    int groups = 0;
    while (!text.empty()) {
        std::string_view const rest = CutAt(text, ":");
        if (rest == ":") {
            return std::nullopt;
        }
        if (!text.empty() && text.size() <= 4 && std::all_of(text.begin(), text.end(), IsHex)) {
            ++groups;
        } else if (mayEndInIPv4 && rest.empty() && IsIPv4(text)) {
            groups += 2;
        } else {
            return std::nullopt;
        }
        text = rest.substr(rest.empty() ? 0 : 1);
    }
    return groups;
}

bool IsIPv6(std::string_view text) {
    constexpr int kGroups = 8;
    std::size_t const gap = text.find("::");
    if (gap == std::string_view::npos) {
        return CountGroups(text, true) == kGroups;
    }
    auto const left = CountGroups(text.substr(0, gap), false);
    auto const right = CountGroups(text.substr(gap + 2), true);
    return left && right && *left + *right < kGroups;
}

bool IsFutureAddress(std::string_view text) {
    if (text.empty() || (text[0] != 'v' && text[0] != 'V')) {
        return false;
    }
    text.remove_prefix(1);
    std::string_view const address = CutAt(text, ".");
    return !text.empty() && std::all_of(text.begin(), text.end(), IsHex) && address.size() > 1 &&
           address.find('%') == std::string_view::npos && IsText(address.substr(1), ":");
}

/// What stands between "//" and the path: [user@]host[:port].
bool SplitAuthority(std::string_view text, UrlParts& parts) {
    std::size_t const at = text.rfind('@');
    if (at != std::string_view::npos) {
        if (!IsText(text.substr(0, at), ":")) {
            return false;
        }
        text.remove_prefix(at + 1);
    }
    std::string_view port;
    if (!text.empty() && text[0] == '[') {
        std::size_t const end = text.find(']');
        if (end == std::string_view::npos) {
            return false;
        }
        std::string_view const address = text.substr(1, end - 1);
        if (!IsIPv6(address) && !IsFutureAddress(address)) {
            return false;
        }
        parts.host = text.substr(0, end + 1);
        port = text.substr(end + 1);
    } else {
        port = CutAt(text, ":");
        if (!IsText(text, "")) {
            return false;
        }
        parts.host = text;
    }
    if (port.empty() || port == ":") {
        return true;
    }
    if (port[0] != ':') {
        return false;
    }
    parts.port = 0;
    for (char const c : port.substr(1)) {
        parts.port = parts.port * 10 + (c - '0');
        if (!IsDigit(c) || parts.port > kMaxPort) {
            return false;
        }
    }
    return true;
}

bool Split(std::string_view text, UrlParts& parts) {
    std::string_view const fragment = CutAt(text, "#");
    parts.query = CutAt(text, "?");
    std::string_view rest = CutAt(text, ":/");
    parts.scheme = text;
    if (parts.scheme.empty() || !IsAlpha(parts.scheme[0]) || rest.empty() || rest[0] != ':' ||
        !std::all_of(parts.scheme.begin(), parts.scheme.end(), IsSchemeCharacter)) {
        return false;
    }
    rest.remove_prefix(1);
    if (rest.substr(0, 2) == "//") {
        rest.remove_prefix(2);
        parts.path = CutAt(rest, "/");
        if (!SplitAuthority(rest, parts)) {
            return false;
        }
    } else {
        parts.path = rest;
    }
    parts.query.remove_prefix(parts.query.empty() ? 0 : 1);
    return IsText(parts.path, ":@/") && IsText(parts.query, ":@/?") &&
           (fragment.empty() || IsText(fragment.substr(1), ":@/?"));
}

} // namespace

bool SplitUrl(std::string_view text, UrlParts& parts) {
    parts = {};
    if (Split(text, parts)) {
        return true;
    }
    parts = {};
    return false;
}

} // namespace VFoundation
