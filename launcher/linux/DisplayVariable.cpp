#include "launcher/linux/DisplayVariable.h"

#include <algorithm>
#include <string>
#include <sys/un.h>

namespace Launcher {

namespace {

constexpr std::size_t kMaxVariableBytes = 4096;

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Takes the leading characters of one kind off the text and tells how many there were.
template <typename Kind>
std::size_t TakeAll(std::string_view& text, Kind isOfKind) {
    auto const end = std::find_if_not(text.begin(), text.end(), isOfKind);
    auto const count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count;
}

bool TakeOne(std::string_view& text, char c) {
    bool const isThere = text.starts_with(c);
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

constexpr std::size_t kMaxDisplayDigits = 5;

bool TakeDisplayNumber(std::string_view& text) {
    std::size_t const count = TakeAll(text, IsDigit);
    return count > 0 && count <= kMaxDisplayDigits;
}

bool IsDisplayName(std::string_view text) {
    TakeAll(text, [](char c) { return IsLetter(c) || IsDigit(c) || c == '.' || c == '-' || c == '_'; });
    return TakeOne(text, ':') && TakeDisplayNumber(text) &&
           (text.empty() || (TakeOne(text, '.') && TakeDisplayNumber(text) && text.empty()));
}

bool IsLocaleName(std::string_view text) {
    auto const isLetterOrDigit = [](char c) { return IsLetter(c) || IsDigit(c); };
    auto const isOfCodeset = [](char c) { return IsLetter(c) || IsDigit(c) || c == '-'; };
    return TakeAll(text, IsLetter) > 0 && (!TakeOne(text, '_') || TakeAll(text, isLetterOrDigit) > 0) &&
           (!TakeOne(text, '.') || TakeAll(text, isOfCodeset) > 0) &&
           (!TakeOne(text, '@') || TakeAll(text, isLetterOrDigit) > 0) && text.empty();
}

bool IsPlainPath(std::string_view text) {
    auto const isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
    std::string const closed = std::string(text) + "/";
    return text.starts_with('/') && std::none_of(text.begin(), text.end(), isControl) &&
           closed.find("/./") == std::string::npos && closed.find("/../") == std::string::npos;
}

} // namespace

bool IsDisplayVariable(std::string_view variable) {
    std::size_t const equals = variable.find('=');
    if (equals == std::string_view::npos || variable.size() > kMaxVariableBytes) {
        return false;
    }
    std::string_view const name = variable.substr(0, equals);
    std::string_view const value = variable.substr(equals + 1);
    if (name == "DISPLAY") {
        return IsDisplayName(value);
    }
    if (name == "LANG") {
        return IsLocaleName(value);
    }
    return (name == "XAUTHORITY" && IsPlainPath(value)) ||
           (name == "WAYLAND_DISPLAY" && IsPlainPath(value) && value.size() < sizeof(sockaddr_un::sun_path));
}

} // namespace Launcher
