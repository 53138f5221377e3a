#include "launcher/linux/ProtectedBundle.h"

#include "launcher/BundleLayout.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>

namespace Launcher {

namespace {

namespace fs = std::filesystem;

EWriters WritersOfOne(int descriptor) {
    struct stat status {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0 || S_ISLNK(status.st_mode)) {
        return EWriters::eUnknown;
    }
    bool const isRoots = status.st_uid == 0 && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    return isRoots ? EWriters::eRootAlone : EWriters::eOthers;
}

bool IsTargetOfBundle(fs::path const& brokerPath, fs::path const& target) {
    auto const above = [&brokerPath](int depth) {
        fs::path folder = brokerPath;
        for (int i = 0; i < depth; ++i) {
            folder = folder.parent_path();
        }
        return folder;
    };
    fs::path const contents = above(kContentsDepth);
    return target == above(kBundleFolderDepth) / kGuideBesideBundle ||
           target == contents / kInstallerInContents || target == contents / kUninstallerInContents;
}

} // namespace

EWriters WritersOf(std::string const& path) {
    std::string_view rest = path;
    if (!rest.starts_with('/')) {
        return EWriters::eUnknown;
    }
    UniqueFd place(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    EWriters writers = WritersOfOne(place.Get());
    while (writers == EWriters::eRootAlone) {
        rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
        if (rest.empty()) {
            break;
        }
        std::string const name(rest.substr(0, rest.find('/')));
        rest.remove_prefix(name.size());
        place = UniqueFd(::openat(place.Get(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
        writers = WritersOfOne(place.Get());
    }
    return writers;
}

bool IsAllowedTarget(std::string const& brokerPath, std::string const& userName, SLaunchRequest& request) {
    EWriters const writers = WritersOf(brokerPath);
    if (writers != EWriters::eRootAlone) {
        return writers == EWriters::eOthers;
    }
    std::error_code error;
    fs::path const target = fs::canonical(request.path, error);
    if (error || !IsTargetOfBundle(brokerPath, target) ||
        request.arguments != std::vector<std::string>{kUserNameOption, userName} ||
        WritersOf(target.string()) != EWriters::eRootAlone) {
        return false;
    }
    request.path = target.string();
    return true;
}

} // namespace Launcher
