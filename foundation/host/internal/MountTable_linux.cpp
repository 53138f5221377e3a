#include "foundation/host/internal/MountTable_linux.h"

#include <algorithm>
#include <charconv>
#include <dirent.h>
#include <fcntl.h>
#include <libmount/libmount.h>
#include <memory>
#include <set>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace VFoundation::MountTable {

using HostServices::MountedVolume;

namespace {

struct Unref {
    void operator()(struct libmnt_table* table) const { mnt_unref_table(table); }
    void operator()(struct libmnt_iter* iterator) const { mnt_free_iter(iterator); }
    void operator()(DIR* directory) const { ::closedir(directory); }
};

struct Mount {
    int id = 0;
    int parent = 0;
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
        mounts.push_back({mnt_fs_get_id(fs), mnt_fs_get_parent_id(fs),
                          std::string(View(mnt_fs_get_source(fs))), std::string(View(mnt_fs_get_target(fs))),
                          std::string(View(mnt_fs_get_fstype(fs))), mnt_fs_get_devno(fs),
                          mnt_fs_is_pseudofs(fs) != 0});
    }
    return mounts;
}

/// True when `path` is `folder` or lies in it.
bool IsWithin(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) &&
           (folder == "/" || path.size() == folder.size() || path[folder.size()] == '/');
}

/// True when a path to the mount `lower` leads into the later mount `upper` instead: that covers the same folder or
/// one above it.
bool Covers(Mount const& upper, Mount const& lower) {
    bool const isOnTop = upper.parent == lower.id && upper.target == lower.target;
    bool const isBeside = upper.parent == lower.parent && IsWithin(lower.target, upper.target);
    return &upper > &lower && (isOnTop || isBeside);
}

/// True when a mount, or one that it is mounted in, is covered by a mount that is not on the way to it.
bool IsHidden(std::vector<Mount> const& mounts, Mount const& hidden) {
    Mount const* mount = &hidden;
    Mount const* inside = nullptr;
    for (std::size_t steps = 0; mount && steps < mounts.size(); ++steps) { // a table may hold a circle
        Mount const* parent = nullptr;
        for (Mount const& other : mounts) {
            if (&other != inside && Covers(other, *mount)) {
                return true;
            }
            if (other.id == mount->parent && &other != mount) {
                parent = &other;
            }
        }
        inside = mount;
        mount = parent;
    }
    return false;
}

/// False for volumes that a server or a user-space program serves: they may not answer.
bool AnswersAtOnce(Mount const& mount) {
    if (mount.target == "/" || mount.type == "zfs") {
        return true;
    }
    return mount.source.starts_with("/dev/") && !mount.type.starts_with("fuse");
}

bool IsDirectory(std::string const& path) {
    struct stat status {};
    return ::fstatat(AT_FDCWD, path.c_str(), &status, AT_NO_AUTOMOUNT) == 0 && S_ISDIR(status.st_mode);
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

std::string DecodeLabel(std::string_view link) {
    constexpr std::string_view kEscape = "\\x";
    constexpr std::size_t kDigits = 2;
    std::string label;
    while (!link.empty()) {
        char const* const digits = link.data() + kEscape.size();
        unsigned char code = 0;
        if (link.starts_with(kEscape) && link.size() >= kEscape.size() + kDigits &&
            std::from_chars(digits, digits + kDigits, code, 16).ptr == digits + kDigits && code != 0) {
            label += static_cast<char>(code);
            link.remove_prefix(kEscape.size() + kDigits);
        } else {
            label += link.front();
            link.remove_prefix(1);
        }
    }
    return label;
}

std::vector<MountedVolume> Volumes(char const* mountTable, char const* labelDirectory) {
    std::vector<Mount> const mounts = ReadMountTable(mountTable);
    std::vector<MountedVolume> volumes;
    std::set<::dev_t> seen;
    for (Mount const& mount : mounts) {
        bool const asks = AnswersAtOnce(mount);
        if ((mount.isPseudo && mount.target != "/") || IsHidden(mounts, mount) ||
            seen.contains(mount.device) || (asks && !IsDirectory(mount.target))) {
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

} // namespace VFoundation::MountTable
