#include "foundation/host/VFolderListing.h"

#include "foundation/host/internal/HostServices.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <filesystem>

namespace VFoundation {

namespace {

namespace fs = std::filesystem;

/// False, with the error, when there is nothing at the path any more.
bool Describe(VFolderListing::Entry& entry, std::error_code& error) {
    HostServices::PathStatus status;
    error = HostServices::StatusOfPath(entry.path.c_str(), status);
    if (error) {
        return false;
    }
    using Type = HostServices::PathStatus::Type;
    using Kind = VFolderListing::Kind;
    entry.kind = status.type == Type::kFile     ? Kind::kFile
                 : status.type == Type::kFolder ? Kind::kFolder
                 : status.type == Type::kLink   ? Kind::kLink
                                                : Kind::kOther;
    entry.size = entry.kind == Kind::kFile ? status.size : 0;
    entry.modified = status.modified;
    return true;
}

} // namespace

bool VFolderListing::Entry::HasExtension(char const* extension) const {
    return VString::CStringHasPathExtension(path.c_str(), extension, true);
}

VFolderListing::VFolderListing(std::string const& folder, Options const& options) {
    std::vector<std::string> folders{folder};
    while (!folders.empty() && m_seen <= options.mostEntries) {
        std::string const next = std::move(folders.back());
        folders.pop_back();
        List(next, options, folders);
    }
    std::sort(m_entries.begin(), m_entries.end(),
              [](Entry const& one, Entry const& other) { return one.path < other.path; });
}

/// Adds what is in one folder, and the folders in it to those that are still to be listed.
void VFolderListing::List(std::string const& folder, Options const& options,
                          std::vector<std::string>& folders) {
    std::error_code error;
    fs::directory_iterator iterator(folder, error);
    for (; !error && iterator != fs::directory_iterator(); iterator.increment(error)) {
        if (++m_seen > options.mostEntries) {
            m_failures.emplace_back("cannot list " + folder + " beyond " +
                                        std::to_string(options.mostEntries) + " entries",
                                    std::make_error_code(std::errc::value_too_large));
            return;
        }
        Entry entry;
        entry.path = iterator->path().string();
        if (std::error_code gone; !Describe(entry, gone)) {
            if (gone != std::errc::no_such_file_or_directory) { // else removed meanwhile
                m_failures.emplace_back("cannot ask for " + entry.path, gone);
            }
            continue;
        }
        if (options.isRecursive && entry.kind == Kind::kFolder) {
            folders.push_back(entry.path);
        }
        if (!options.filter || options.filter(entry)) {
            m_entries.push_back(std::move(entry));
        }
    }
    if (error) {
        m_failures.emplace_back("cannot list " + folder, error);
    }
}

} // namespace VFoundation
