#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <cerrno>
#include <exception>
#include <system_error>

namespace VFoundation {

void VXMLFile::NoteFailure(char const* action, char const* path) noexcept {
    m_failedAction = action;
    try {
        m_failedPath = path ? path : "";
    } catch (std::exception const&) {
        m_failedPath.clear();
    }
}

VString VXMLFile::ErrorDescription() const {
    if (!m_failedAction) {
        return {};
    }
    std::string text = std::string("cannot ") + m_failedAction + " " +
                       (m_failedPath.empty() ? std::string("a document") : m_failedPath);
    IXMLFileIO::Failure const failure = m_pIO->LastFailure();
    if (failure.line > 0) {
        text += " at line " + std::to_string(failure.line) + ", column " + std::to_string(failure.column);
    }
    text += ": ";
    if (m_nError == kDisabled || m_nError == kInitFailed) {
        text += const_cast<VXMLFile*>(this)->GetErrorStr();
    } else if (failure.systemError == ENOTSUP) {
        text += "not a regular file";
    } else if (failure.systemError != 0) {
        text += std::system_category().message(failure.systemError);
    } else {
        text += failure.reason ? failure.reason : "the root element has another name";
    }
    return VString(text.c_str());
}

void VXMLFile::NoteLoss(LoadReport::eLoss loss, char const* detail) noexcept {
    if (!m_report.Add(loss)) {
        return;
    }
    try {
        m_report.List(loss, m_pIO->Position(), detail);
    } catch (std::exception const&) {
        // counted
    }
}

void VXMLFile::NoteCount(long expected, long found) noexcept {
    if (expected == found) {
        return;
    }
    try {
        NoteLoss(LoadReport::kCountDiffers, LoadReport::Counts(expected, found).c_str());
    } catch (std::exception const&) {
        m_report.Add(LoadReport::kCountDiffers);
    }
}

/// Lets an object read itself from the element at the cursor.
void VXMLFile::ReadInto(VObject& object) {
    if (!object.SerializeAsXML(*this)) {
        NoteLoss(LoadReport::kNotRead, object.ClassName());
    }
}

} // namespace VFoundation
