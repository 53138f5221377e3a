#include "foundation/strings/values/VURL.h"

#include "foundation/strings/values/internal/SavedFields.h"
#include "foundation/strings/values/internal/UrlSyntax.h"

namespace VFoundation {

namespace {

UrlParts PartsOf(VString const& text) {
    UrlParts parts;
    SplitUrl(text.CString(), parts);
    return parts;
}

VString TextOf(std::string_view part) {
    VString text;
    text.Set(part.data(), part.size());
    return text;
}

} // namespace

struct VURL::Fields {
    static constexpr std::tuple kAll{SavedField{"url", &VURL::m_text}};
};

template class TSavedObject<VURL>;

VClass* VURL::ms_theClass = nullptr;

bool VURL::IsValid() const {
    UrlParts parts;
    return SplitUrl(m_text.CString(), parts);
}

VString VURL::Scheme() const {
    return TextOf(PartsOf(m_text).scheme);
}

VString VURL::Host() const {
    return TextOf(PartsOf(m_text).host);
}

long VURL::Port() const {
    return PartsOf(m_text).port;
}

VString VURL::Path() const {
    return TextOf(PartsOf(m_text).path);
}

VString VURL::Query() const {
    return TextOf(PartsOf(m_text).query);
}

} // namespace VFoundation
