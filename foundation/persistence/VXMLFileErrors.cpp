#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <cerrno>
#include <exception>
#include <system_error>

namespace VFoundation {

void VXMLFile::RememberPath(char const* path) noexcept {
    try {
        m_path = path ? path : "";
    } catch (std::exception const&) {
        m_path.clear();
    }
}

VString VXMLFile::ErrorDescription() const {
    if (!m_failedAction) {
        return {};
    }
    std::string text =
        std::string("cannot ") + m_failedAction + " " + (m_path.empty() ? std::string("a document") : m_path);
    if (m_failedAction == kLoadAllAction) {
        if (m_report.Entries().empty()) {
            return text + ": the object is not in it";
        }
        unsigned long const others = m_report.Count() - 1;
        return text + ": " + LoadReport::TextOf(m_report.Entries().front()) +
               (others > 0 ? ", and " + std::to_string(others) + " more" : "");
    }
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
        text += failure.reason                   ? failure.reason
                : m_failedAction == kStartAction ? "no name for a root element"
                                                 : "the root element has another name";
    }
    return text;
}

void VXMLFile::NoteLoss(LoadReport::eLoss loss, char const* detail) noexcept {
    if (!m_report.Add(loss)) {
        return;
    }
    try {
        IXMLFileIO::Place const place = m_pIO->CursorPlace();
        m_report.List(loss, m_pIO->Position(), detail, place.line, place.column);
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
