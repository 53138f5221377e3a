#include "foundation/host/VSpecialFolders.h"

#include "foundation/host/VFile.h"
#include "foundation/host/internal/HostServices.h"
#include "foundation/strings/VString.h"

#include <cstdlib>
#include <string_view>

namespace VFoundation {

namespace {

/// What is read of the file of user directories.
constexpr std::size_t kMostBytes = 64UL * 1024;

/// Empty unless `path` is absolute.
std::string Absolute(std::string path) {
    if (path.empty() || path.front() != '/') {
        return {};
    }
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

std::string Variable(char const* name) {
    char const* const value = std::getenv(name);
    return Absolute(value ? value : "");
}

std::string Home() {
    std::string home = Variable("HOME");
    return home.empty() ? Absolute(HostServices::HomeFolder()) : home;
}

std::string InHome(char const* variable, char const* name) {
    std::string path = Variable(variable);
    if (path.empty()) {
        std::string const home = Home();
        path = home.empty() ? "" : home + name;
    }
    return path;
}

/// The value of a line NAME="value", in which '\' stands before a character that counts as itself; a value may begin
/// with $HOME. Empty for every other line.
std::string ValueOfLine(std::string_view line, std::string_view name) {
    std::size_t const start = line.find_first_not_of(" \t");
    line.remove_prefix(start == line.npos ? line.size() : start);
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with("=\"")) {
        return {};
    }
    line.remove_prefix(name.size() + 2);
    constexpr std::string_view kHomeVariable = "$HOME";
    std::string value;
    if (line.starts_with(kHomeVariable)) {
        line.remove_prefix(kHomeVariable.size());
        value = Home();
    }
    for (std::size_t i = 0; i < line.size() && line[i] != '"'; ++i) {
        i += line[i] == '\\' && i + 1 < line.size() ? 1 : 0;
        value += line[i];
    }
    return Absolute(value);
}

std::string UserFolder(std::string_view name) {
    VFile file;
    std::string const path = VSpecialFolders::Path(VSpecialFolders::kConfiguration) + "/user-dirs.dirs";
    if (!file.OpenForReading(path.c_str())) {
        return {};
    }
    std::string text(kMostBytes, '\0');
    text.resize(file.ReadBytes(text.data(), text.size()));
    std::string found;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const end = std::min(text.find('\n', at), text.size());
        std::string value = ValueOfLine(std::string_view(text).substr(at, end - at), name);
        if (!value.empty()) {
            found = std::move(value); // the last one counts
        }
        at = end + 1;
    }
    return found;
}

} // namespace

std::string VSpecialFolders::Path(Folder folder) {
    switch (folder) {
    case kHome:
        return Home();
    case kTemporary: {
        std::string path = Variable("TMPDIR");
        return path.empty() ? "/tmp" : path;
    }
    case kConfiguration:
        return InHome("XDG_CONFIG_HOME", "/.config");
    case kData:
        return InHome("XDG_DATA_HOME", "/.local/share");
    case kCache:
        return InHome("XDG_CACHE_HOME", "/.cache");
    case kState:
        return InHome("XDG_STATE_HOME", "/.local/state");
    case kRuntime:
        return Variable("XDG_RUNTIME_DIR");
    case kDesktop:
        return UserFolder("XDG_DESKTOP_DIR");
    case kDocuments:
        return UserFolder("XDG_DOCUMENTS_DIR");
    case kDownloads:
        return UserFolder("XDG_DOWNLOAD_DIR");
    case kMusic:
        return UserFolder("XDG_MUSIC_DIR");
    case kPictures:
        return UserFolder("XDG_PICTURES_DIR");
    case kPublic:
        return UserFolder("XDG_PUBLICSHARE_DIR");
    case kTemplates:
        return UserFolder("XDG_TEMPLATES_DIR");
    case kVideos:
        return UserFolder("XDG_VIDEOS_DIR");
    }
    return {};
}

} // namespace VFoundation
