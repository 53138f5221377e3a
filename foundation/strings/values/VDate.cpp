#include "foundation/strings/values/VDate.h"

#include "foundation/host/internal/LocalTime.h"
#include "foundation/strings/values/internal/SavedFields.h"

#include <ctime>

namespace VFoundation {

namespace {

constexpr char const* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr char const* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr int kFirstYear = 1900; // of the calendar structure

} // namespace

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
    VString text;
    std::tm time{};
    if (LocalTime(m_seconds, time)) {
        text.Format("%s %s%3d %.2d:%.2d:%.2d %lld", kDays[time.tm_wday], kMonths[time.tm_mon], time.tm_mday,
                    time.tm_hour, time.tm_min, time.tm_sec,
                    static_cast<long long>(time.tm_year) + kFirstYear);
    }
    return text;
}

void VDate::GetDescription(VString& out) const {
    out.Format("[%s] %s", ClassName(), AsString().CString());
}

} // namespace VFoundation
