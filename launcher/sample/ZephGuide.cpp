// A sample guide: shows who it runs as and what it was given, so that one can see what the launcher does.

#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

void ShowDescriptors() {
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        std::error_code gone; // the listing's own descriptor is among them
        std::string const target = std::filesystem::read_symlink(entry.path(), gone).string();
        if (!gone && !target.ends_with("/fd")) {
            std::printf("ZephGuide: descriptor %s = %s\n", entry.path().filename().c_str(), target.c_str());
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    std::printf("ZephGuide: user %u, effective user %u, group %u, effective group %u\n", ::getuid(),
                ::geteuid(), ::getgid(), ::getegid());
    std::printf("ZephGuide: process %d, session %d, folder %s\n", ::getpid(), ::getsid(0),
                std::filesystem::current_path().c_str());
    for (int i = 0; i < argc; ++i) {
        std::printf("ZephGuide: argument %d = [%s]\n", i, argv[i]);
    }
    for (char* const* entry = environ; *entry; ++entry) {
        std::printf("ZephGuide: variable %s\n", *entry);
    }
    ShowDescriptors();
    std::puts("ZephGuide: done");
    return 0;
}
