#include "foundation/host/internal/LocalTime.h"

#include <cstdio>

namespace VFoundation {

namespace {

constexpr char const* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr char const* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr int kFirstYear = 1900; // of the calendar structure

} // namespace

void FormatLocalTime(long long seconds, char (&text)[kLocalTimeTextSize]) noexcept {
    std::tm time{};
    text[0] = '\0';
    if (LocalTime(seconds, time)) {
        std::snprintf(text, sizeof text, "%s %s%3d %.2d:%.2d:%.2d %lld", kDays[time.tm_wday],
                      kMonths[time.tm_mon], time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec,
                      static_cast<long long>(time.tm_year) + kFirstYear);
    }
}

} // namespace VFoundation
