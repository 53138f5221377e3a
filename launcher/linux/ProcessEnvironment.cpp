#include "launcher/linux/ProcessEnvironment.h"

#include "launcher/linux/DisplayVariable.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/auxv.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace Launcher {

namespace {

std::string Variable(char const* name) {
    char const* const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

void PrepareProcess() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) < 0) {
            ::open("/dev/null", O_RDWR); // takes the lowest free number, which is this one
        }
    }
    ::signal(SIGCHLD, SIG_DFL);
    if (HasRightsOfItsFile()) {
        uid_t const user = ::getuid();
        gid_t const group = ::getgid();
        if (::setresgid(group, group, group) != 0 || ::setresuid(user, user, user) != 0) {
            ::_exit(EXIT_FAILURE);
        }
    }
    ::prctl(PR_SET_DUMPABLE, 0); // after the change of user, which sets it
}

bool HasRightsOfItsFile() {
    return ::getauxval(AT_SECURE) != 0;
}

std::vector<std::string> OwnEnvironment() {
    std::vector<std::string> variables;
    for (char* const* entry = environ; entry && *entry; ++entry) {
        variables.emplace_back(*entry);
    }
    return variables;
}

std::vector<std::string> DialogEnvironment() {
    static constexpr char const* kNames[] = {"HOME",
                                             "USER",
                                             "LOGNAME",
                                             "LANG",
                                             "LANGUAGE",
                                             "LC_ALL",
                                             "LC_CTYPE",
                                             "LC_MESSAGES",
                                             "DISPLAY",
                                             "XAUTHORITY",
                                             "GTK_THEME",
                                             "GDK_SCALE",
                                             "WAYLAND_DISPLAY",
                                             "XDG_RUNTIME_DIR",
                                             "DBUS_SESSION_BUS_ADDRESS",
                                             "GDK_BACKEND",
                                             "XDG_DATA_DIRS"};
    std::vector<std::string> variables = {"PATH=/usr/bin:/bin"};
    for (char const* const name : kNames) {
        if (std::string const value = Variable(name); !value.empty()) {
            variables.push_back(name + ("=" + value));
        }
    }
    return variables;
}

std::vector<std::string> DisplayVariables() {
    std::string authority = Variable("XAUTHORITY");
    if (authority.empty() && !Variable("HOME").empty()) {
        authority = Variable("HOME") + "/.Xauthority";
        if (::access(authority.c_str(), R_OK) != 0) {
            authority.clear();
        }
    }
    std::string wayland = Variable("WAYLAND_DISPLAY");
    if (!wayland.empty() && wayland.front() != '/') {
        wayland = Variable("XDG_RUNTIME_DIR") + "/" + wayland;
    }
    std::vector<std::string> variables = {"DISPLAY=" + Variable("DISPLAY"), "XAUTHORITY=" + authority,
                                          "WAYLAND_DISPLAY=" + wayland, "LANG=" + Variable("LANG")};
    std::erase_if(variables, [](std::string const& variable) { return !IsDisplayVariable(variable); });
    return variables;
}

} // namespace Launcher
