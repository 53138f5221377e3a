#include "foundation/persistence/VAIFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <system_error>

namespace VFoundation {

namespace {

std::string AtOffset(long offset) {
    return " at offset " + std::to_string(offset) + ": ";
}

std::string SystemReason(int error) {
    return error == ENOTSUP ? "not a regular file" : std::system_category().message(error ? error : EINVAL);
}

} // namespace

void VAIFile::RememberPath(char const* path) noexcept {
    try {
        m_path = path ? path : "";
    } catch (std::exception const&) {
        m_path.clear();
    }
}

VString VAIFile::ErrorDescription() const {
    std::string const file = m_path.empty() ? "a file" : m_path;
    std::string text;
    switch (m_lastError) {
    case eCannotOpen:
        text = "cannot open " + file + ": " + (m_path.empty() ? "no path" : SystemReason(m_file.Error()));
        break;
    case eNoPath:
        text = "cannot open a file: no path";
        break;
    case eNotOpen:
        text = "no file is open";
        break;
    case eTooDeep:
        text = file + AtOffset(m_file.Position()) + "chunks nest deeper than " + std::to_string(kMaxDepth);
        break;
    case eNoChunk:
        text = file + AtOffset(m_file.Position()) + "no chunk is open";
        break;
    case eChunkOpen:
        text = "cannot close " + file + ": a chunk is open";
        break;
    case eDamaged:
        text = file + ": the checksum at its end is wrong or missing";
        break;
    case eWriteFailed:
        text = "cannot write " + file + AtOffset(m_file.ErrorPosition()) + SystemReason(m_file.Error());
        break;
    default:
        if (ReadError() != 0) {
            text = "cannot read " + file + AtOffset(m_file.ErrorPosition()) + SystemReason(ReadError());
        }
    }
    return VString(text.c_str());
}

void VAIFile::NoteLoss(LoadReport::eLoss loss, char const* detail) noexcept {
    if (!m_report.Add(loss)) {
        return;
    }
    try {
        long const position = std::min(m_file.Position(), m_file.Length()); // a damaged length may lead beyond the end
        m_report.List(loss, std::to_string(position), detail);
    } catch (std::exception const&) {
        // counted
    }
}

} // namespace VFoundation
