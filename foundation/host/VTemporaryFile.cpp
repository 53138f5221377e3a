#include "foundation/host/VTemporaryFile.h"

#include "foundation/host/VSpecialFolders.h"
#include "foundation/host/internal/HostServices.h"

#include <cerrno>
#include <utility>

namespace VFoundation {

namespace {

/// Removes a file when its scope ends in a failure, without memory too.
struct FileRemover {
    std::string const& m_path;
    bool m_isKept = false;

    ~FileRemover() {
        if (!m_isKept) {
            std::remove(m_path.c_str());
        }
    }
};

} // namespace

VTemporaryFile::VTemporaryFile(std::string const& folder)
    : m_path(folder.empty() ? VSpecialFolders::Path(VSpecialFolders::kTemporary) : folder) {
    std::string const where = m_path;
    m_path += HostServices::kTemporaryPattern;
    m_stream = HostServices::MakeTemporaryFile(m_path.data());
    if (!m_stream) {
        std::error_code const error(errno, std::system_category());
        m_path.clear();
        m_made = VFileSystem::Result("cannot make a file in " + where, error);
    }
}

VTemporaryFile::~VTemporaryFile() {
    if (m_stream) {
        std::fclose(m_stream);
        std::remove(m_path.c_str());
    }
}

VFileSystem::Result VTemporaryFile::Keep(std::string const& path, VFileSystem::Existing existing) {
    if (!m_stream) {
        return m_made ? VFileSystem::Result("cannot keep " + m_path,
                                            std::make_error_code(std::errc::bad_file_descriptor))
                      : m_made;
    }
    FileRemover remover{m_path};
    bool const isWritten = std::ferror(m_stream) == 0;
    errno = EIO;
    bool const isClosed = std::fclose(std::exchange(m_stream, nullptr)) == 0;
    if (!isClosed || !isWritten) {
        std::error_code const error(errno, std::system_category());
        return VFileSystem::Result("cannot write " + m_path, error);
    }
    VFileSystem::Result moved = VFileSystem::Move(m_path, path, existing);
    remover.m_isKept = static_cast<bool>(moved);
    return moved;
}

} // namespace VFoundation
