#pragma once

#include "foundation/core/Export.h"

#include <string>

namespace VFoundation {

/// Where the user's files of each kind are, by the XDG standards: base directories and user directories.
///
///     std::string const cache = VSpecialFolders::Path(VSpecialFolders::kCache) + "/my-program";
///
/// A folder that is named need not exist.
///
/// Ownership: no instances.
/// Threads: any thread, while none changes the environment.
/// Memory: without it `std::bad_alloc`.
class VFOUNDATION_API VSpecialFolders {
  public:
    VSpecialFolders() = delete;

    enum Folder : int {
        kHome,
        kTemporary,     ///< $TMPDIR, else "/tmp".
        kConfiguration, ///< $XDG_CONFIG_HOME, else ".config" in the home folder; likewise those up to `kState`.
        kData,
        kCache,
        kState,
        kRuntime, ///< $XDG_RUNTIME_DIR; empty without.
        // The user's own folders, by "user-dirs.dirs" in the configuration folder; empty when they are not set there.
        kDesktop,
        kDocuments,
        kDownloads,
        kMusic,
        kPictures,
        kPublic,
        kTemplates,
        kVideos,
    };

    /// The absolute path of the folder, without a '/' at its end; empty when there is none. Variables that are no
    /// absolute path are ignored.
    static std::string Path(Folder folder);
};

} // namespace VFoundation
