#include "launcher/linux/BundlePlaces.h"

#include <filesystem>

namespace Launcher {

namespace fs = std::filesystem;

std::string HelperFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string ResourcesFolder() {
    return (fs::path(HelperFolder()).parent_path() / "Resources").string();
}

SOwnBundle OwnBundle() {
    fs::path const bundle = fs::path(HelperFolder()).parent_path().parent_path();
    return {.path = bundle.string(),
            .name = bundle.stem().string(),
            .folder = bundle.parent_path().has_filename() ? bundle.parent_path().filename().string() : "/"};
}

} // namespace Launcher
