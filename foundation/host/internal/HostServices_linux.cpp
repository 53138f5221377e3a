#include "foundation/host/internal/HostServices.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <libmount/libmount.h>
#include <memory>
#include <set>
#include <string_view>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace VFoundation::HostServices {

namespace {

struct Unref {
    void operator()(struct libmnt_table* table) const { mnt_unref_table(table); }
    void operator()(struct libmnt_iter* iterator) const { mnt_free_iter(iterator); }
    void operator()(DIR* directory) const { ::closedir(directory); }
};

struct Mount {
    std::string source;
    std::string target;
    std::string type;
    ::dev_t device = 0;
    bool isPseudo = false;
};

std::string_view View(char const* text) {
    return text ? text : "";
}

std::vector<Mount> ReadMountTable(char const* path) {
    std::vector<Mount> mounts;
    std::unique_ptr<struct libmnt_table, Unref> const table(mnt_new_table_from_file(path));
    std::unique_ptr<struct libmnt_iter, Unref> const iterator(mnt_new_iter(MNT_ITER_FORWARD));
    struct libmnt_fs* fs = nullptr;
    while (table && iterator && mnt_table_next_fs(table.get(), iterator.get(), &fs) == 0) {
        mounts.push_back({std::string(View(mnt_fs_get_source(fs))), std::string(View(mnt_fs_get_target(fs))),
                          std::string(View(mnt_fs_get_fstype(fs))), mnt_fs_get_devno(fs),
                          mnt_fs_is_pseudofs(fs) != 0});
    }
    return mounts;
}

/// True when something was mounted over the same directory later, so that its path leads elsewhere.
bool IsCovered(std::vector<Mount> const& mounts, std::size_t index) {
    return std::any_of(mounts.begin() + static_cast<std::ptrdiff_t>(index) + 1, mounts.end(),
                       [&](Mount const& later) { return later.target == mounts[index].target; });
}

/// False for what a server or a user-space program answers for, and may fail to.
bool AnswersAtOnce(Mount const& mount) {
    return mount.target == "/" || mount.type == "zfs" || mount.source.starts_with("/dev/");
}

bool IsDirectory(std::string const& path) {
    struct stat status {};
    return ::fstatat(AT_FDCWD, path.c_str(), &status, AT_NO_AUTOMOUNT) == 0 && S_ISDIR(status.st_mode);
}

/// Device links write what a file name cannot hold as "\x20".
std::string DecodeLabel(std::string_view link) {
    std::string label;
    for (std::size_t i = 0; i < link.size(); ++i) {
        if (link.substr(i, 2) == "\\x" && i + 4 <= link.size()) {
            std::string const digits(link.substr(i + 2, 2));
            char* end = nullptr;
            long const code = std::strtol(digits.c_str(), &end, 16);
            if (end == digits.c_str() + 2 && code > 0) {
                label += static_cast<char>(code);
                i += 3;
                continue;
            }
        }
        label += link[i];
    }
    return label;
}

std::string LabelOf(Mount const& mount, char const* labelDirectory) {
    struct stat source {};
    if (!mount.source.starts_with("/dev/") || ::stat(mount.source.c_str(), &source) != 0 ||
        !S_ISBLK(source.st_mode)) {
        return {};
    }
    std::unique_ptr<DIR, Unref> const directory(::opendir(labelDirectory));
    while (struct dirent const* const entry = directory ? ::readdir(directory.get()) : nullptr) {
        struct stat status {};
        if (::fstatat(::dirfd(directory.get()), entry->d_name, &status, 0) == 0 && S_ISBLK(status.st_mode) &&
            status.st_rdev == source.st_rdev) {
            return DecodeLabel(entry->d_name);
        }
    }
    return {};
}

std::string NameOf(Mount const& mount, char const* labelDirectory) {
    std::string label = LabelOf(mount, labelDirectory);
    if (!label.empty()) {
        return label;
    }
    std::size_t const slash = mount.target.rfind('/');
    std::string last = slash == std::string::npos ? mount.target : mount.target.substr(slash + 1);
    return last.empty() ? "/" : last;
}

} // namespace

std::vector<MountedVolume> MountedVolumes(char const* mountTable, char const* labelDirectory) {
    std::vector<Mount> const mounts = ReadMountTable(mountTable);
    std::vector<MountedVolume> volumes;
    std::set<::dev_t> seen;
    for (std::size_t i = 0; i < mounts.size(); ++i) {
        Mount const& mount = mounts[i];
        bool const asks = AnswersAtOnce(mount);
        if ((mount.isPseudo && mount.target != "/") || IsCovered(mounts, i) || seen.contains(mount.device) ||
            (asks && !IsDirectory(mount.target))) {
            continue;
        }
        seen.insert(mount.device);
        MountedVolume volume;
        volume.name = NameOf(mount, labelDirectory);
        volume.mountPath = mount.target;
        struct statvfs sizes {};
        if (asks && ::statvfs(mount.target.c_str(), &sizes) == 0) {
            volume.totalBytes = std::uint64_t{sizes.f_blocks} * sizes.f_frsize;
            volume.freeBytes = std::uint64_t{sizes.f_bfree} * sizes.f_frsize;
        }
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

long ProcessorFeatures(unsigned long& features) noexcept {
    errno = 0;
    features = ::getauxval(AT_HWCAP);
    return features ? 0 : errno;
}

} // namespace VFoundation::HostServices
