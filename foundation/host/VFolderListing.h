#pragma once

#include "foundation/core/Export.h"
#include "foundation/host/VFileSystem.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace VFoundation {

/// What is in a folder, and with `isRecursive` in the folders in it, in the order of the bytes of the paths.
///
///     VFolderListing::Options options;
///     options.isRecursive = true;
///     options.filter = [](auto const& entry) { return entry.HasExtension("png"); };
///     VFolderListing const pictures("photos", options);
///     for (auto const& entry : pictures.Entries()) { ... entry.path ... }
///
/// Symbolic links are listed and not followed, so that no circle is walked. Folders that cannot be read are in
/// `Failures()`, and the rest is listed. The listing is what was there when it was made.
///
/// Ownership: owns its entries.
/// Threads: one thread at a time; any number may read.
/// Memory: without it `std::bad_alloc`. What the filter throws passes.
class VFOUNDATION_API VFolderListing {
  public:
    enum class Kind { kFile, kFolder, kLink, kOther };

    struct Entry {
        /// The folder's path as it was given, and from there on.
        std::string path;
        Kind kind = Kind::kOther;
        /// In bytes, of files; else 0.
        std::uint64_t size = 0;
        /// When it was last changed, in seconds since 1970.
        std::int64_t modified = 0;

        /// `extension` without its dot, in any case.
        bool HasExtension(char const* extension) const;
    };

    struct Options {
        bool isRecursive = false;
        /// Lists those entries for which it is true; all without a filter. Folders are entered whatever it says.
        std::function<bool(Entry const&)> filter;
        /// The most entries that are looked at; beyond, the listing is not complete and `Failures()` says so.
        std::size_t mostEntries = 1'000'000;
    };

    explicit VFolderListing(std::string const& folder) : VFolderListing(folder, Options()) {}
    VFolderListing(std::string const& folder, Options const& options);

    std::vector<Entry> const& Entries() const& noexcept { return m_entries; }
    /// Of a listing that is not kept, so that a loop may go over `VFolderListing(folder).Entries()`.
    std::vector<Entry> Entries() && noexcept { return std::move(m_entries); }
    /// What could not be read, each with its path and the reason; empty for a complete listing.
    std::vector<VFileSystem::Result> const& Failures() const noexcept { return m_failures; }

  private:
    void List(std::string const& folder, Options const& options, std::vector<std::string>& folders);

    std::vector<Entry> m_entries;
    std::vector<VFileSystem::Result> m_failures;
    std::size_t m_seen = 0;
};

} // namespace VFoundation
