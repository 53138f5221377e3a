#include "foundation/core/VException.h"

#include "foundation/core/internal/ClassOwned.h"
#include "foundation/log/VLog.h"

namespace VFoundation {

VClass* VException::ms_theClass = nullptr;
VString* VException::ms_productName = nullptr;
VString* VException::ms_exceptionReportEmail = nullptr;
std::atomic<bool> VExceptionManager::ms_bExceptionHasOccured{false};

namespace {

char const* TextOfID(long id) {
    static constexpr char const* kTexts[] = {"Unrecognized exception", "Out of memory exception",
                                             "Null pointer exception", "Error creating a VObject",
                                             "Unknown exception",      "File not found",
                                             "File not readable",      "File not writeable"};
    bool const known = id >= 0 && id < static_cast<long>(std::size(kTexts));
    return kTexts[known ? id : 0];
}

} // namespace

VException::VException(long id, VObject const* source, char const* description, int stage)
    : Registered(nullptr), m_id(narrow_cast<std::int32_t>(id)), m_source(source), m_description(description),
      m_stage(stage), m_sourceClass(source ? source->ClassName() : nullptr) {
    Announce();
}

VException::VException(VException const& other)
    : Registered(nullptr), std::exception(other), m_id(other.m_id), m_source(other.m_source),
      m_description(other.m_description), m_trace(other.m_trace), m_stage(other.m_stage),
      m_sourceClass(other.m_sourceClass) {
    Announce();
}

void VException::Announce() const {
    VExceptionManager::ms_bExceptionHasOccured.store(true, std::memory_order_relaxed);
    VLog::TraceNoThrow(static_cast<VObject const&>(*this));
}

void VException::UninitializeClass() {
    detail::ReleaseAndClear(ms_productName);
    detail::ReleaseAndClear(ms_exceptionReportEmail);
}

char const* VException::what() const noexcept {
    char const* const text = m_description.CString();
    return *text ? text : TextOfID(m_id);
}

void VException::AppendStackTrace(char const* function, int stage) {
    m_trace << (function ? function : "") << "()";
    if (stage >= 0) {
        VString text;
        text.Format(" [stage: %li]", static_cast<long>(stage));
        m_trace << text.CString();
    }
    m_trace << "\n";
}

void VException::GetDescription(VString& out) const {
    // Put together piece by piece: a description may be longer than a formatted text can be.
    out = "VException: id: \"";
    out << TextOfID(m_id) << "\"  src:\"" << (m_source ? m_sourceClass.CString() : "Unknown")
        << "\"  descr: \"" << m_description.CString() << "\"";
    if (m_stage >= 0) {
        VString stage;
        stage.Format("stage: %i", static_cast<int>(m_stage));
        out << stage.CString();
    }
}

} // namespace VFoundation
