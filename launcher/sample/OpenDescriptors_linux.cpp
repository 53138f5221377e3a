#include "launcher/sample/OpenDescriptors.h"

#include <filesystem>

std::vector<std::pair<std::string, std::string>> OpenDescriptors() {
    std::vector<std::pair<std::string, std::string>> descriptors;
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        std::error_code gone; // the listing's own descriptor is among them
        std::string target = std::filesystem::read_symlink(entry.path(), gone).string();
        if (!gone && !target.ends_with("/fd")) {
            descriptors.emplace_back(entry.path().filename().string(), std::move(target));
        }
    }
    return descriptors;
}
