#include "foundation/strings/values/VDate.h"

#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <string>

namespace {

using namespace VFoundation;

TEST(VDate, IsWrittenAsTheCLibraryWouldInEnglish) {
    for (long long const seconds : {0LL, -1LL, 951'782'400LL, 1'794'784'079LL, 253'402'200'000LL}) {
        std::time_t const time{seconds};
        std::tm local{};
        char expected[64] = {};
        ::localtime_r(&time, &local);
        EXPECT_EQ(VDate(seconds).AsString().CString() + std::string("\n"), ::asctime_r(&local, expected));
    }
    EXPECT_STREQ(VDate(LLONG_MAX).AsString().CString(), "") << "not in the calendar";
    EXPECT_EQ(VDate::NowAsString().Length(), 24U);
    EXPECT_LT(VDate(1), VDate::Now());
    EXPECT_LE(VDate::Now(), VDate(std::time(nullptr)));
}

} // namespace
