#include "foundation/strings/values/VDate.h"

#include "foundation/host/internal/LocalTime.h"
#include "foundation/strings/values/internal/SavedFields.h"

#include <ctime>

namespace VFoundation {

struct VDate::Fields {
    static constexpr std::tuple kAll{SavedField{"seconds", &VDate::m_seconds}};
};

template class TSavedObject<VDate>;

VClass* VDate::ms_theClass = nullptr;

VDate VDate::Now() {
    return VDate(static_cast<long long>(std::time(nullptr)));
}

VString VDate::NowAsString() {
    return Now().AsString();
}

VString VDate::AsString() const {
    char text[kLocalTimeTextSize];
    FormatLocalTime(m_seconds, text);
    return VString(text);
}

void VDate::GetDescription(VString& out) const {
    out.Format("[%s] %s", ClassName(), AsString().CString());
}

} // namespace VFoundation
