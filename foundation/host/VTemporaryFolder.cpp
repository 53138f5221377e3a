#include "foundation/host/VTemporaryFolder.h"

#include "foundation/host/VSpecialFolders.h"
#include "foundation/host/internal/HostServices.h"

#include <cerrno>
#include <filesystem>

namespace VFoundation {

VTemporaryFolder::VTemporaryFolder(std::string const& folder)
    : m_path(folder.empty() ? VSpecialFolders::Path(VSpecialFolders::kTemporary) : folder) {
    std::string const where = m_path;
    m_path += HostServices::kTemporaryPattern;
    if (!HostServices::MakeTemporaryFolder(m_path.data())) {
        std::error_code const error(errno, std::system_category());
        m_path.clear();
        m_made = VFileSystem::Result("cannot make a folder in " + where, error);
    }
}

VTemporaryFolder::~VTemporaryFolder() {
    if (m_made) {
        try {
            std::error_code ignored;
            std::filesystem::remove_all(m_path, ignored);
        } catch (std::bad_alloc const&) {
            return; // the folder stays
        }
    }
}

} // namespace VFoundation
