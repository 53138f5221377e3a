// A sample guide: shows who it runs as and what it was given, so that one can see what the launcher does.

#include "launcher/sample/OpenDescriptors.h"

#include <cstdio>
#include <filesystem>
#include <unistd.h>

extern char** environ;

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
    for (auto const& [number, target] : OpenDescriptors()) {
        std::printf("ZephGuide: descriptor %s = %s\n", number.c_str(), target.c_str());
    }
    std::puts("ZephGuide: done");
    return 0;
}
